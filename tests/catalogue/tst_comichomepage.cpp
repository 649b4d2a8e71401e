// The comic detail page against the reference site: the read button's own
// messages, the purchase of a whole comic, a chapter bought in
// the reader (one chapter bought from the page is the screens' GUI test),
// reading from the first chapter, the cached comic while the request runs,
// failures and the bookshelf button. The access rule and the cell marks are
// the read gate's table (tst_readgate).

#include "CatalogueTestSupport.h"
#include "catalogue/VORAChapterView.h"
#include "catalogue/VORAChapterPurchase.h"
#include "catalogue/VORAComicHomePageView.h"
#include "core/VORAUtility.h"
#include "reader/VORAChapterManager.h"
#include "store/VORAComicCache.h"

#include <QAbstractItemModelTester>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

namespace {
const QString comicPath = QStringLiteral("ios/pad/comic_127.php");
const QString autoLoginPath = QStringLiteral("v3/app/ios/pad/member/autologin");

// A fixed instant for the seal rule: the fixtures date their chapters from it.
const QDateTime fixedNow = QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC);

QByteArray comicFixture(qint64 isVip, const QJsonObject &chapter)
{
    QJsonObject comic{{"comic_id", "777"}, {"name", "测试漫画"}, {"author_name", "作者"}, {"is_vip", isVip},
                      {"series_status", 0}, {"theme_ids", "1,5"}, {"click_total", 12345}};
    QJsonObject first = chapter;
    first.insert("chapter_id", "9001");
    first.insert("name", "第1话");
    first.insert("image_total", 20);
    first.insert("size", 2048);
    return QJsonDocument(QJsonObject{{"code", 1}, {"comic", comic}, {"chapter_list", QJsonArray{first}}, {"top4", QJsonArray{}}})
        .toJson(QJsonDocument::Compact);
}

// A chapter released secondsSincePass before fixedNow, without a pass time.
QJsonObject chapterJson(int type, int buyed, int isView, int price, qint64 secondsSincePass)
{
    return QJsonObject{{"type", type}, {"buyed", buyed}, {"is_view", isView}, {"price", price},
                       {"release_time", fixedNow.toSecsSinceEpoch() - secondsSincePass}, {"pass_time", QJsonValue()}};
}

std::unique_ptr<VORAComicHomePageView> openComic(const QString &comicId, bool fixedClock = false)
{
    auto view = std::make_unique<VORAComicHomePageView>();
    if (fixedClock)
        view->setNowForTesting([]() { return fixedNow; });
    QSignalSpy answered(view.get(), &VORAComicHomePageView::answered);
    QSignalSpy failed(view.get(), &VORAComicHomePageView::requestFailed);
    QSignalSpy local(view.get(), &VORAComicHomePageView::localInfoLoaded);
    view->setComicId(comicId);
    if (!QTest::qWaitFor([&]() { return (!answered.isEmpty() || !failed.isEmpty()) && !local.isEmpty(); }, 10000))
        return nullptr;
    return view;
}

int rowOf(const VORAChapterView *chapters, const std::function<bool(const VORAChapterInfoDTO &)> &pick)
{
    for (int i = 0; i < chapters->count(); ++i) {
        if (pick(chapters->rowAt(i)->chapter))
            return i;
    }
    return -1;
}
} // namespace

class TestComicHomePage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void readButtonRule_data();
    void readButtonRule();
    void headAndChapterSort();
    void wholeComicPurchase();
    void chapterBoughtInTheReaderOpensFromThePage();
    void readingStartsAtTheFirstChapter();
    void cachedComicShownWhileRequestRunsAndKeptOnFailure();
    void refusalsAndMalformedAnswers();
    void bookshelfButton();

private:
    CatalogueTestEnvironment m_env;
};

void TestComicHomePage::initTestCase()
{
    QVERIFY(m_env.start());
}

void TestComicHomePage::cleanup()
{
    m_env.site->faults().clear();
    m_env.pointAtSite();
    VORAAppGlobalData::shareAppGlobalData()->appStatus()->setFromAppStore(1);
    QVERIFY(signInAs(QString(), QString()));
}

