// The shell's parts that need no window: the overlay layer's answers by tag,
// badges, URL opening and the second start, the version answer, the settings
// caches, the pictures and the image loading through the disk cache.

#include "QuorinSite.h"
#include "QuorinSiteFaults.h"
#include "TestHome.h"
#include "VORAAppDelegate.h"
#include "VORAArtwork.h"
#include "VORAImageProvider.h"
#include "VORAImageResponse.h"
#include "VORAInstanceChannel.h"
#include "VORAOverlayLayer.h"
#include "VORARootViewController.h"
#include "VORASettingView.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORAUserConfig.h"
#include "core/VORAUtility.h"
#include "platform/NotificationCenter.h"
#include "store/VORABookShelfManager.h"
#include "store/VORADatabaseManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonObject>
#include <QSignalSpy>
#include <QThread>
#include <QTest>

#include <memory>
#include <vector>

// Answers alerts like a screen does and remembers them.
class AlertDelegate : public QObject
{
    Q_OBJECT
public:
    QList<QPair<int, int>> answers;
    Q_INVOKABLE void alertView(int tag, int buttonIndex) { answers.append({tag, buttonIndex}); }
};

class TestAppServices : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void alertsAnswerTheirDelegateByTag();
    void loadingViewsAndPanels();
    void downloadBadge_data();
    void downloadBadge();
    void bookshelfBadge();
    void signOutConfirmation();
    void versionAnswer_data();
    void versionAnswer();
    void openURL_data();
    void openURL();
    void secondStartForwardsItsUrls();
    void settingsMeasureAndClearTheCaches();
    void picturesAreDrawnUnderTheirNames();
    void remoteImagesGoThroughTheDiskCache();
    void responsesOfADroppedProviderStillFinish();
    void badImageRequests_data();
    void badImageRequests();

private:
    static QVariantMap lastSafariObject;
    TestHome m_home;
    std::unique_ptr<QuorinSite> m_site;
};

QVariantMap TestAppServices::lastSafariObject;

void TestAppServices::initTestCase()
{
    m_site = std::make_unique<QuorinSite>(QuorinSiteOptions{m_home.filePath(QStringLiteral("site"))});
    QVERIFY(m_site->listen() != 0);
    qputenv("QUORIN_API_BASE", m_site->baseUrl().toString().toUtf8());
    VORADatabaseManager::initializeDB();
    VORABookShelfManager::installIntoGlobalData();
    VORAAppGlobalData::shareAppGlobalData();
}

void TestAppServices::alertsAnswerTheirDelegateByTag()
{
    VORAOverlayLayer layer;
    AlertDelegate delegate;
    VORAUtility::requestAlertMessage(QStringLiteral("m1"), QStringLiteral("t"), 7, QStringLiteral("a"),
                                     QStringLiteral("b"), &delegate);
    VORAUtility::requestCoinAlertMessage(QStringLiteral("m2"), QStringLiteral("t"), 10003, &delegate);
    VORAUtility::requestAtlerMessage(QStringLiteral("m3"), QStringLiteral("t"), nullptr);
    QCOMPARE(layer.alertMessages(), (QStringList{"m1", "m2", "m3"}));
    const QVariantList alerts = layer.alerts();

    // A button the alert does not have is refused and the alert stays answered (gone).
    layer.answerAlert(alerts.at(0).toMap().value("alertId").toInt(), 5);
    QVERIFY(delegate.answers.isEmpty());
    layer.answerAlert(alerts.at(1).toMap().value("alertId").toInt(), 2);
    QCOMPARE(delegate.answers, (QList<QPair<int, int>>{{10003, 2}}));
    // No delegate: the answer goes nowhere, without harm; unknown ids too.
    layer.answerAlert(alerts.at(2).toMap().value("alertId").toInt(), 0);
    layer.answerAlert(12345, 0);
    QVERIFY(layer.alerts().isEmpty());

    // A delegate gone before the answer hears nothing.
    auto *gone = new AlertDelegate;
    VORAUtility::requestAlertMessage(QStringLiteral("m4"), QString(), 9, QStringLiteral("a"), QStringLiteral("b"), gone);
    delete gone;
    layer.answerAlert(layer.alerts().at(0).toMap().value("alertId").toInt(), 0);
    QVERIFY(layer.alerts().isEmpty());
}

