// The reading session against the reference site: where a chapter opens
// ("kFirstPage", "kLastPage", a page id), the prefetch set, the read gate (the
// rule alone at a fixed time, then what a refusal does to the opening), the
// dialog answers, the one purchase through the site of the reader's suites,
// downloaded chapters (finished: offline and ungated; partly: online), the
// sign-in notification and teardown.

#include "ReaderSessionTestSupport.h"
#include "catalogue/VORAChapterPurchase.h"
#include "core/VORAArchiveNames.h"
#include "core/VORAUtility.h"
#include "reader/VORAPageDownloadManager.h"
#include "store/VORAPersistenceManager.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

using namespace readertest;

namespace {
const QDateTime fixedNow = QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC);

// Waits until every loader of the prefetch set has ended.
bool waitForLoaders(const VORAReadComicManager &session)
{
    return QTest::qWaitFor(
        [&]() {
            for (VORAPageDownloadManager *loader : session.pageCache()) {
                if (!loader->isLoadFinish())
                    return false;
            }
            return true;
        },
        20000);
}

QList<int> indexesOf(const QList<VORAPageDownloadManager *> &loaders)
{
    QList<int> out;
    for (const VORAPageDownloadManager *loader : loaders)
        out << loader->pageInfoDTO().index;
    return out;
}

QJsonObject paidChapter(qint64 price, qint64 buyed = 0)
{
    return QJsonObject{{"type", 2}, {"buyed", buyed}, {"is_view", 0}, {"price", price}, {"release_time", 1}, {"pass_time", 1}};
}
} // namespace

class TestReadSession : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void startPage_data();
    void startPage();
    void prefetchSet_data();
    void prefetchSet();
    void gateRefusalEndsTheOpening();
    void dialogAnswers_data();
    void dialogAnswers();
    void purchaseThroughTheSite();
    void downloadedChapters();
    void signInNotificationAndTeardown();

private:
    // A session at a fixed time telling m_recorder and m_hooks.
    std::unique_ptr<VORAReadComicManager> makeSession(const QString &comicId, const QString &chapterId,
                                                      const QString &pageId);

    CatalogueTestEnvironment m_env;
    SessionRecorder m_recorder;
    RecordingHooks m_hooks;
};

std::unique_ptr<VORAReadComicManager> TestReadSession::makeSession(const QString &comicId, const QString &chapterId,
                                                                   const QString &pageId)
{
    auto session = std::make_unique<VORAReadComicManager>(comicId, chapterId, pageId);
    session->setNowForTesting([]() { return fixedNow; });
    session->setDelegate(&m_recorder);
    session->setReadHomeViewController(&m_hooks);
    return session;
}

void TestReadSession::initTestCase()
{
    QVERIFY(m_env.start());
}

void TestReadSession::init()
{
    m_recorder = SessionRecorder();
    m_hooks.calls.clear();
}

void TestReadSession::cleanup()
{
    m_env.site->faults().clear();
    m_env.pointAtSite();
    VORAAppGlobalData::shareAppGlobalData()->appStatus()->setFromAppStore(0);
    QVERIFY(signInAs(QString(), QString()));
}

// --- Where the chapter opens ---

void TestReadSession::startPage_data()
{
    QTest::addColumn<QByteArray>("chapterBody");
    QTest::addColumn<QString>("pageId");
    QTest::addColumn<int>("pageCount");
    QTest::addColumn<int>("pageIndex");
    QTest::addColumn<QString>("firstPageId");

    const QByteArray three = chapterAnswer(pagesData(3));
    QTest::newRow("first page") << three << "kFirstPage" << 3 << 0 << "p1";
    QTest::newRow("last page") << three << "kLastPage" << 3 << 2 << "p1";
    QTest::newRow("page id") << three << "p3" << 3 << 2 << "p1";
    QTest::newRow("unknown id keeps 0") << three << "p99" << 3 << 0 << "p1";
    QTest::newRow("data not an array, last page") << chapterAnswer(QJsonObject{{"0", "p1"}}) << "kLastPage" << 0 << -1
                                                  << "";
    QTest::newRow("data missing") << QByteArray(R"({"code":0,"message":"章节不存在"})") << "kFirstPage" << 0 << 0
                                  << "";
}

