// Frame time while flicking a 300-comic category grid in an offscreen window
// (software renderer), covers loaded from the reference site through the image
// provider (decoded on its worker threads), next to the same grid with the
// placeholder pictures only. Prints one JSON line with both medians and their
// ratio.
//
//   bench_catalogue_grid [frames]     (default 240 frames a run)

#include "QuorinSite.h"
#include "VORAImageProvider.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <memory>

namespace {
const char gridQml[] = R"(
import QtQuick
import "qrc:/Quorin/qml"
Window {
    width: 1024; height: 768; visible: true
    property var covers: []
    GridView {
        id: grid
        objectName: "grid"
        anchors.fill: parent
        anchors.margins: 12
        cellWidth: Math.floor(width / 3); cellHeight: 205
        cacheBuffer: 600
        model: 300
        delegate: SortComicCell {
            width: grid.cellWidth - 12; height: grid.cellHeight - 12
            comicIndex: index
            comicName: "漫画 " + index
            comicAuthor: "作者"
            comicCover: covers.length ? covers[index % covers.length] : ""
            comicDescription: "一部关于热血、汗水与篮球场上每一秒钟的青春群像。"
            clickTotal: "" + (1000 + index)
            fontFamily: "Noto Sans CJK SC"
        }
    }
}
)";

// Median frame interval in ms over `frames` frames while the grid scrolls.
double flick(QQmlEngine &engine, const QStringList &covers, int frames)
{
    QQmlComponent component(&engine);
    component.setData(gridQml, QUrl(QStringLiteral("qrc:/bench/Grid.qml")));
    std::unique_ptr<QObject> root(component.createWithInitialProperties({{QStringLiteral("covers"), covers}}));
    auto *window = qobject_cast<QQuickWindow *>(root.get());
    if (!window) {
        qCritical() << component.errors();
        return -1;
    }
    auto *grid = window->findChild<QQuickItem *>(QStringLiteral("grid"));
    QList<double> intervals;
    QElapsedTimer clock;
    clock.start();
    qint64 last = -1;
    int frame = 0;
    QEventLoop loop;
    QObject::connect(window, &QQuickWindow::frameSwapped, &loop, [&]() {
        const qint64 now = clock.nsecsElapsed();
        if (last >= 0)
            intervals.append((now - last) / 1e6);
        last = now;
        if (++frame >= frames) {
            loop.quit();
            return;
        }
        // A steady flick: 40 px a frame down the whole grid and back.
        const qreal contentHeight = grid->property("contentHeight").toReal() - grid->height();
        const qreal y = std::fmod(frame * 40.0, 2 * contentHeight);
        grid->setProperty("contentY", y < contentHeight ? y : 2 * contentHeight - y);
        window->update();
    });
    window->update();
    loop.exec();
    std::sort(intervals.begin(), intervals.end());
    return intervals.isEmpty() ? -1 : intervals.at(intervals.size() / 2);
}
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir home;
    qputenv("QUORIN_HOME", home.path().toUtf8());
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication app(argc, argv);
    const int frames = argc > 1 ? qMax(30, QByteArray(argv[1]).toInt()) : 240;

    QuorinSite site(QuorinSiteOptions{home.filePath(QStringLiteral("site"))});
    if (site.listen() == 0)
        return 1;
    QStringList covers;
    for (int id = 10001; id <= 10060; ++id)
        covers.append(site.baseUrl().toString() + QStringLiteral("images/cover/%1.jpg").arg(id));

    QQmlEngine engine;
    engine.addImageProvider(QStringLiteral("quorin"), new VORAImageProvider);
    const double placeholders = flick(engine, {}, frames);
    const double withCovers = flick(engine, covers, frames);
    const QJsonObject line{{"bench", "catalogue_grid_flick"},
                           {"comics", 300},
                           {"frames", frames},
                           {"frame_ms_covers", withCovers},
                           {"frame_ms_placeholders", placeholders},
                           {"ratio", placeholders > 0 ? withCovers / placeholders : 0}};
    printf("%s\n", QJsonDocument(line).toJson(QJsonDocument::Compact).constData());
    return withCovers > 0 && placeholders > 0 ? 0 : 1;
}
