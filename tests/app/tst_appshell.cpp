// The app in a real offscreen window against the in-process reference site:
// welcome pages on the first launch only, the rating prompt on the 20th, the
// start-up with and without network, and the wiring of the feed and shell
// (tabs, failure panel, buttons, banner, settings over the detail page), their
// layouts from 800×600 up, still screens drawing no frame, and the feed's
// screenshots. The feed's and the shell's rules are the catalogue and
// services suites'.

#include "QuorinSiteFaults.h"
#include "ReaderTestWindow.h"
#include "VORAFeedScreenshot.h"
#include "VORAImageProvider.h"
#include "WelcomeViewController.h"
#include "catalogue/VORANetWorkNoLinking.h"
#include "catalogue/VORARecommentView.h"
#include "core/VORAAppGlobalData.h"

#include <QDir>
#include <QEventLoop>
#include <QImage>
#include <QSignalSpy>
#include <QTimer>

#include <memory>

namespace {
const QString listPath = QStringLiteral("ios/pad/list.php");
const QString autoLoginPath = QStringLiteral("v3/app/ios/pad/member/autologin");
const QString versionPath = QStringLiteral("v3/app/ios/pad/version/newVersion");

// The frames the window draws in ms milliseconds: a measurement, not a wait.
int framesDrawnOver(QQuickWindow *window, int ms)
{
    int frames = 0;
    const QMetaObject::Connection counter = QObject::connect(window, &QQuickWindow::frameSwapped, window, [&frames] { ++frames; });
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
    QObject::disconnect(counter);
    return frames;
}

bool insideWindow(QQuickWindow *window, QQuickItem *it)
{
    window->grabWindow(); // positioners place their children before a frame
    const QRectF r = it->mapRectToScene(QRectF(0, 0, it->width(), it->height()));
    return QRectF(QPointF(0, 0), QSizeF(window->size())).contains(r);
}
}

// One start of the app; its items are found hidden or not.
struct Launch : AppTestWindow
{
    explicit Launch(bool window, QSize size = QSize(1024, 768)) : AppTestWindow(size, window) {}
    VORARecommentView *feed() const { return root()->recommentView(); }
    QQuickItem *item(const QString &name) const
    {
        const QList<QQuickItem *> list = items(name, nullptr, true);
        return list.isEmpty() ? nullptr : list.first();
    }
};

class TestAppShell : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void welcomePagesOnTheFirstLaunchOnly();
    void ratingPromptOnThe20thLaunch();
    void tabsAndTheFailurePanelReachTheFeed();
    void currentButtonDoesNothingAndSettingsKeepTheDetail();
    void bannerInTheWindow();
    void everyButtonOnScreen_data();
    void everyButtonOnScreen();
    void stillScreensDrawNoFrame_data();
    void stillScreensDrawNoFrame();
    void startWithoutNetwork();
    void signInAndVersionCheckAtStart();
    void rotationAndScreenshots();

private:
    TestHome m_home;
    std::unique_ptr<QuorinSite> m_site;
};

void TestAppShell::initTestCase()
{
    m_site = startSite(m_home);
    QVERIFY(m_site);
}

void TestAppShell::cleanup()
{
    m_site->faults().clear();
    qputenv("QUORIN_API_BASE", m_site->baseUrl().toString().toUtf8());
}

void TestAppShell::welcomePagesOnTheFirstLaunchOnly()
{
    // Must run first: the app home is fresh.
    QCOMPARE(VORAAppGlobalData::shareAppGlobalData()->appStatus()->appOpenCount(), 0);
    {
        Launch first(true);
        QCOMPARE(VORAAppGlobalData::shareAppGlobalData()->appStatus()->appOpenCount(), 1);
        WelcomeViewController *welcome = first.root()->welcomeView();
        QVERIFY(welcome);
        QQuickItem *view = first.item(QStringLiteral("welcomeView"));
        QTRY_VERIFY(view->isVisible());
        QTRY_COMPARE(VORAImageProvider::pendingCount(), 0);
        first.shot("welcome.png");

        // Rotation swaps the pictures.
        first.window()->resize(768, 1024);
        QTRY_VERIFY(!first.root()->isLandscape());
        QCOMPARE(welcome->pages().first(), QStringLiteral("uprightwelcome0"));
        first.window()->resize(1024, 768);
        QTRY_VERIFY(first.root()->isLandscape());

        // A tap on a picture page does nothing; a key turns it; the last page closes the view.
        QVERIFY(first.click(QStringLiteral("welcomeView")));
        QVERIFY(first.root()->welcomeView());
        QTest::keyClick(first.window(), Qt::Key_Right);
        QTRY_COMPARE(first.item(QStringLiteral("welcomePages"))->property("currentIndex").toInt(), 1);
        QMetaObject::invokeMethod(first.item(QStringLiteral("welcomePages")), "positionViewAtEnd");
        QTRY_VERIFY(first.item(QStringLiteral("welcomePage316323")));
        QVERIFY(first.click(QStringLiteral("welcomePage316323")));
        QTRY_VERIFY(!first.root()->welcomeView());
        QTRY_VERIFY(!view->isVisible());
    }
    Launch second(true);
    QCOMPARE(VORAAppGlobalData::shareAppGlobalData()->loadAppStatus()->appOpenCount(), 2);
    QVERIFY(!second.item(QStringLiteral("welcomeView"))->isVisible());
}