void TestReadSession::startPage()
{
    QFETCH(QByteArray, chapterBody);
    QFETCH(QString, pageId);
    QFETCH(int, pageCount);
    QFETCH(int, pageIndex);
    QFETCH(QString, firstPageId);

    m_env.site->faults().setMalformed(comicPath, comicAnswer(0, {QJsonObject{{"is_view", 1}}}));
    m_env.site->faults().setMalformed(chapterPath, chapterBody);
    auto session = makeSession("777", "9001", pageId);
    session->load();
    QTRY_COMPARE(m_recorder.infoCalls, 1);
    QVERIFY(!m_recorder.lastInfoFailed);
    QCOMPARE(session->pageList().size(), pageCount);
    QCOMPARE(session->pageIndex(), pageIndex);
    if (pageCount > 0) {
        QCOMPARE(session->pageList().first().pageId, firstPageId);
        QCOMPARE(session->pageList().last().index, pageCount - 1);
    }
}

// --- Prefetch set ---

void TestReadSession::prefetchSet_data()
{
    QTest::addColumn<QList<int>>("moves");
    QTest::addColumn<QList<int>>("wanted");

    QTest::newRow("0 from 0") << QList<int>{0} << QList<int>{0, 1, 2};
    QTest::newRow("1 from 0: page 0 is no neighbour") << QList<int>{1} << QList<int>{1, 2, 3};
    QTest::newRow("forwards") << QList<int>{4, 5} << QList<int>{5, 6, 7, 4, 3};
    QTest::newRow("backwards") << QList<int>{10, 9} << QList<int>{9, 8, 7, 10, 11};
    QTest::newRow("backwards to 1") << QList<int>{3, 1} << QList<int>{1, 2, 3};
    QTest::newRow("last page") << QList<int>{28, 29} << QList<int>{29, 28, 27};
    QTest::newRow("out of range changes nothing") << QList<int>{6, 30, -1} << QList<int>{6, 7, 8, 5, 4};
}

void TestReadSession::prefetchSet()
{
    QFETCH(QList<int>, moves);
    QFETCH(QList<int>, wanted);

    // Pages whose images are nowhere: every loader ends (failing) quickly.
    m_env.site->faults().setMalformed(comicPath, comicAnswer(0, {QJsonObject{{"is_view", 1}}}));
    m_env.site->faults().setMalformed(chapterPath, chapterAnswer(pagesData(30)));
    auto session = makeSession("777", "9001", "kFirstPage");
    session->load();
    QTRY_COMPARE(m_recorder.infoCalls, 1);

    for (int move : std::as_const(moves)) {
        const QList<VORAPageDownloadManager *> before = session->pageCache();
        session->getPageWithIndex(move);
        const QList<VORAPageDownloadManager *> after = session->pageCache();
        QVERIFY(after.size() <= VORAReadComicManager::maxPrefetch);
        // A loader of a page still wanted is the same object; the others are
        // cancelled and deaf (checked before any event runs).
        for (VORAPageDownloadManager *old : before) {
            const bool kept = after.contains(old);
            QCOMPARE(old->isCancel(), !kept && move >= 0 && move < 30);
            if (!kept && old->isCancel())
                QVERIFY(!old->delegate());
        }
        for (VORAPageDownloadManager *loader : after) {
            for (VORAPageDownloadManager *old : before) {
                if (old->pageId() == loader->pageId())
                    QCOMPARE(loader, old);
            }
            QVERIFY(loader->isLoading() || loader->isLoadFinish());
        }
        QVERIFY(waitForLoaders(*session));
    }
    QCOMPARE(indexesOf(session->pageCache()), wanted);
    QCOMPARE(session->pageIndex(), wanted.first());

    // Finished loaders hand their pages over again at once (no image here:
    // the page could not be loaded).
    m_recorder.pages.clear();
    session->getPageWithIndex(wanted.first());
    QCOMPARE(m_recorder.pages.size(), wanted.size());
    QCOMPARE(m_recorder.pages.first().index, wanted.first());
    QVERIFY(!m_recorder.pages.first().image);
}

