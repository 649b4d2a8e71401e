// The bookshelf manager against the reference site over HTTP: the daily update
// check, its failures, the shelf synchronisation and the removal exchange.
// (Whether a start runs the check is tst_appglobaldata's.)

#include "TestHome.h"

#include "QuorinSite.h"
#include "QuorinSiteFaults.h"
#include "SiteCatalogue.h"
#include "SiteDatabase.h"
#include "account/VORAAccountFiller.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORAUtility.h"
#include "net/ASIHTTPRequest.h"
#include "net/VORABookShelfInfoSynchronizationService.h"
#include "net/VORAGetAuthenticateQ42UserService.h"
#include "platform/NotificationCenter.h"
#include "store/VORABookShelfManager.h"
#include "store/VORADatabaseManager.h"

#include <QSignalSpy>
#include <QTest>
#include <QUrlQuery>

#include <algorithm>
#include <memory>

namespace {

VORABookShelf entry(const QString &id, qint64 updateSecs, qint64 addSecs = 1'600'000'000)
{
    VORABookShelf e;
    e.comicId = id;
    e.comicName = QStringLiteral("本地") + id;
    e.coverUrl = QStringLiteral("local-cover");
    e.nameFirstletter = QStringLiteral("B");
    e.updateTime = QDateTime::fromSecsSinceEpoch(updateSecs, Qt::UTC);
    e.adddateTime = QDateTime::fromSecsSinceEpoch(addSecs, Qt::UTC);
    return e;
}

QString formField(const QByteArray &body, const QString &name)
{
    QByteArray plusFixed = body;
    plusFixed.replace('+', "%20");
    return QUrlQuery(QString::fromLatin1(plusFixed)).queryItemValue(name, QUrl::FullyDecoded);
}

} // namespace

class TestBookshelfSite : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void emptyShelfCheckStillMovesTheTime();
    void updateCheckMarksUpdatedComics();
    void failedCheckMovesNothing_data();
    void failedCheckMovesNothing();
    void synchronisationMergesWithoutRemoving();
    void synchronisationFailures_data();
    void synchronisationFailures();
    void deletionNotifiesOnlyForUpdatedEntries();

private:
    void waitForCheck(bool expectApplied);

    TestHome m_home;
    std::unique_ptr<QuorinSite> m_site;
    VORABookShelfManager *m_manager = nullptr;
    VORAAppGlobalData *m_global = nullptr;
    qint64 m_anchor = 0; // when the site's catalogue was made
};

void TestBookshelfSite::initTestCase()
{
    // The site's catalogue was made three days ago, so the chapters it had
    // due after that (the sealed comics' newest) are out by now.
    const QString siteDir = m_home.filePath("site");
    m_anchor = QDateTime::currentSecsSinceEpoch() / 3600 * 3600 - 3 * SiteCatalogue::kDay;
    {
        QuorinSite made(QuorinSiteOptions{siteDir, 1, false});
    }
    {
        SiteDatabase db;
        QVERIFY(db.open(siteDir + "/quorin-site-s1.sqlite"));
        QVERIFY(db.run("UPDATE meta SET value=? WHERE name='anchor'", {QString::number(m_anchor)}));
    }
    m_site = std::make_unique<QuorinSite>(QuorinSiteOptions{siteDir, 1, false});
    QVERIFY(m_site->listen() != 0);
    qputenv("QUORIN_API_BASE", m_site->baseUrl().toString().toUtf8());
    qputenv("QUORIN_PAY_BASE", m_site->baseUrl().toString().toUtf8());
    ASIHTTPRequest::setDefaultTimeOutSeconds(2);

    VORABookShelfManager::installIntoGlobalData();
    m_global = VORAAppGlobalData::shareAppGlobalData();
    m_manager = qobject_cast<VORABookShelfManager *>(m_global->bookShelfManager());
    QVERIFY(m_manager);
    QTRY_VERIFY(VORAUtility::isExistenceNetwork());

    VORAGetAuthenticateQ42UserService signIn;
    signIn.userName = QStringLiteral("reader");
    signIn.password = QStringLiteral("reader123");
    signIn.synchronousRequest();
    QVERIFY(!signIn.error());
    QCOMPARE(signIn.code, 1);
    VORAAccountFiller::fillUserWithReturnData(*m_global->user(), QJsonObject{{"key", signIn.key}, {"user", *signIn.data}}, 2);
    QVERIFY(m_global->saveUser());
    QVERIFY(m_global->user()->isLogin());
}