void TestComicHomePage::readButtonRule_data()
{
    QTest::addColumn<qint64>("isVip");
    QTest::addColumn<int>("type");
    QTest::addColumn<qint64>("secondsSincePass");
    QTest::addColumn<int>("fromAppStore");
    QTest::addColumn<QString>("message");
    // One row per comic class and per kind of build (the texts are fixed).
    QTest::newRow("sealed, from the store") << qint64(3) << 1 << qint64(3600) << 1 << "本章节是VIP章节，苹果支付功能正在研发中……";
    QTest::newRow("paid: the fixed text, numbers not filled in")
        << qint64(1) << 2 << qint64(86400 * 30) << 0
        << "：阅读本章节需要消费36quorin币，您当前的quorin币余额为0quorin币。请前去网站充值，苹果支付功能正在研发中……";
}

void TestComicHomePage::readButtonRule()
{
    QFETCH(qint64, isVip);
    QFETCH(int, type);
    QFETCH(qint64, secondsSincePass);
    QFETCH(int, fromAppStore);
    QFETCH(QString, message);
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    VORAAppGlobalData::shareAppGlobalData()->appStatus()->setFromAppStore(fromAppStore);
    m_env.site->faults().setMalformed(comicPath, comicFixture(isVip, chapterJson(type, 0, 0, 20, secondsSincePass)));
    auto view = openComic(QStringLiteral("777"), true);
    QVERIFY(view);
    AlertRecorder alerts;
    QSignalSpy read(view.get(), &VORAComicHomePageView::readRequested);
    view->readComicBtnClick();
    QCOMPARE(read.count(), 0);
    QCOMPARE(alerts.alerts.size(), 1);
    QCOMPARE(alerts.lastMessage(), message);
    QCOMPARE(alerts.lastTag(), 0); // no purchase is offered
}

void TestComicHomePage::headAndChapterSort()
{
    auto view = openComic(QStringLiteral("10001"));
    QVERIFY(view);
    QCOMPARE(view->state(), int(VORAComicHomePageView::Shown));

    VORAChapterView *chapters = view->chapterView();
    QAbstractItemModelTester tester(chapters);
    const int n = chapters->count();
    QVERIFY(n >= 6);
    const QStringList serverOrder = chapters->chapterIds();
    QCOMPARE(chapters->index(0).data(VORAChapterView::SizeTextRole).toString().left(3), QStringLiteral("60P"));
    QCOMPARE(VORAChapterView::sizeText(60, 7800), QStringLiteral("60P/7.62M"));

    // Reversed (the first row as drawn after the sort: tst_cataloguescreens).
    chapters->chapterSortUp();
    QCOMPARE(chapters->index(0).data(VORAChapterView::ChapterIndexRole).toInt(), n - 1);

    // A tap on the first row as shown opens that chapter (free comic).
    QSignalSpy read(view.get(), &VORAComicHomePageView::readRequested);
    view->readCurrentChapterAtRow(0);
    QCOMPARE(read.count(), 1);
    QCOMPARE(read.first().at(1).toString(), serverOrder.last());

    view->readCurrentChapterAtRow(n); // out of range: nothing
    QCOMPARE(read.count(), 1);
}

void TestComicHomePage::wholeComicPurchase()
{
    QVERIFY(signInAs(QStringLiteral("rich"), QStringLiteral("rich123")));
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    global->appStatus()->setFromAppStore(0);
    const qint64 realCoins = global->user()->userCoin();

    auto view = openComic(QStringLiteral("10008"));
    QVERIFY(view);
    QCOMPARE(view->comicInfoDTO()->is_vip, 1);
    qint64 total = 0;
    QStringList paid;
    for (const VORAChapterInfoDTO &c : view->comicInfoDTO()->chapterList) {
        if (c.buyed == 0)
            total += c.price;
        if (c.buyed == 0 && c.type == 2)
            paid.append(c.chapterId);
    }
    QVERIFY(total > 0);
    const int row = rowOf(view->chapterView(), [](const VORAChapterInfoDTO &c) { return c.type == 2 && c.buyed == 0; });
    AlertRecorder alerts;

    // "购买本书" with more coins than the total: dialog 10003, whose "购买" buys
    // every unbought paid chapter. (10004, too few, only leads to the top-up.)
    QSignalSpy topUp(view.get(), &VORAComicHomePageView::topUpRequested);
    view->alertView(10004, 1);
    QCOMPARE(topUp.first().first().toInt(), 2);
    view->readCurrentChapterAtRow(row);
    QCOMPARE(alerts.lastTag(), 10002);
    view->alertView(10002, 2);
    QCOMPARE(alerts.lastTag(), 10003);
    QCOMPARE(alerts.lastMessage(), QString::asprintf("购买本书需要%d个quorin币", int(total)));
    QSignalSpy bought(view.get(), &VORAComicHomePageView::purchaseFinished);
    view->alertView(10003, 1);
    QTRY_COMPARE_WITH_TIMEOUT(bought.count(), 1, 10000);
    QVERIFY(bought.first().first().toBool());
    QCOMPARE(global->user()->userCoin(), realCoins - total);
    QTRY_VERIFY_WITH_TIMEOUT(alerts.lastMessage() == QStringLiteral("购买成功"), 10000);
    for (const VORAChapterInfoDTO &c : view->comicInfoDTO()->chapterList) {
        if (paid.contains(c.chapterId))
            QCOMPARE(c.buyed, 1);
    }
}