// --- The read gate ---

// A refusal ends the opening: no page list is asked for and the reader hears
// only that the gate said no, here with the coin dialog (the sign-in's refusal
// is signInNotificationAndTeardown's; the jump types the sign-in route saves
// are the read gate's table).
void TestReadSession::gateRefusalEndsTheOpening()
{
    setLocalUser(true, 100, false);
    m_env.site->faults().setMalformed(comicPath, comicAnswer(1, {paidChapter(30)}));
    const int chapterRequests = m_env.site->requestCount(chapterPath);

    AlertRecorder alerts;
    auto session = makeSession("777", "9001", "kFirstPage");
    QSignalSpy refused(session.get(), &VORAReadComicManager::readRefused);
    session->load();
    QTRY_COMPARE(refused.count(), 1);
    QCOMPARE(refused.first().first().value<VORAReadGate::Outcome>(), VORAReadGate::Outcome::CoinAlert);
    QCOMPARE(m_env.site->requestCount(chapterPath), chapterRequests);
    QCOMPARE(m_recorder.infoCalls, 0);
    QCOMPARE(alerts.lastTag(), int(VORAChapterPurchase::coinAlertTag));
    QCOMPARE(alerts.last().value("delegate").value<QObject *>(), session.get());
    QCOMPARE(session->buyComicOrBuyVipType(), 0);
}

// --- Dialog answers ---

void TestReadSession::dialogAnswers_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("button");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("seal: become VIP") << 10000 << 1 << QStringList{"user", "pay:1"};
    QTest::newRow("seal: cancel") << 10000 << 0 << QStringList{"back"};
    QTest::newRow("too few coins: top up") << 10001 << 1 << QStringList{"user", "pay:2"};
    QTest::newRow("too few coins: refuse") << 10001 << 0 << QStringList{};
    QTest::newRow("bought: read") << 10005 << 1 << QStringList{"chapter:9001"};
    QTest::newRow("bought: wait") << 10005 << 0 << QStringList{};
    QTest::newRow("coin dialog cancel") << 10002 << 0 << QStringList{};
    QTest::newRow("unknown tag") << 4242 << 1 << QStringList{};
}

void TestReadSession::dialogAnswers()
{
    QFETCH(int, tag);
    QFETCH(int, button);
    QFETCH(QStringList, calls);
    auto session = makeSession("777", "9001", "kFirstPage");
    const int buys = m_env.site->requestCount(buyPath);
    session->alertView(tag, button);
    QCOMPARE(m_hooks.calls, calls);
    QCOMPARE(m_env.site->requestCount(buyPath), buys);
    QVERIFY(session->comicChapterArray().isEmpty());
}

// --- A purchase through the site ---

