// The bookshelf screen on a shelf of 500 comics, in the app shell (1366 × 768,
// offscreen, software renderer) on the in-process site: the time from the
// bookshelf button to the first frame of the screen, and the median frame
// interval of a steady flick down the shelf and back. The peer is the same
// shelf drawn with the placeholder covers only (no cover addresses), each run
// in a fresh process with a fresh app home. Prints one JSON line.
//
//   bench_shelf [frames]     (default 240 frames a run)

#include "QuorinSite.h"
#include "VORAAppDelegate.h"
#include "VORAOverlayLayer.h"
#include "VORARootViewController.h"
#include "core/VORAAppGlobalData.h"
#include "store/VORABookShelfManager.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace {
constexpr int shelfSize = 500;

QQuickItem *findItem(QQuickItem *root, const QString &name)
{
    QList<QQuickItem *> queue{root};
    while (!queue.isEmpty()) {
        QQuickItem *it = queue.takeFirst();
        if (it->objectName() == name)
            return it;
        queue.append(it->childItems());
    }
    return nullptr;
}

QList<VORABookShelf> shelf(const QString &siteBase, bool covers)
{
    QList<VORABookShelf> list;
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    for (int i = 0; i < shelfSize; ++i) {
        VORABookShelf e;
        e.comicId = QString::number(10001 + i % 60) + (i < 60 ? QString() : QString::number(i));
        e.comicName = QStringLiteral("书架漫画 %1").arg(i);
        e.coverUrl = covers ? siteBase + QStringLiteral("images/cover/%1.jpg").arg(10001 + i % 60) : QString();
        e.nameFirstletter = QString(QChar(u'A' + i % 26));
        e.latestUpdateChapterId = QString::number(40001 + i);
        e.latestUpdateChapterName = QStringLiteral("第%1话").arg(i % 40 + 1);
        e.updateTime = QDateTime::fromSecsSinceEpoch(now - i * 3600, Qt::UTC);
        e.adddateTime = e.updateTime;
        e.isHasUpdate = i % 7 == 0;
        e.isNotRead = i % 5 == 0;
        list.append(e);
    }
    return list;
}

// Child: the app with the shelf filled; prints {"open_ms", "frame_ms"}.
int child(bool covers, int frames, int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    VORAOverlayLayer layer;
    VORAAppDelegate delegate(&layer);
    delegate.setInitialSize(1366, 768);
    delegate.didFinishLaunching();
    QQuickWindow *window = delegate.window();
    auto *manager = VORABookShelfManager::sharedManager();
    if (!window || !manager)
        return 2;
    delegate.rootViewController()->showHomePage();
    manager->addBookshelfList(shelf(qEnvironmentVariable("QUORIN_API_BASE"), covers));

    // Let the feed settle first: its own pictures are not what is measured.
    QEventLoop settle;
    QTimer::singleShot(1500, &settle, &QEventLoop::quit);
    settle.exec();

    QElapsedTimer clock;
    QEventLoop opened;
    QObject::connect(window, &QQuickWindow::frameSwapped, &opened, &QEventLoop::quit, Qt::SingleShotConnection);
    clock.start();
    delegate.rootViewController()->switchView(105);
    window->update();
    opened.exec();
    const double openMs = clock.nsecsElapsed() / 1e6;

    QQuickItem *area = findItem(window->contentItem(), QStringLiteral("shelfArea"));
    if (!area)
        return 3;
    QList<double> intervals;
    qint64 last = -1;
    int frame = 0;
    QEventLoop flick;
    QObject::connect(window, &QQuickWindow::frameSwapped, &flick, [&] {
        const qint64 now = clock.nsecsElapsed();
        if (last >= 0)
            intervals.append((now - last) / 1e6);
        last = now;
        if (++frame >= frames) {
            flick.quit();
            return;
        }
        // A steady flick: 40 px a frame down the whole shelf and back.
        const qreal range = std::max<qreal>(1, area->property("contentHeight").toReal() - area->height());
        const qreal y = std::fmod(frame * 40.0, 2 * range);
        area->setProperty("contentY", y < range ? y : 2 * range - y);
        window->update();
    });
    window->update();
    flick.exec();
    std::sort(intervals.begin(), intervals.end());
    const double frameMs = intervals.isEmpty() ? -1 : intervals.at(intervals.size() / 2);
    QTextStream(stdout) << QJsonDocument(QJsonObject{{"open_ms", openMs}, {"frame_ms", frameMs}})
                               .toJson(QJsonDocument::Compact)
                        << Qt::endl;
    return 0;
}

QJsonObject runChild(const QString &program, bool covers, int frames, QProcessEnvironment env)
{
    QTemporaryDir appHome;
    env.insert(QStringLiteral("QUORIN_HOME"), appHome.path());
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(program, {QStringLiteral("--child"), covers ? QStringLiteral("covers") : QStringLiteral("placeholders"),
                            QString::number(frames)});
    if (!process.waitForFinished(300000))
        return {};
    const QList<QByteArray> lines = process.readAllStandardOutput().trimmed().split('\n');
    return QJsonDocument::fromJson(lines.constLast()).object();
}
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc >= 4 && QByteArray(argv[1]) == "--child")
        return child(QByteArray(argv[2]) == "covers", std::max(30, QByteArray(argv[3]).toInt()), argc, argv);
    QGuiApplication app(argc, argv);
    const int frames = argc > 1 ? std::max(30, QByteArray(argv[1]).toInt()) : 240;
    QTemporaryDir home;
    QuorinSite site(QuorinSiteOptions{home.filePath(QStringLiteral("site"))});
    if (site.listen() == 0)
        return 1;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QUORIN_API_BASE"), site.baseUrl().toString());
    env.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("*.debug=false;quorin.*.info=false"));
    const QJsonObject peer = runChild(app.applicationFilePath(), false, frames, env);
    const QJsonObject withCovers = runChild(app.applicationFilePath(), true, frames, env);
    const double openCovers = withCovers.value("open_ms").toDouble(-1), openPeer = peer.value("open_ms").toDouble(-1);
    const double frameCovers = withCovers.value("frame_ms").toDouble(-1), framePeer = peer.value("frame_ms").toDouble(-1);
    const QJsonObject line{{"bench", "bookshelf_500"},
                           {"comics", shelfSize},
                           {"frames", frames},
                           {"open_ms", openCovers},
                           {"frame_ms", frameCovers},
                           {"peer", "the same shelf with placeholder covers"},
                           {"peer_open_ms", openPeer},
                           {"peer_frame_ms", framePeer},
                           {"open_ratio", openPeer > 0 ? openCovers / openPeer : -1},
                           {"frame_ratio", framePeer > 0 ? frameCovers / framePeer : -1}};
    QTextStream(stdout) << QJsonDocument(line).toJson(QJsonDocument::Compact) << Qt::endl;
    return openCovers > 0 && openPeer > 0 && frameCovers > 0 && framePeer > 0 ? 0 : 1;
}