void TestComicHomePage::chapterBoughtInTheReaderOpensFromThePage()
{
    // The page stays open under the reader; the chapter is bought in the
    // reader's chapter panel. The page hears of it, asks the site again and
    // opens the chapter without offering the coin dialog a second time.
    QVERIFY(signInAs(QStringLiteral("rich"), QStringLiteral("rich123")));
    VORAAppGlobalData::shareAppGlobalData()->appStatus()->setFromAppStore(0);
    auto view = openComic(QStringLiteral("10014"));
    QVERIFY(view);
    const auto unbought = [](const VORAChapterInfoDTO &c) { return c.type == 2 && c.buyed == 0 && c.price > 0; };
    const int row = rowOf(view->chapterView(), unbought);
    QVERIFY(row >= 0);
    const VORAChapterInfoDTO chapter = view->chapterView()->rowAt(row)->chapter;

    VORAChapterManager panel(chapter.chapterId, view->comicId());
    panel.setComicInfoDTO(*view->comicInfoDTO());
    QCOMPARE(panel.selectChapter(chapter), VORAReadGate::Outcome::CoinAlert);
    QSignalSpy answered(view.get(), &VORAComicHomePageView::answered);
    QSignalSpy bought(&panel, &VORAChapterManager::purchaseFinished);
    panel.alertView(VORAChapterPurchase::coinAlertTag, 1);
    QTRY_COMPARE_WITH_TIMEOUT(bought.count(), 1, 10000);
    QVERIFY(bought.first().first().toBool());
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 10000);

    const int again = rowOf(view->chapterView(), [&](const VORAChapterInfoDTO &c) { return c.chapterId == chapter.chapterId; });
    QCOMPARE(view->chapterView()->index(again).data(VORAChapterView::MarkRole).toString(), QStringLiteral("comicbuyed"));
    AlertRecorder alerts;
    QSignalSpy read(view.get(), &VORAComicHomePageView::readRequested);
    QCOMPARE(view->readCurrentChapter(view->chapterView()->rowAt(again)->chapter), VORAReadGate::Outcome::Readable);
    QCOMPARE(read.count(), 1);
    QVERIFY(alerts.alerts.isEmpty());
}

void TestComicHomePage::readingStartsAtTheFirstChapter()
{
    auto first = openComic(QStringLiteral("10003"));
    QVERIFY(first);
    QSignalSpy read(first.get(), &VORAComicHomePageView::readRequested);
    first->readComicBtnClick();
    QCOMPARE(read.count(), 1);
    QCOMPARE(read.first(), (QVariantList{QStringLiteral("10003"), first->comicInfoDTO()->chapterList.first().chapterId,
                                         QStringLiteral("kFirstPage")}));
    // With a stored position it reads on from there: tst_readerscreen, back
    // from the reader through the window.
}

