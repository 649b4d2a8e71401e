// What the app draws and spends while nothing moves: frames swapped and
// process CPU time over a still interval on the feed (its banner sliding every
// 5 s), the detail page, the settings panel and the reader at rest, next to a
// bare Qt Quick window left alone as long in the same process. Prints one JSON
// line; a still screen should draw no frame but the banner's slides.
//
//   bench_app_idle [seconds]     (10 by default)

#include "QuorinSite.h"
#include "VORAAppDelegate.h"
#include "VORAImageProvider.h"
#include "VORAOverlayLayer.h"
#include "VORARootViewController.h"
#include "catalogue/VORARecommentView.h"
#include "reader/VORAComicViewManager.h"
#include "reader/VORAPictureImageView.h"
#include "reader/VORAReadHomePageViewController.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <ctime>
#include <functional>

namespace {

struct Still
{
    int frames = 0;
    double cpuMs = 0;
};

// Frames swapped and CPU spent over ms milliseconds of the event loop.
Still measure(QQuickWindow *window, int ms)
{
    Still still;
    const QMetaObject::Connection counter =
        QObject::connect(window, &QQuickWindow::frameSwapped, window, [&still] { ++still.frames; });
    const std::clock_t cpu = std::clock();
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
    still.cpuMs = double(std::clock() - cpu) * 1000.0 / CLOCKS_PER_SEC;
    QObject::disconnect(counter);
    return still;
}

// Runs the event loop until ready() holds and the window has drawn nothing for
// half a second (pictures arrived, fades and slides ended), at most 20 s.
bool settle(QQuickWindow *window, const std::function<bool()> &ready)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 20000) {
        if (ready() && VORAImageProvider::pendingCount() == 0 && measure(window, 500).frames == 0)
            return true;
        measure(window, 50);
    }
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const int seconds = argc > 1 ? std::max(1, QByteArray(argv[1]).toInt()) : 10;
    const int ms = seconds * 1000;

    QTemporaryDir home;
    qputenv("QUORIN_HOME", home.path().toUtf8());
    QuorinSite site(QuorinSiteOptions{home.filePath(QStringLiteral("site"))});
    if (site.listen() == 0) {
        QTextStream(stderr) << "bench_app_idle: the reference site did not start\n";
        return 1;
    }
    qputenv("QUORIN_API_BASE", site.baseUrl().toString().toUtf8());

    // The peer: a bare window of the same size, left alone.
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick\nimport QtQuick.Window\nWindow { width: 1366; height: 768; visible: true;"
                    " Rectangle { anchors.fill: parent; color: \"#FFF3E6\" } }");
    auto *bare = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (!bare || !settle(bare, [] { return true; }))
        return 1;
    const Still peer = measure(bare, ms);
    bare->hide();

    VORAOverlayLayer layer;
    VORAAppDelegate delegate(&layer);
    delegate.setInitialSize(1366, 768);
    delegate.didFinishLaunching();
    VORARootViewController *root = delegate.rootViewController();
    QQuickWindow *window = delegate.window();
    if (!window)
        return 1;
    root->showHomePage();
    VORARecommentView *feed = root->recommentView();
    QJsonObject scenes;
    int slides = 0;
    QObject::connect(feed, &VORARecommentView::timeCountChanged, [&slides] { ++slides; });

    auto scene = [&](const char *name, const std::function<bool()> &ready) {
        if (!settle(window, ready)) {
            scenes.insert(QLatin1String(name), QJsonObject{{"error", "did not settle"}});
            return;
        }
        slides = 0;
        const Still still = measure(window, ms);
        scenes.insert(QLatin1String(name), QJsonObject{{"frames", still.frames},
                                                       {"cpu_ms", qRound(still.cpuMs)},
                                                       {"banner_slides", slides}});
    };
    scene("feed", [&] { return !feed->recommentArray().isEmpty() && !feed->slideArray().isEmpty(); });
    const VORARecommentDTO first = feed->recommentArray().value(0);
    root->openComicDetail(first.comicId, first.comicName, first.comicCover);
    scene("detail_page", [&] { return root->hasComicDetail(); });
    root->switchView(108);
    scene("settings_panel", [&] { return root->settingsOpen(); });
    root->closeSettingView();
    root->openReader(first.comicId, QString(), QStringLiteral("kFirstPage"));
    scene("reader_at_rest", [&] {
        VORAReadHomePageViewController *reader = root->readHomePageViewController();
        VORAPictureImageView *page =
            reader && reader->comicViewManager() ? reader->comicViewManager()->pageViewAt(0) : nullptr;
        return page && page->state() == VORAPictureImageView::Shown;
    });

    const QJsonObject line{{"bench", "app_idle_frames"},
                           {"seconds", seconds},
                           {"scenes", scenes},
                           {"peer", "bare Qt Quick window left alone"},
                           {"peer_frames", peer.frames},
                           {"peer_cpu_ms", qRound(peer.cpuMs)},
                           {"platform", QGuiApplication::platformName()}};
    QTextStream(stdout) << QJsonDocument(line).toJson(QJsonDocument::Compact) << Qt::endl;
    return 0;
}