void TestAppShell::ratingPromptOnThe20thLaunch()
{
    VORAAppGlobalData::shareAppGlobalData()->appStatus()->setAppOpenCount(19);
    Launch app(false);
    const QString question = QStringLiteral("你喜欢这个应用吗？");
    QVERIFY(app.layer->alertMessages().contains(question));
    const QVariantMap alert = app.layer->alerts().at(app.layer->alertMessages().indexOf(question)).toMap();
    QSignalSpy opened(app.delegate.get(), &VORAAppDelegate::openUrlRequested);
    app.layer->answerAlert(alert.value("alertId").toInt(), 0); // "like" opens the app's page
    QCOMPARE(opened.size(), 1);
}

void TestAppShell::tabsAndTheFailurePanelReachTheFeed()
{
    Launch app(true);
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("cell0")), 10000);
    QSignalSpy answered(app.feed(), &VORARecommentView::answered);
    QVERIFY(app.click(QStringLiteral("tab2002")));
    QCOMPARE(app.feed()->curTag(), 2002);
    QTRY_COMPARE(app.item(QStringLiteral("tabMarker"))->x(), app.feed()->markerX());
    QTRY_COMPARE_WITH_TIMEOUT(answered.size(), 1, 10000);

    // The feed's failure panel is drawn with its text; its button retries
    // (what the retry asks for is tst_recommentview's).
    QQuickItem *panel = app.item(QStringLiteral("noNetwork8888"));
    QVERIFY(panel && !panel->isVisible());
    m_site->faults().setDropMidBody(listPath);
    QVERIFY(app.click(QStringLiteral("tab2001")));
    QTRY_VERIFY_WITH_TIMEOUT(panel->isVisible(), 10000);
    QCOMPARE(app.item(QStringLiteral("noNetworkText"))->property("text").toString(), app.feed()->noNetwork()->text());
    m_site->faults().clear();
    QVERIFY(app.click(QStringLiteral("retryButton")));
    QTRY_VERIFY_WITH_TIMEOUT(!panel->isVisible() && !app.feed()->isLoading(), 10000);
}

void TestAppShell::currentButtonDoesNothingAndSettingsKeepTheDetail()
{
    Launch app(true);
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("cell0")), 10000);
    VORARecommentView *feed = app.feed();
    const int requests = m_site->requestCount(listPath);
    QSignalSpy switched(app.root(), &VORARootViewController::currentChanged);

    QVERIFY(!app.item(QStringLiteral("button106"))); // only the buttons whose screens exist
    QVERIFY(app.click(QStringLiteral("button100")));
    QCOMPARE(switched.size(), 0);
    QCOMPARE(m_site->requestCount(listPath), requests);

    // A comic opens the detail overlay; the banner pauses under it.
    QVERIFY(app.click(QStringLiteral("cell0")));
    QVERIFY(!feed->isStop());
    QQuickItem *detail = app.item(QStringLiteral("comicDetail300000"));
    QTRY_VERIFY(detail->isVisible());
    QCOMPARE(app.item(QStringLiteral("detailName"))->property("text").toString(), feed->recommentArray().at(0).comicName);
    QTRY_COMPARE(VORAImageProvider::pendingCount(), 0);
    app.shot("detail.png");

    // Settings open over the detail and keep it.
    QVERIFY(app.click(QStringLiteral("button108")));
    QVERIFY(app.root()->hasComicDetail());
    QTRY_VERIFY(app.item(QStringLiteral("settingsPanel"))->isVisible());
    QTRY_COMPARE(app.item(QStringLiteral("dimming777777"))->opacity(), 0.6);
    app.shot("settings.png");

    // (The alert box's buttons are clicked in the catalogue window suite.)
    QVERIFY(app.click(QStringLiteral("closeSettings")));
    QVERIFY(!app.root()->settingsOpen());
    QVERIFY(app.root()->hasComicDetail());

    QTRY_VERIFY(!app.item(QStringLiteral("dimming777777"))->isVisible()); // faded out
    // The feed's button closes the detail even though the screen does not switch.
    QVERIFY(app.click(QStringLiteral("button100")));
    QVERIFY(!app.root()->hasComicDetail());
    QTRY_VERIFY(!detail->isVisible());
    QCOMPARE(switched.size(), 0);
}