void TestAppServices::loadingViewsAndPanels()
{
    VORAOverlayLayer layer;
    QObject a, b;
    VORAUtility::showLoadingViewWithParentView(&a, QStringLiteral("加载中..."));
    VORAUtility::showLoadingViewWithParentView(&b, QStringLiteral("b"));
    VORAUtility::showLoadingViewWithParentView(&a, QStringLiteral("again")); // replaces a's
    QCOMPARE(layer.loadingViews().size(), 2);
    QCOMPARE(layer.loadingViews().at(1).toMap().value("text").toString(), QStringLiteral("again"));
    VORAUtility::hideLoadingViewWithParentView(&a);
    QCOMPARE(layer.loadingViews().size(), 1);

    layer.showProgress(QStringLiteral("p"));
    QVERIFY(layer.progressVisible() && layer.progressBlocking());
    layer.showTextPanel(QStringLiteral("t"), 10);
    QVERIFY(layer.progressVisible() && !layer.progressBlocking());
    QTRY_VERIFY(!layer.progressVisible()); // hidden after its delay
    layer.showNotice(QStringLiteral("n"), 10);
    QVERIFY(layer.noticeVisible());
    QTRY_VERIFY(!layer.noticeVisible());
}

void TestAppServices::downloadBadge_data()
{
    QTest::addColumn<QVariant>("count");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("visible");
    QTest::newRow("100 shows N") << QVariant("100") << "N" << true;
    QTest::newRow("99 shows 99") << QVariant("99") << "99" << true;
    QTest::newRow("0 hides") << QVariant("0") << "" << false;
    QTest::newRow("not a number hides") << QVariant("lots") << "" << false;
    QTest::newRow("negative hides") << QVariant("-3") << "" << false;
    QTest::newRow("missing hides") << QVariant() << "" << false;
}

void TestAppServices::downloadBadge()
{
    QFETCH(QVariant, count);
    QFETCH(QString, text);
    QFETCH(bool, visible);
    VORARootViewController root(true);
    // Shown first, so that a hiding row really hides.
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::downloadCountChange), nullptr,
                                             {{QStringLiteral("DownloadCount"), QStringLiteral("5")}});
    QVERIFY(root.downloadBadgeVisible());
    QVariantMap info;
    if (count.isValid())
        info.insert(QStringLiteral("DownloadCount"), count);
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::downloadCountChange), nullptr, info);
    QCOMPARE(root.downloadBadgeVisible(), visible);
    if (visible)
        QCOMPARE(root.downloadBadge(), text);
}

void TestAppServices::bookshelfBadge()
{
    // The count's text ("N" above 99) is the download badge's rows.
    VORARootViewController root(true);
    QVERIFY(!root.bookshelfBadgeVisible());
    QList<VORABookShelf> shelf(4);
    for (int i = 0; i < 4; ++i) {
        shelf[i].comicId = QString::number(9000 + i);
        shelf[i].isHasUpdate = i % 2 == 0;
    }
    QVERIFY(VORABookShelfManager::sharedManager());
    VORABookShelfManager::sharedManager()->addBookshelfList(shelf); // posts the count change
    const QString name = QString::fromLatin1(VORANotificationNames::bookshelfLatestCountChange);
    QCOMPARE(root.bookshelfBadge(), QStringLiteral("2"));
    QVERIFY(root.bookshelfBadgeVisible());

    // The preference off hides it; back on shows it again.
    VORAUserConfig::shareUserConfigInstance()->setIsNotifyUpdate(false);
    NotificationCenter::defaultCenter().post(name);
    QVERIFY(!root.bookshelfBadgeVisible());
    VORAUserConfig::shareUserConfigInstance()->setIsNotifyUpdate(true);
    NotificationCenter::defaultCenter().post(name);
    QVERIFY(root.bookshelfBadgeVisible());
}