void TestReadSession::purchaseThroughTheSite()
{
    QVERIFY(signInAs("reader", "reader123"));
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    QCOMPARE(global->user()->userCoin(), 100);

    // A paid, unbought chapter of a demo comic with paid chapters.
    const std::optional<VORAComicInfoDTO> comic = fetchComic(QStringLiteral("10002"));
    QVERIFY(comic);
    const VORAChapterInfoDTO *target = nullptr;
    for (const VORAChapterInfoDTO &c : comic->chapterList) {
        if (c.type == 2 && c.buyed == 0 && c.price > 0 && c.price <= 100) {
            target = &c;
            break;
        }
    }
    QVERIFY(target);

    int buySuccessPosts = 0;
    QObject observer;
    NotificationCenter::defaultCenter().addObserver(&observer, "BuySuccessPost",
                                                    [&](const Notification &) { ++buySuccessPosts; });
    AlertRecorder alerts;
    auto session = makeSession("10002", target->chapterId, "kFirstPage");
    session->setNowForTesting({});
    session->load();
    QTRY_COMPARE(alerts.lastTag(), 10002);
    const int comicRequests = m_env.site->requestCount(comicPath);

    session->alertView(10002, 1);
    // Bought: the comic is asked for again, the gate now lets the chapter through.
    QTRY_COMPARE(m_recorder.infoCalls, 1);
    QVERIFY(!m_recorder.lastInfoFailed);
    QCOMPARE(buySuccessPosts, 1);
    QCOMPARE(m_env.site->requestCount(comicPath), comicRequests + 1);
    QCOMPARE(session->pageList().size(), target->imageCount);
    QCOMPARE(global->user()->userCoin(), 100 - target->price);
    QCOMPARE(alerts.lastTag(), 10002); // no failure dialog

    // Buying it again is refused by the site: its message, coins untouched.
    session->alertView(10002, 1);
    QTRY_COMPARE(alerts.lastMessage(), QStringLiteral("这些章节已经购买过了"));
    QCOMPARE(buySuccessPosts, 1);
    QCOMPARE(global->user()->userCoin(), 100 - target->price);
}

// --- Downloaded chapters ---

void TestReadSession::downloadedChapters()
{
    // A VIP-sealed comic with a finished chapter and a chapter still loading.
    const qint64 t = QDateTime::currentSecsSinceEpoch();
    VORAComicInfoDTO comic;
    comic.comicId = QStringLiteral("5302");
    comic.name = QStringLiteral("封印漫画");
    comic.is_vip = 3;
    for (int i = 0; i < 3; ++i) {
        VORAChapterInfoDTO c;
        c.comicId = comic.comicId;
        c.chapterId = QString::number(44120 + i);
        c.index = i;
        c.pass_time = QDateTime::fromSecsSinceEpoch(t - 3600, Qt::UTC); // sealed
        comic.chapterList.append(c);
    }
    VORAPersistenceManager::saveComicInfo(comic, VORAPersistenceManager::comicInfoFileWithComicId("5302"));
    QList<VORAPageInfoDTO> pages;
    for (int i = 0; i < 3; ++i)
        pages.append({QString::number(889120 + i), QStringLiteral("http://127.0.0.1:1/x.jpg"), 800, 1130, 1, i});
    VORAPersistenceManager::saveChapterInfo(pages, VORAPersistenceManager::chapterInfoFileWithComicId("5302", "44121"));
    // Pages 0 and 1 are on disk, page 2 is not; page 0 has a tucao file.
    for (int i = 0; i < 2; ++i) {
        QFile file(VORAPersistenceManager::pageFileWithComicId("5302", "44121", pages.at(i).pageId));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("image-" + QByteArray::number(i));
    }
    VORATucao tucao;
    tucao.tucaoId = QStringLiteral("7");
    tucao.content = QStringLiteral("好看");
    tucao.x = 10;
    tucao.updateTime = QDateTime::fromSecsSinceEpoch(t, Qt::UTC);
    VORAPersistenceManager::saveTucao({tucao}, VORAPersistenceManager::tucaoFileWithComicId("5302", "44121", "889120"));

    VORADatabaseManager *db = VORAPersistenceManager::getPersistenceManager()->databaseManager();
    for (const QString &id : {QStringLiteral("44121"), QStringLiteral("44122")}) {
        VORADownloadChapterInfoDTO d;
        d.chapterId = id;
        d.comicId = comic.comicId;
        d.imageCount = 3;
        db->addDownlaodChapter(d);
    }
    VORADownloadChapterInfoDTO finished = *db->getDownloadChapterWithChapterId("44121");
    finished.isFinishDownload = true;
    db->updateDownloadChapter(finished);

    // No network at all, and a signed-out user: the finished chapter opens at
    // once, before load() returns, without the gate.
    qputenv("QUORIN_API_BASE", "http://127.0.0.1:1/");
    AlertRecorder alerts;
    auto session = makeSession("5302", "44121", "889121");
    session->load();
    QCOMPARE(m_recorder.infoCalls, 1);
    QVERIFY(!m_recorder.lastInfoFailed);
    QVERIFY(!session->isOnlineComic());
    QCOMPARE(session->chapterIndex(), 1);
    QCOMPARE(session->pageList(), pages);
    QCOMPARE(session->pageIndex(), 1);
    QVERIFY(alerts.alerts.isEmpty());
    QVERIFY(m_hooks.calls.isEmpty());

    session->getPageWithIndex(0);
    QCOMPARE(indexesOf(session->pageCache()), (QList<int>{0, 1, 2}));
    QTRY_COMPARE(m_recorder.pages.size(), 3);
    QCOMPARE(*m_recorder.page(0)->image, QByteArray("image-0"));
    QCOMPARE(*m_recorder.page(0)->tucao, QList<VORATucao>{tucao});
    QCOMPARE(*m_recorder.page(1)->image, QByteArray("image-1"));
    QVERIFY(!m_recorder.page(1)->tucao); // no tucao file
    QVERIFY(!m_recorder.page(2)->image); // no page file: a failure
    QVERIFY(waitForLoaders(*session));

    // The chapter still downloading is read online (and so meets the gate:
    // nobody is signed in, so the sign-in view is asked for).
    m_env.pointAtSite();
    m_env.site->faults().setMalformed(comicPath, comicAnswer(3, {QJsonObject{{"chapter_id", "44122"}, {"pass_time", t}}}));
    const int comicRequests = m_env.site->requestCount(comicPath);
    auto online = makeSession("5302", "44122", "kFirstPage");
    online->setNowForTesting({});
    online->load();
    QVERIFY(online->isOnlineComic());
    QCOMPARE(m_recorder.infoCalls, 1); // the finished chapter's only
    QTRY_COMPARE(m_hooks.calls, QStringList{"user"});
    QCOMPARE(m_env.site->requestCount(comicPath), comicRequests + 1);
}