void TestBookshelfSite::init()
{
    // Every test starts from an empty local shelf and adds what it needs.
    for (const VORABookShelf &e : m_manager->getAllBookshelf())
        m_manager->deleteBookshelf(e);
    QVERIFY(VORADatabaseManager().getAllBookshelf().isEmpty());
}

void TestBookshelfSite::cleanup()
{
    m_site->faults().clear();
}

void TestBookshelfSite::waitForCheck(bool expectApplied)
{
    QSignalSpy finished(m_manager, &VORABookShelfManager::updateCheckFinished);
    m_manager->syncBookshelfFromServer();
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 20000);
    QCOMPARE(finished.first().first().toBool(), expectApplied);
    QVERIFY(!m_manager->isCheckingUpdates());
}

void TestBookshelfSite::emptyShelfCheckStillMovesTheTime()
{
    const QDateTime before = QDateTime::currentDateTimeUtc().addDays(-3);
    m_global->appStatus()->setBookshelfUpdateTime(before);
    waitForCheck(true);
    const QuorinSiteRequestRecord request = m_site->lastRequest(QStringLiteral("ios/pad/check_update.php"));
    QVERIFY(request.valid);
    QCOMPARE(formField(request.body, "post_data"), QString());
    QVERIFY(m_global->loadAppStatus()->bookshelfUpdateTime() > before);
}

void TestBookshelfSite::updateCheckMarksUpdatedComics()
{
    // A sealed comic added when the catalogue was made: its newest chapter has come out since.
    const SiteCatalogue catalogue(1, m_anchor, 60);
    const auto sealed = std::find_if(catalogue.comics().cbegin(), catalogue.comics().cend(),
                                     [](const SiteCatalogue::Comic &c) { return c.isVip == 3; });
    QVERIFY(sealed != catalogue.comics().cend());
    const QString sealedId = QString::number(sealed->id);
    const qint64 future = QDateTime::currentSecsSinceEpoch() + 10 * 365 * 86400;
    m_manager->addBookshelfList({entry("10001", 1000), entry("10002", future), entry("999999", 1000),
                                 entry(sealedId, sealed->lastUpdateTime)});
    const QDateTime before = QDateTime::currentDateTimeUtc().addDays(-2);
    m_global->appStatus()->setBookshelfUpdateTime(before);

    int counted = 0;
    QObject observer;
    NotificationCenter::defaultCenter().addObserver(&observer, VORANotificationNames::bookshelfLatestCountChange,
                                                    [&](const Notification &) { ++counted; });
    waitForCheck(true);

    const QString postData = formField(m_site->lastRequest("ios/pad/check_update.php").body, "post_data");
    QCOMPARE(postData, QStringLiteral("10001|1000||10002|%1||999999|1000||%2|%3||")
                           .arg(future).arg(sealedId).arg(sealed->lastUpdateTime));

    const auto updated = m_manager->getBookshelfWithComicId("10001");
    QVERIFY(updated->isHasUpdate);
    QVERIFY(!updated->latestUpdateChapterId.isEmpty());
    QVERIFY(!m_manager->getBookshelfWithComicId("10002")->isHasUpdate);
    QVERIFY(!m_manager->getBookshelfWithComicId("999999")->isHasUpdate);
    const auto passed = m_manager->getBookshelfWithComicId(sealedId);
    QVERIFY(passed->isHasUpdate);
    QCOMPARE(passed->latestUpdateChapterId, QString::number(sealed->chapters.constLast().id));
    QCOMPARE(m_manager->latestCount(), 2);
    QCOMPARE(counted, 1);

    // Written through to the store, and the status saved.
    const BookshelfPtr stored = VORADatabaseManager().getBookshelfWithComicId("10001");
    QCOMPARE(stored->latestUpdateChapterId(), updated->latestUpdateChapterId);
    QVERIFY(m_global->loadAppStatus()->bookshelfUpdateTime() > before);
}