void TestAppServices::signOutConfirmation()
{
    VORAOverlayLayer layer;
    VORARootViewController root(true);
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    global->user()->setKey(QStringLiteral("k"));
    int posted = 0;
    QObject observer;
    NotificationCenter::defaultCenter().addObserver(&observer, QString::fromLatin1(VORANotificationNames::userViewPostInfo),
                                                    [&](const Notification &) { ++posted; });

    root.requestSignOut();
    QCOMPARE(layer.alerts().size(), 1);
    layer.answerAlert(layer.alerts().at(0).toMap().value("alertId").toInt(), 1); // cancel
    QVERIFY(global->user()->isLogin());
    QCOMPARE(posted, 0);

    root.requestSignOut();
    layer.answerAlert(layer.alerts().at(0).toMap().value("alertId").toInt(), 0);
    QVERIFY(!global->user()->isLogin());
    QCOMPARE(posted, 1);
    QVERIFY(!global->loadUser()->isLogin()); // saved
}

void TestAppServices::versionAnswer_data()
{
    QTest::addColumn<QJsonObject>("answer");
    QTest::addColumn<bool>("prompt");
    QTest::addColumn<int>("fromAppStore");
    // Plain string order against the app's 3.5: "3.10" sorts before it.
    QTest::newRow("3.10 is not newer") << QJsonObject{{"from", 0}, {"auto_update", 1}, {"name", "3.10"}} << false << 0;
    QTest::newRow("4.0 is newer") << QJsonObject{{"from", 0}, {"auto_update", 1}, {"name", "4.0"}, {"update_content", "新版本"}} << true << 0;
    QTest::newRow("3.6 is newer") << QJsonObject{{"from", 1}, {"auto_update", 1}, {"name", "3.6"}} << true << 1;
    QTest::newRow("no auto update") << QJsonObject{{"from", 0}, {"auto_update", 0}, {"name", "9.9"}} << false << 0;
    QTest::newRow("numeric name") << QJsonObject{{"from", 0}, {"auto_update", 1}, {"name", 9.9}} << false << 0;
    QTest::newRow("no name") << QJsonObject{{"from", "1"}, {"auto_update", "1"}} << false << 1;
}

void TestAppServices::versionAnswer()
{
    QFETCH(QJsonObject, answer);
    QFETCH(bool, prompt);
    QFETCH(int, fromAppStore);
    VORAOverlayLayer layer;
    VORAAppDelegate delegate(&layer);
    delegate.handleCheckVersionAnswer(answer);
    QCOMPARE(layer.alerts().size(), prompt ? 1 : 0);
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    QCOMPARE(global->appStatus()->fromAppStore(), fromAppStore);
    QCOMPARE(global->loadAppStatus()->fromAppStore(), fromAppStore); // saved
    if (prompt) // "later" does nothing
        QCOMPARE(delegate.alertType(), 0);
}

void TestAppServices::openURL_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("source");
    QTest::addColumn<bool>("taken");
    QTest::addColumn<QString>("object");
    const QString browser = VORAAppDelegate::browserSourceApplication;
    QTest::newRow("escaped space") << "quorin://x%20y" << browser << true << "x y";
    QTest::newRow("utf-8 and slashes") << "quorin://pay/ok?order=%E4%B8%AD%2F1" << browser << true << "pay/ok?order=中/1";
    QTest::newRow("nothing after the scheme") << "quorin://" << browser << true << "";
    QTest::newRow("another scheme") << "https://example.com/x" << browser << false << "";
    QTest::newRow("not from the browser") << "quorin://x" << "com.example.other" << false << "";
}