// --- Sign-in notification and teardown ---

void TestReadSession::signInNotificationAndTeardown()
{
    m_env.site->faults().setMalformed(comicPath, comicAnswer(1, {paidChapter(30, -1)}));
    m_env.site->faults().setMalformed(chapterPath, chapterAnswer(pagesData(4)));
    const QString notification = QString::fromLatin1(VORANotificationNames::userViewPostInfo);
    const int observers = NotificationCenter::defaultCenter().observerCount(notification);

    const int chapterRequests = m_env.site->requestCount(chapterPath);
    auto session = makeSession("777", "9001", "kLastPage");
    QCOMPARE(NotificationCenter::defaultCenter().observerCount(notification), observers + 1);
    QSignalSpy refused(session.get(), &VORAReadComicManager::readRefused);
    session->load();
    QTRY_COMPARE(m_hooks.calls, QStringList{"user"});
    QCOMPARE(refused.first().first().value<VORAReadGate::Outcome>(), VORAReadGate::Outcome::SignIn);
    QCOMPARE(m_env.site->requestCount(chapterPath), chapterRequests);
    QCOMPARE(m_recorder.infoCalls, 0);

    // Signed in: the page list is fetched, the gate is not asked again.
    NotificationCenter::defaultCenter().post(notification);
    QTRY_COMPARE(m_recorder.infoCalls, 1);
    QCOMPARE(session->pageIndex(), 3);
    QCOMPARE(m_hooks.calls.size(), 1);

    // Leaving while the comic is asked for: nobody hears anything afterwards,
    // and the loaders of the prefetch set outlive the session harmlessly.
    session->getPageWithIndex(3);
    m_env.site->faults().setStall(comicPath);
    session->load();
    QTRY_VERIFY(m_env.site->requestCount(comicPath) > 0);
    session.reset();
    QCOMPARE(NotificationCenter::defaultCenter().observerCount(notification), observers);
}

QTEST_MAIN(TestReadSession)
#include "tst_readsession.moc"