void TestBookshelfSite::failedCheckMovesNothing_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("error status") << "status";
    QTest::newRow("stalled") << "stall";
    QTest::newRow("not json") << "garbage";
    QTest::newRow("refusal without list") << "refusal";
    QTest::newRow("data not a list") << "object";
}

void TestBookshelfSite::failedCheckMovesNothing()
{
    QFETCH(QString, fault);
    const QString path = QStringLiteral("ios/pad/check_update.php");
    if (fault == "status")
        m_site->faults().setErrorStatus(path, 500, "<html>boom</html>");
    else if (fault == "stall")
        m_site->faults().setStall(path);
    else if (fault == "garbage")
        m_site->faults().setMalformed(path, "{\"data\": [ {\"comic_id\": \"10002\"");
    else if (fault == "refusal")
        m_site->faults().setMalformed(path, "{\"code\": 0, \"message\": \"维护中\"}");
    else
        m_site->faults().setMalformed(path, "{\"data\": {\"comic_id\": \"10002\", \"name\": \"x\"}}");

    m_manager->addBookshelfList({entry("10002", 1000)});
    const QDateTime before = QDateTime::currentDateTimeUtc().addDays(-5);
    m_global->appStatus()->setBookshelfUpdateTime(before);
    m_global->saveAppStatus();
    const QList<VORABookShelf> shelf = m_manager->getAllBookshelf();
    waitForCheck(false);
    QCOMPARE(m_global->appStatus()->bookshelfUpdateTime(), before);
    QCOMPARE(m_global->loadAppStatus()->bookshelfUpdateTime().toSecsSinceEpoch(), before.toSecsSinceEpoch());
    QCOMPARE(m_manager->getAllBookshelf(), shelf);
}

void TestBookshelfSite::synchronisationMergesWithoutRemoving()
{
    // The shelf holds 10001, 10002 and a comic the site does not know; the site shelf is empty.
    m_manager->addBookshelfList({entry("10001", 1000), entry("10002", 1000), entry("999999", 1000)});
    QSignalSpy finished(m_manager, &VORABookShelfManager::synchronizationFinished);
    m_manager->synchronizeBookshelfWithSite();
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).toBool(), true);
    QCOMPARE(finished.at(0).at(1).toString(), QStringLiteral("Quorin网站没有可以同步的收藏漫画"));
    QCOMPARE(finished.at(0).at(2).toInt(), 0);
    const QString sent = QString::fromUtf8(QByteArray::fromBase64(
        formField(m_site->lastRequest("ios/pad/fav.php").body, "data").toLatin1()));
    QCOMPARE(sent, QStringLiteral("10001|add|1600000000||10002|add|1600000000||999999|add|1600000000||"));

    // Another device puts two comics on the site shelf, one long ago.
    {
        VORABookShelfInfoSynchronizationService other;
        other.comicIdsDate = QStringLiteral("10003|add|1||10004|add|%1||").arg(QDateTime::currentSecsSinceEpoch());
        other.synchronousRequest();
        QVERIFY(!other.error());
    }
    finished.clear();
    m_manager->synchronizeBookshelfWithSite();
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(1).toString(), QStringLiteral("已从quorin网站同步2本漫画到本地"));
    QCOMPARE(finished.at(0).at(2).toInt(), 2);
    QCOMPARE(m_manager->getAllBookshelf().size(), 5);
    QVERIFY(m_manager->getBookshelfWithComicId("999999")); // local comics stay
    const auto longAgo = m_manager->getBookshelfWithComicId("10003");
    QVERIFY(longAgo->isHasUpdate); // "sort" 2: updated since it was added
    QVERIFY(!longAgo->nameFirstletter.isEmpty());
    QVERIFY(longAgo->adddateTime > QDateTime::currentDateTimeUtc().addSecs(-600));
    QCOMPARE(VORADatabaseManager().getAllBookshelf().size(), 5);

    // Removal: deleted here, then the site hears a "delete" record.
    QSignalSpy removal(m_manager, &VORABookShelfManager::removalExchangeFinished);
    m_manager->removeBookshelfAndTellSite(*m_manager->getBookshelfWithComicId("10004"));
    QVERIFY(!m_manager->getBookshelfWithComicId("10004"));
    QTRY_COMPARE(removal.count(), 1);
    QCOMPARE(removal.first().first().toBool(), true);
    QVERIFY(!m_manager->getBookshelfWithComicId("10004")); // the site no longer lists it
    const QString deleteRecord = QString::fromUtf8(QByteArray::fromBase64(
        formField(m_site->lastRequest("ios/pad/fav.php").body, "data").toLatin1()));
    QVERIFY2(deleteRecord.startsWith(QStringLiteral("10004|delete|")) && deleteRecord.endsWith("||"),
             qPrintable(deleteRecord));
    QCOMPARE(deleteRecord.count(QStringLiteral("||")), 1);
}