void TestAppShell::bannerInTheWindow()
{
    Launch app(true);
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("cell0")), 10000);
    VORARecommentView *feed = app.feed();
    QQuickItem *strip = app.item(QStringLiteral("bannerStrip"));
    QVERIFY(strip);
    const qreal width = strip->width();
    QVERIFY(width > 0);

    // A tap on the first slide opens its comic.
    app.tap(app.centreOf(strip));
    QCOMPARE(app.root()->comicDetail().value("comicId").toString(), feed->slideArray().at(0).comicId);
    app.root()->removeComicDetailAndDownloadDeitail();

    // The timer moves the strip page by page.
    feed->setTimerInterval(50);
    QTRY_VERIFY(feed->timeCount() >= 2);
    feed->setTimerInterval(600000);
    QTRY_COMPARE(strip->property("contentX").toReal(), width * feed->timeCount());

    // A swipe pauses the banner while it moves, then lets it run again on
    // the page it ended on.
    QSignalSpy paused(feed, &VORARecommentView::isStopChanged);
    app.swipe(app.centreOf(strip), 200);
    QTRY_VERIFY_WITH_TIMEOUT(paused.size() == 2 && feed->isStop(), 10000);
    QTRY_COMPARE(strip->property("contentX").toReal(), width * feed->timeCount());

    // Pulling the grid down past its 65-pixel header refreshes the tab.
    QSignalSpy answered(feed, &VORARecommentView::answered);
    app.drag(app.item(QStringLiteral("cell0")), 240);
    QTRY_COMPARE_WITH_TIMEOUT(answered.size(), 1, 10000);
    QVERIFY(app.root()->comicDetail().isEmpty()); // the drag was no tap
    QCOMPARE(strip->width(), width); // the refresh keeps the banner's size
}

void TestAppShell::everyButtonOnScreen_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("800x600") << QSize(800, 600);
    QTest::newRow("1280x800") << QSize(1280, 800);
    QTest::newRow("1366x768") << QSize(1366, 768);
    QTest::newRow("portrait 768x1024") << QSize(768, 1024);
}

void TestAppShell::everyButtonOnScreen()
{
    QFETCH(QSize, size);
    Launch app(true, size);
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("cell0")), 10000);
    for (const QVariant &button : app.root()->buttons()) {
        const QString name = QStringLiteral("button%1").arg(button.toMap().value("tag").toInt());
        QVERIFY2(insideWindow(app.window(), app.item(name)), qPrintable(name));
    }
    // Cards wide enough for their titles; the banner at its pictures' aspect.
    QVERIFY(app.item(QStringLiteral("cell0"))->width() >= 260);
    QQuickItem *banner = app.item(QStringLiteral("feedBanner"));
    QCOMPARE(banner->height(), qreal(qRound(banner->width() * 400 / 1024)));
    QVERIFY(insideWindow(app.window(), banner));

    QVERIFY(app.click(QStringLiteral("button108")));
    QTRY_COMPARE(app.item(QStringLiteral("settingsPanel"))->x(), size.width() - app.item(QStringLiteral("settingsPanel"))->width());
    QVERIFY(insideWindow(app.window(), app.item(QStringLiteral("closeSettings"))));
}

void TestAppShell::stillScreensDrawNoFrame_data()
{
    QTest::addColumn<QString>("screen");
    QTest::newRow("feed") << "feed";
    QTest::newRow("detail page") << "detail";
    QTest::newRow("settings panel") << "settings";
    QTest::newRow("reader at rest") << "reader";
}

