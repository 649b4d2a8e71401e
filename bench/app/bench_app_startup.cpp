// Cold start of the app to the first frame that shows the feed's grid filled,
// next to a bare Qt Quick window, each in a fresh process, in the same run.
// Prints one JSON line; the ratio is what to compare between machines.
//
//   bench_app_startup [--runs N]

#include "QuorinSite.h"
#include "VORAAppDelegate.h"
#include "VORAOverlayLayer.h"
#include "VORARootViewController.h"
#include "catalogue/VORARecommentView.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <algorithm>

namespace {

bool hasItem(QQuickItem *root, const QString &name)
{
    QList<QQuickItem *> queue{root};
    while (!queue.isEmpty()) {
        QQuickItem *it = queue.takeFirst();
        if (it->objectName() == name)
            return true;
        queue.append(it->childItems());
    }
    return false;
}

// Child: show the window, print "FRAME" after the first frame that counts, quit.
int child(const QString &mode, int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    auto report = [] {
        QTextStream(stdout) << "FRAME" << Qt::endl;
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    };
    if (mode == QLatin1String("bare")) {
        QQmlApplicationEngine engine;
        engine.loadData("import QtQuick\nimport QtQuick.Window\nWindow { width: 1024; height: 768; visible: true;"
                        " Rectangle { anchors.fill: parent; color: \"#FFF3E6\" } }");
        auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
        if (!window)
            return 2;
        QObject::connect(window, &QQuickWindow::frameSwapped, &app, report, Qt::SingleShotConnection);
        return app.exec();
    }
    VORAOverlayLayer layer;
    VORAAppDelegate delegate(&layer);
    delegate.didFinishLaunching();
    QQuickWindow *window = delegate.window();
    if (!window)
        return 2;
    // The first frame after the grid's first cell exists.
    auto *poll = new QTimer(&app);
    QObject::connect(poll, &QTimer::timeout, &app, [&, poll] {
        if (!hasItem(window->contentItem(), QStringLiteral("cell0")))
            return;
        poll->stop();
        QObject::connect(window, &QQuickWindow::frameSwapped, &app, report, Qt::SingleShotConnection);
        window->update();
    });
    poll->start(1);
    return app.exec();
}

double runChild(const QString &program, const QString &mode, const QProcessEnvironment &env)
{
    QProcess process;
    process.setProcessEnvironment(env);
    QElapsedTimer timer;
    timer.start();
    process.start(program, {QStringLiteral("--child"), mode});
    if (!process.waitForStarted(10000))
        return -1;
    QByteArray out;
    while (!out.contains("FRAME")) {
        if (!process.waitForReadyRead(60000))
            return -1;
        out += process.readAllStandardOutput();
    }
    const double ms = timer.nsecsElapsed() / 1e6;
    process.waitForFinished(10000);
    return ms;
}

double median(QList<double> v)
{
    std::sort(v.begin(), v.end());
    return v.isEmpty() ? -1 : v.at(v.size() / 2);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc >= 3 && QByteArray(argv[1]) == "--child")
        return child(QString::fromLocal8Bit(argv[2]), argc, argv);

    QGuiApplication app(argc, argv);
    int runs = 5;
    const QStringList args = app.arguments();
    if (const qsizetype i = args.indexOf(QStringLiteral("--runs")); i >= 0 && i + 1 < args.size())
        runs = std::max(1, args.at(i + 1).toInt());

    QTemporaryDir home;
    QuorinSite site(QuorinSiteOptions{home.filePath(QStringLiteral("site"))});
    if (site.listen() == 0) {
        QTextStream(stderr) << "bench_app_startup: the reference site did not start\n";
        return 1;
    }
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QUORIN_API_BASE"), site.baseUrl().toString());
    env.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("*.debug=false;quorin.*.info=false"));

    QList<double> appTimes, bareTimes;
    for (int i = 0; i < runs; ++i) {
        // A fresh app home each time: first launch, cold disk cache of covers.
        QTemporaryDir appHome;
        env.insert(QStringLiteral("QUORIN_HOME"), appHome.path());
        bareTimes.append(runChild(app.applicationFilePath(), QStringLiteral("bare"), env));
        appTimes.append(runChild(app.applicationFilePath(), QStringLiteral("app"), env));
    }
    const double appMs = median(appTimes), bareMs = median(bareTimes);
    QJsonObject line{{"bench", "app_cold_start_to_filled_feed"},
                     {"runs", runs},
                     {"app_ms", appMs},
                     {"peer", "bare Qt Quick window to first frame"},
                     {"peer_ms", bareMs},
                     {"ratio", bareMs > 0 ? appMs / bareMs : -1},
                     {"platform", QGuiApplication::platformName()}};
    QTextStream(stdout) << QJsonDocument(line).toJson(QJsonDocument::Compact) << Qt::endl;
    return appMs > 0 && bareMs > 0 ? 0 : 1;
}