void TestAppServices::openURL()
{
    QFETCH(QString, url);
    QFETCH(QString, source);
    QFETCH(bool, taken);
    QFETCH(QString, object);
    VORAOverlayLayer layer;
    VORAAppDelegate delegate(&layer);
    QStringList posted;
    QObject observer;
    NotificationCenter::defaultCenter().addObserver(&observer, QString::fromLatin1(VORANotificationNames::safariSuccess),
                                                    [&](const Notification &n) {
                                                        posted.append(n.userInfo.value(QStringLiteral("object")).toString());
                                                    });
    QCOMPARE(delegate.openURL(url, source), taken);
    QCOMPARE(posted, taken ? QStringList{object} : QStringList{});
}

void TestAppServices::secondStartForwardsItsUrls()
{
    const QString name = QStringLiteral("quorin-test-%1").arg(QCoreApplication::applicationPid());
    QVERIFY(!VORAInstanceChannel::forwardToRunningInstance({QStringLiteral("quorin://a")}, name));
    VORAInstanceChannel channel;
    QVERIFY(channel.listen(name));
    QSignalSpy received(&channel, &VORAInstanceChannel::urlReceived);
    // The second start blocks while it hands over; run it off this thread.
    bool forwarded = false;
    std::unique_ptr<QThread> second(QThread::create([&] {
        forwarded = VORAInstanceChannel::forwardToRunningInstance(
            {QStringLiteral("quorin://x%20y"), QString(QLatin1String("quorin://") + QString(5000, QLatin1Char('a'))),
             QStringLiteral("quorin://z")},
            name);
    }));
    second->start();
    QTRY_VERIFY(second->isFinished());
    QVERIFY(forwarded);
    QTRY_COMPARE(received.size(), 2); // the over-long one is dropped
    QCOMPARE(received.at(0).at(0).toString(), QStringLiteral("quorin://x%20y"));
    QCOMPARE(received.at(1).at(0).toString(), QStringLiteral("quorin://z"));
}

void TestAppServices::settingsMeasureAndClearTheCaches()
{
    // What counts as cache size is the utility's (tst_utility); here both caches are summed and emptied.
    QFile page(VORAUtility::pageCacheDirectory() + QStringLiteral("p1"));
    QFile comic(VORAUtility::comicCacheDirectory() + QStringLiteral("c1"));
    for (QFile *f : {&page, &comic}) {
        QDir().mkpath(QFileInfo(*f).absolutePath());
        QVERIFY(f->open(QIODevice::WriteOnly));
        f->write(QByteArray(f == &page ? 1048576 : 524288, 'x'));
        f->close();
    }
    VORASettingView settings;
    QTRY_COMPARE(settings.cacheSizeText(), QStringLiteral("1.50 MB"));
    QSignalSpy cleared(&settings, &VORASettingView::cacheCleared);
    settings.clearCache();
    settings.clearCache(); // a second press while clearing is ignored
    QTRY_COMPARE(cleared.size(), 1);
    QCOMPARE(settings.cacheSize(), 0.0);
    QVERIFY(!page.exists() && !comic.exists());
}

void TestAppServices::picturesAreDrawnUnderTheirNames()
{
    QVERIFY(VORAArtwork::draw(QStringLiteral("nosuchpicture.png")).isNull());

    // Drawn once into the cache under the name, read from there afterwards;
    // a damaged file is drawn again.
    QString error;
    const QString file = VORAArtwork::filePath(QStringLiteral("dujia.png"));
    QFile::remove(file);
    QVERIFY(!VORAImageJob::load(QStringLiteral("art/dujia.png"), {}, &error).isNull());
    QVERIFY(QFile::exists(file));
    {
        QFile f(file);
        QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write("not a png");
    }
    QVERIFY(!VORAImageJob::load(QStringLiteral("art/dujia.png"), {}, &error).isNull());
}

