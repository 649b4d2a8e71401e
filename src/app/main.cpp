// quorin: the tablet comic reader in a window.
//
//   quorin [--screenshot FILE | --no-screenshot] [--size WxH] [quorin://…]
//
// Without a display (QT_QPA_PLATFORM=offscreen) it saves a screenshot of the
// feed, prints its path and quits, unless told --no-screenshot.
// SIGTERM and SIGINT quit the event loop: the normal teardown stops the site.

#include "AppLog.h"
#include "VORAAppDelegate.h"
#include "VORAEmbeddedSite.h"
#include "VORAFeedScreenshot.h"
#include "VORAInstanceChannel.h"
#include "VORAOverlayLayer.h"
#include "VORARootViewController.h"
#include "catalogue/VORARecommentView.h"
#include "core/VORASystemConfig.h"
#include "core/VORAUtility.h"
#include "platform/TerminationSignals.h"

#include <QCommandLineParser>
#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QTextStream>

int main(int argc, char *argv[])
{
    // No display at all: run offscreen (and take the screenshot) rather than fail.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY")
        && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QGuiApplication app(argc, argv);
    TerminationSignals terminationSignals;
    QObject::connect(&terminationSignals, &TerminationSignals::received, &app, &QCoreApplication::quit);
    QGuiApplication::setApplicationName(VORASystemConfig::bundleName());
    QGuiApplication::setApplicationDisplayName(VORASystemConfig::displayName());
    QGuiApplication::setApplicationVersion(VORASystemConfig::appVersion());

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Quorin Reader, the tablet comic reader."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption screenshotOption(QStringLiteral("screenshot"),
                                              QStringLiteral("Save a PNG of the feed to <file> and quit."),
                                              QStringLiteral("file"));
    const QCommandLineOption sizeOption(QStringLiteral("size"), QStringLiteral("Window size, e.g. 768x1024."),
                                        QStringLiteral("WxH"), QStringLiteral("1024x768"));
    const QCommandLineOption noScreenshotOption(QStringLiteral("no-screenshot"),
                                                QStringLiteral("Offscreen too: keep running, take no screenshot."));
    parser.addOption(screenshotOption);
    parser.addOption(noScreenshotOption);
    parser.addOption(sizeOption);
    parser.addPositionalArgument(QStringLiteral("url"), QStringLiteral("quorin:// addresses to open."));
    parser.process(app);

    const QStringList urls = parser.positionalArguments();
    const bool offscreen = QGuiApplication::platformName() == QLatin1String("offscreen");
    QString screenshot = parser.value(screenshotOption);
    if (screenshot.isEmpty() && offscreen && !parser.isSet(noScreenshotOption))
        screenshot = QDir::temp().filePath(QStringLiteral("quorin-feed.png"));

    // A second start hands its URLs to the running app (screenshot runs stay alone).
    if (screenshot.isEmpty() && VORAInstanceChannel::forwardToRunningInstance(urls)) {
        qCInfo(lcApp) << "handed over to the running instance";
        return 0;
    }

    const QStringList size = parser.value(sizeOption).split(QLatin1Char('x'));
    int width = 1024, height = 768;
    if (size.size() == 2 && size[0].toInt() > 0 && size[1].toInt() > 0) {
        width = size[0].toInt();
        height = size[1].toInt();
    } else {
        QTextStream(stderr) << "quorin: --size expects WxH, e.g. 768x1024; using 1024x768\n";
    }

    if (offscreen)
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);

    VORAOverlayLayer overlays;
    VORAAppDelegate delegate(&overlays);
    delegate.setInitialSize(width, height);
    QObject::connect(&delegate, &VORAAppDelegate::openUrlRequested, [](const QUrl &url) {
        if (!QDesktopServices::openUrl(url))
            qCWarning(lcApp) << "no browser could open" << url;
    });

    VORAInstanceChannel channel;
    if (screenshot.isEmpty()) {
        channel.listen();
        QObject::connect(&channel, &VORAInstanceChannel::urlReceived, &delegate, [&delegate](const QString &url) {
            delegate.openURL(url, VORAAppDelegate::browserSourceApplication);
        });
    }

    VORAEmbeddedSite site;
    // Messages about the demo site are its own, not the network's.
    QObject::connect(&site, &VORAEmbeddedSite::failed, &app, [](const QString &message) {
        VORAUtility::requestAtlerMessage(message, QStringLiteral("温馨提醒"), nullptr);
    }, Qt::QueuedConnection);
    // The site is back after an exit: the feed loads again.
    QObject::connect(&site, &VORAEmbeddedSite::restarted, &app, [&delegate] {
        if (VORARecommentView *feed = delegate.rootViewController()->recommentView())
            feed->begainRequestData();
    });
    auto launch = [&](bool) {
        delegate.didFinishLaunching();
        for (const QString &url : urls)
            delegate.openURL(url, VORAAppDelegate::browserSourceApplication);
        if (screenshot.isEmpty())
            return;
        // The picture is of the feed: a first start's welcome pages step aside.
        delegate.rootViewController()->showHomePage();
        auto *shot = new VORAFeedScreenshot(delegate.window(), delegate.rootViewController(), screenshot, &app);
        QObject::connect(shot, &VORAFeedScreenshot::saved, &app, [](const QString &path, bool ok) {
            if (ok)
                QTextStream(stdout) << path << Qt::endl;
            QCoreApplication::exit(ok ? 0 : 1);
        });
        shot->start();
    };
    if (VORAEmbeddedSite::isEmbeddedDefault()) {
        QObject::connect(&site, &VORAEmbeddedSite::ready, &app, launch, Qt::QueuedConnection);
        site.start();
    } else {
        QMetaObject::invokeMethod(&app, [&] { launch(true); }, Qt::QueuedConnection);
    }
    const int code = app.exec();
    site.stop();
    return code;
}