void TestComicHomePage::cachedComicShownWhileRequestRunsAndKeptOnFailure()
{
    VORAComicInfoDTO cached;
    cached.comicId = QStringLiteral("10005");
    cached.name = QStringLiteral("缓存里的名字");
    VORAChapterInfoDTO chapter;
    chapter.chapterId = QStringLiteral("1");
    chapter.name = QStringLiteral("缓存章节");
    cached.chapterList = {chapter};
    VORAComicCache::shareComicCacheObj()->cacheComic(cached);

    m_env.site->faults().setDropMidBody(comicPath);
    const int autoLogins = m_env.site->requestCount(autoLoginPath);
    VORAComicHomePageView view;
    QSignalSpy local(&view, &VORAComicHomePageView::localInfoLoaded);
    QSignalSpy failed(&view, &VORAComicHomePageView::requestFailed);
    view.setComicId(QStringLiteral("10005"));
    QCOMPARE(view.state(), int(VORAComicHomePageView::Waiting));
    QTRY_VERIFY_WITH_TIMEOUT(!local.isEmpty() && !failed.isEmpty(), 10000);
    QCOMPARE(view.state(), int(VORAComicHomePageView::Failed));
    QCOMPARE(view.headInfo().value("name").toString(), cached.name);
    QCOMPARE(view.chapterView()->count(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(m_env.site->requestCount(autoLoginPath) > autoLogins, 10000);

    // A retry replaces the cache with the answer, and the answer is cached.
    m_env.site->faults().clear();
    QSignalSpy answered(&view, &VORAComicHomePageView::answered);
    view.beginRequestData();
    QTRY_VERIFY_WITH_TIMEOUT(!answered.isEmpty(), 10000);
    QCOMPARE(view.state(), int(VORAComicHomePageView::Shown));
    QVERIFY(view.headInfo().value("name").toString() != cached.name);
    QTRY_VERIFY_WITH_TIMEOUT(VORAComicCache::shareComicCacheObj()->getComicWithComicId(QStringLiteral("10005"))->name
                                 == view.headInfo().value("name").toString(), 10000);
}

void TestComicHomePage::refusalsAndMalformedAnswers()
{
    // An unknown comic: the site refuses; the page shows its error view.
    auto unknown = openComic(QStringLiteral("99999"));
    QVERIFY(unknown);
    QCOMPARE(unknown->state(), int(VORAComicHomePageView::Failed));
    QVERIFY(!unknown->hasComicInfo());
    unknown->readComicBtnClick(); // nothing loaded: nothing happens
    unknown->addBookShelfBtnClick();

    // Not JSON: no data; the wait view stays.
    m_env.site->faults().setMalformed(comicPath, "<html>this is not JSON");
    auto malformed = openComic(QStringLiteral("10050")); // never cached
    QVERIFY(malformed);
    QCOMPARE(malformed->state(), int(VORAComicHomePageView::Waiting));
    QVERIFY(!malformed->hasComicInfo());

    // Nulls and wrong types everywhere read as empty values.
    m_env.site->faults().setMalformed(
        comicPath, R"({"comic":{"name":null,"is_vip":"x","series_status":7,"click_total":null},
                       "chapter_list":[{"chapter_id":5,"name":null,"type":null,"buyed":null,"pass_time":null},"junk"],
                       "top4":null})");
    auto nulls = openComic(QStringLiteral("10001"));
    QVERIFY(nulls);
    QCOMPARE(nulls->state(), int(VORAComicHomePageView::Shown));
    QCOMPARE(nulls->headInfo().value("name").toString(), QString());
    QCOMPARE(nulls->headInfo().value("serialText").toString(), QStringLiteral("连载中"));
    QSignalSpy read(nulls.get(), &VORAComicHomePageView::readRequested);
    for (int i = 0; i < nulls->chapterView()->count(); ++i)
        nulls->readCurrentChapterAtRow(i);
    nulls->readComicBtnClick();
    QCOMPARE(read.count(), nulls->chapterView()->count() + (nulls->chapterView()->count() > 0 ? 1 : 0));
}

void TestComicHomePage::bookshelfButton()
{
    // Signed out, the button asks for a sign-in, after which the comic is on
    // the shelf: tst_userpanel, through the window. A new page for the same
    // comic finds it there, and its button takes it off.
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    auto *manager = VORABookShelfManager::sharedManager();
    QVERIFY(manager);
    auto view = openComic(QStringLiteral("10001"));
    QVERIFY(view);
    view->addBookShelfBtnClick();
    QVERIFY(manager->getBookshelfWithComicId(QStringLiteral("10001")));
    auto again = openComic(QStringLiteral("10001"));
    QVERIFY(again && again->inBookshelf());
    again->addBookShelfBtnClick();
    QVERIFY(!again->inBookshelf());
    QVERIFY(!manager->getBookshelfWithComicId(QStringLiteral("10001")));
}

QTEST_MAIN(TestComicHomePage)
#include "tst_comichomepage.moc"