void TestAppServices::remoteImagesGoThroughTheDiskCache()
{
    const QString url = m_site->baseUrl().toString() + QStringLiteral("images/cover/10001.jpg");
    const QString id = QStringLiteral("net/") + QString::fromLatin1(QUrl::toPercentEncoding(url));
    const QString cacheFile = VORAImageProvider::cacheFileForUrl(url);
    QFile::remove(cacheFile);
    QVERIFY(cacheFile.startsWith(QDir::cleanPath(VORAUtility::comicCacheDirectory())));

    QString error;
    const QImage first = VORAImageJob::load(id, {}, &error);
    QVERIFY2(!first.isNull(), qPrintable(error));
    QVERIFY(QFile::exists(cacheFile));
    const int requests = m_site->requestCount(QStringLiteral("images/cover/10001.jpg"));

    // From the disk now: the site is not asked again, even when it fails.
    m_site->faults().setErrorStatus(QStringLiteral("images/cover/10001.jpg"), 500, "");
    const QImage second = VORAImageJob::load(id, {}, &error);
    QCOMPARE(second.size(), first.size());
    QCOMPARE(m_site->requestCount(QStringLiteral("images/cover/10001.jpg")), requests);

    // A damaged cache file is dropped; with the site failing there is no picture.
    {
        QFile f(cacheFile);
        QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write("garbage");
    }
    error.clear();
    QVERIFY(VORAImageJob::load(id, {}, &error).isNull());
    QVERIFY(!error.isEmpty());
    QVERIFY(!QFile::exists(cacheFile)); // (the provider's pool is the window suites')
    m_site->faults().clear();
}

void TestAppServices::responsesOfADroppedProviderStillFinish()
{
    // More loads than workers: going away, the provider drops those still queued.
    auto provider = std::make_unique<VORAImageProvider>();
    std::vector<std::unique_ptr<QQuickImageResponse>> responses;
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    for (int i = 0; i < 4 * VORAImageProvider::maxThreads; ++i) {
        responses.emplace_back(provider->requestImageResponse(QStringLiteral("art/dujia.png"), {}));
        spies.push_back(std::make_unique<QSignalSpy>(responses.back().get(), &QQuickImageResponse::finished));
    }
    provider.reset();
    QCOMPARE(VORAImageProvider::pendingCount(), 0);
    // The engine cancels what it still waits for, and deletes a response only once finished.
    for (const auto &response : responses)
        response->cancel();
    QCoreApplication::sendPostedEvents(); // the answers of the loads that did run
    for (const auto &spy : spies)
        QCOMPARE(spy->count(), 1);
}

void TestAppServices::badImageRequests_data()
{
    QTest::addColumn<QString>("id");
    QTest::newRow("local file") << QStringLiteral("net/") + QString::fromLatin1(QUrl::toPercentEncoding("file:///etc/passwd"));
    QTest::newRow("not a url") << QStringLiteral("net/%%%");
    QTest::newRow("empty") << QString();
    QTest::newRow("unknown kind") << QStringLiteral("disk/x");
    QTest::newRow("unknown picture") << QStringLiteral("art/../../etc/passwd");
    QTest::newRow("not an image") << QStringLiteral("net/") + QString::fromLatin1(QUrl::toPercentEncoding(
                                                                  QStringLiteral("http://127.0.0.1:%1/ios/pad/list.php").arg(0)));
}

void TestAppServices::badImageRequests()
{
    QFETCH(QString, id);
    QString realId = id;
    if (realId.contains(QLatin1String("%3A0%2F")))
        realId.replace(QLatin1String("%3A0%2F"), QStringLiteral("%3A%1%2F").arg(m_site->baseUrl().port()));
    QString error;
    QVERIFY(VORAImageJob::load(realId, {}, &error).isNull());
    QVERIFY(!error.isEmpty());
}

QTEST_MAIN(TestAppServices)
#include "tst_appservices.moc"