void TestAppShell::stillScreensDrawNoFrame()
{
    QFETCH(QString, screen);
    ReaderTestWindow app(QSize(1366, 768));
    QVERIFY(app.started());
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("cell0")), 10000);
    app.root()->recommentView()->setTimerInterval(600000); // no slide while counting
    if (screen == QLatin1String("detail")) {
        QVERIFY(app.click(QStringLiteral("cell0")));
        QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("chapter0")), 10000);
    } else if (screen == QLatin1String("settings")) {
        QVERIFY(app.click(QStringLiteral("button108")));
    } else if (screen == QLatin1String("reader")) {
        app.root()->openReader(app.root()->recommentView()->recommentArray().at(0).comicId, QString(),
                               QStringLiteral("kFirstPage"));
        QTRY_VERIFY_WITH_TIMEOUT(app.pageShown(0) && app.restsOn(0), 10000);
    }
    QTRY_COMPARE_WITH_TIMEOUT(VORAImageProvider::pendingCount(), 0, 10000);
    // Once fades and slides have ended, a still screen draws nothing.
    QTRY_VERIFY_WITH_TIMEOUT(framesDrawnOver(app.window(), 500) == 0, 8000);
    QCOMPARE(framesDrawnOver(app.window(), 2000), 0);
    if (screen == QLatin1String("feed")) { // the count sees the banner's slides
        app.root()->recommentView()->setTimerInterval(100);
        QVERIFY(framesDrawnOver(app.window(), 600) > 0);
    }
}

void TestAppShell::startWithoutNetwork()
{
    pointAtClosedPort();
    const int logins = m_site->requestCount(autoLoginPath);
    const int versions = m_site->requestCount(versionPath);
    Launch app(false);
    QVERIFY(app.autoLoginAnswered); // "UserViewPostInfo" all the same
    QVERIFY(app.layer->progressVisible());
    QCOMPARE(app.layer->progressText(), QStringLiteral("网络断开，检查网络设置"));
    QVERIFY(app.feed()->noNetwork()->isVisible());
    QTRY_VERIFY(!app.layer->progressVisible()); // gone after its 2 seconds
    QCOMPARE(m_site->requestCount(autoLoginPath), logins);
    QCOMPARE(m_site->requestCount(versionPath), versions);
}

void TestAppShell::signInAndVersionCheckAtStart()
{
    const int logins = m_site->requestCount(autoLoginPath);
    const int versions = m_site->requestCount(versionPath);
    // A stored key that the site does not know: the answer signs the user out.
    VORAAppGlobalData::shareAppGlobalData()->user()->setKey(QStringLiteral("stale-key"));
    VORAAppGlobalData::shareAppGlobalData()->user()->setNickName(QStringLiteral("someone"));
    Launch app(false);
    QTRY_VERIFY_WITH_TIMEOUT(app.autoLoginAnswered, 10000);
    QCOMPARE(m_site->requestCount(autoLoginPath), logins + 1);
    QTRY_COMPARE_WITH_TIMEOUT(m_site->requestCount(versionPath), versions + 1, 10000);
    QVERIFY(!VORAAppGlobalData::shareAppGlobalData()->loadUser()->isLogin()); // signed out and saved
}

void TestAppShell::rotationAndScreenshots()
{
    const bool intoSources = qEnvironmentVariableIntValue("QUORIN_WRITE_SCREENSHOTS") == 1;
    const QString dir = intoSources ? QStringLiteral(QUORIN_SOURCE_DIR "/docs/screenshots") : m_home.filePath(QStringLiteral("shots"));

    Launch app(true);
    int orientationPosts = 0;
    QObject observer;
    NotificationCenter::defaultCenter().addObserver(&observer,
                                                    QString::fromLatin1(VORANotificationNames::changeApplicationToOrientaion),
                                                    [&](const Notification &) { ++orientationPosts; });
    app.feed()->setTimerInterval(600000); // the banner stays on its first page for the pictures
    struct Shot { QSize size; const char *name; bool landscape; };
    for (const Shot &shot : {Shot{{1024, 768}, "feed-landscape.png", true}, Shot{{768, 1024}, "feed-portrait.png", false}}) {
        app.window()->resize(shot.size);
        QTRY_COMPARE(app.root()->isLandscape(), shot.landscape);
        QCOMPARE(app.feed()->isLandscape(), shot.landscape);
        VORAFeedScreenshot grabber(app.window(), app.root(), dir + QLatin1Char('/') + QLatin1String(shot.name));
        QSignalSpy saved(&grabber, &VORAFeedScreenshot::saved);
        grabber.start();
        QTRY_COMPARE_WITH_TIMEOUT(saved.size(), 1, 40000);
        QVERIFY(saved.at(0).at(1).toBool());
        const QImage image(saved.at(0).at(0).toString());
        QCOMPARE(image.size(), shot.size);
        QSet<QRgb> colours; // not a blank frame: the cells are drawn
        for (int y = 0; y < image.height(); y += 37)
            for (int x = 0; x < image.width(); x += 41)
                colours.insert(image.pixel(x, y));
        QVERIFY(colours.size() > 50);
    }
    QCOMPARE(orientationPosts, 1);
}

QTEST_MAIN(TestAppShell)
#include "tst_appshell.moc"