void TestBookshelfSite::synchronisationFailures_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("message");
    QTest::newRow("refused") << "refused" << QStringLiteral("同步失败，请检查网络设置");
    QTest::newRow("malformed") << "malformed" << QStringLiteral("同步失败，请检查网络设置");
    QTest::newRow("stalled") << "stall" << QStringLiteral("请求服务器失败，网络信号不是太好哟~");
}

void TestBookshelfSite::synchronisationFailures()
{
    QFETCH(QString, fault);
    QFETCH(QString, message);
    const QString path = QStringLiteral("ios/pad/fav.php");
    if (fault == "refused")
        m_site->faults().setMalformed(path, "{\"code\": 0, \"message\": \"请先登录\", \"data\": [{\"comic_id\": \"10005\"}]}");
    else if (fault == "malformed")
        m_site->faults().setMalformed(path, "[1, 2, 3]");
    else
        m_site->faults().setStall(path);
    m_manager->addBookshelfList({entry("10001", 1000)});
    const auto shelf = m_manager->getAllBookshelf();
    QSignalSpy finished(m_manager, &VORABookShelfManager::synchronizationFinished);
    m_manager->synchronizeBookshelfWithSite();
    QVERIFY(m_manager->isSynchronizing());
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 20000);
    QCOMPARE(finished.at(0).at(0).toBool(), false);
    QCOMPARE(finished.at(0).at(1).toString(), message);
    QVERIFY(!m_manager->isSynchronizing());
    QCOMPARE(m_manager->getAllBookshelf(), shelf);
}

void TestBookshelfSite::deletionNotifiesOnlyForUpdatedEntries()
{
    VORABookShelf withUpdate = entry("10001", 1000);
    withUpdate.isHasUpdate = true;
    m_manager->addBookshelfList({entry("999999", 1000), withUpdate});
    int counted = 0;
    QObject observer;
    NotificationCenter::defaultCenter().addObserver(&observer, VORANotificationNames::bookshelfLatestCountChange,
                                                    [&](const Notification &n) {
                                                        QCOMPARE(n.sender, m_manager);
                                                        ++counted;
                                                    });
    const auto plain = m_manager->getBookshelfWithComicId("999999");
    QVERIFY(plain && !plain->isHasUpdate);
    m_manager->deleteBookshelf(*plain);
    QCOMPARE(counted, 0);
    const auto updated = m_manager->getBookshelfWithComicId("10001");
    QVERIFY(updated && updated->isHasUpdate);
    m_manager->deleteBookshelf(*updated);
    QCOMPARE(counted, 1);
    QVERIFY(VORADatabaseManager().getAllBookshelf().isEmpty());
}

QTEST_MAIN(TestBookshelfSite)
#include "tst_bookshelfsite.moc"
