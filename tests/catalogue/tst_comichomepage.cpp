// The comic detail page against the reference site: the seven-day seal at its
// boundaries, the cell marks, every branch of the chapter access rule with its
// dialogs, purchases of one chapter and of a whole comic, reading from the
// stored position, the cached comic while the request runs, failures and the
// bookshelf button.

#include "CatalogueTestSupport.h"
#include "catalogue/VORAChapterView.h"
#include "catalogue/VORAComicHomePageView.h"
#include "core/VORAUtility.h"
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
using Access = VORAComicHomePageView::Access;

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
    void sealRule_data();
    void sealRule();
    void cellMarksAndSize_data();
    void cellMarksAndSize();
    void accessRule_data();
    void accessRule();
    void readButtonRule_data();
    void readButtonRule();
    void headAndChapterSort();
    void sealedDemoComicMarks();
    void buyingOneChapterLowersCoinsAndMarksItBought();
    void wholeComicPurchase();
    void purchaseRefusedBySiteKeepsCoins();
    void readingContinuesFromTheStoredPosition();
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

void TestComicHomePage::sealRule_data()
{
    QTest::addColumn<qint64>("secondsSincePass");
    QTest::addColumn<bool>("sealed");
    QTest::newRow("just passed") << qint64(0) << true;
    QTest::newRow("6 days 23 hours") << qint64(6 * 86400 + 23 * 3600) << true;
    QTest::newRow("604799 s") << qint64(604799) << true;
    QTest::newRow("604800 s: open") << qint64(604800) << false;
    QTest::newRow("8 days") << qint64(8 * 86400) << false;
    QTest::newRow("86399 s ahead") << qint64(-86399) << true;
    QTest::newRow("86400 s ahead: open") << qint64(-86400) << false;
    QTest::newRow("2 days ahead") << qint64(-2 * 86400) << false;
}

void TestComicHomePage::sealRule()
{
    QFETCH(qint64, secondsSincePass);
    QFETCH(bool, sealed);
    // Fractions of a second are cut before comparing.
    const QDateTime pass = fixedNow.addSecs(-secondsSincePass).addMSecs(900);
    QCOMPARE(VORAComicHomePageView::isChapterSealed(pass, fixedNow.addMSecs(999)), sealed);

    // The same boundary through the page: its mark and its access rule.
    QJsonObject chapter{{"type", 1}, {"buyed", 0}, {"is_view", 0}, {"price", 0},
                        {"release_time", fixedNow.toSecsSinceEpoch() - secondsSincePass - 10},
                        {"pass_time", fixedNow.toSecsSinceEpoch() - secondsSincePass}};
    m_env.site->faults().setMalformed(comicPath, comicFixture(3, chapter));
    auto view = openComic(QStringLiteral("777"), true);
    QVERIFY(view);
    QCOMPARE(view->chapterView()->count(), 1);
    const QModelIndex row = view->chapterView()->index(0);
    QCOMPARE(row.data(VORAChapterView::MarkRole).toString(), sealed ? QStringLiteral("delayread") : QString());
    QSignalSpy read(view.get(), &VORAComicHomePageView::readRequested);
    QSignalSpy signIn(view.get(), &VORAComicHomePageView::signInRequested);
    view->readCurrentChapterAtRow(0);
    QCOMPARE(read.count(), sealed ? 0 : 1);
    QCOMPARE(signIn.count(), sealed ? 1 : 0); // nobody is signed in
}

void TestComicHomePage::cellMarksAndSize_data()
{
    QTest::addColumn<qint64>("isVip");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("isView");
    QTest::addColumn<qint64>("secondsSincePass");
    QTest::addColumn<QString>("mark");
    QTest::newRow("free comic, paid-type chapter") << qint64(0) << 2 << 0 << qint64(86400 * 30) << QString();
    QTest::newRow("paid comic, unbought") << qint64(1) << 2 << 0 << qint64(86400 * 30) << "buyread";
    QTest::newRow("paid comic, readable") << qint64(2) << 2 << 1 << qint64(86400 * 30) << "comicbuyed";
    QTest::newRow("paid comic, free chapter") << qint64(1) << 1 << 0 << qint64(86400 * 30) << QString();
    QTest::newRow("sealed comic inside the seal") << qint64(3) << 1 << 1 << qint64(3600) << "delayread";
    QTest::newRow("sealed comic after the seal") << qint64(3) << 1 << 1 << qint64(604800) << QString();
    QTest::newRow("unknown class") << qint64(7) << 2 << 0 << qint64(0) << QString();
}

void TestComicHomePage::cellMarksAndSize()
{
    QFETCH(qint64, isVip);
    QFETCH(int, type);
    QFETCH(int, isView);
    QFETCH(qint64, secondsSincePass);
    QFETCH(QString, mark);
    m_env.site->faults().setMalformed(comicPath, comicFixture(isVip, chapterJson(type, 0, isView, 10, secondsSincePass)));
    auto view = openComic(QStringLiteral("777"), true);
    QVERIFY(view);
    QAbstractItemModelTester tester(view->chapterView());
    const QModelIndex row = view->chapterView()->index(0);
    QCOMPARE(row.data(VORAChapterView::MarkRole).toString(), mark);
    QCOMPARE(row.data(VORAChapterView::SizeTextRole).toString(), QStringLiteral("20P/2.00M"));
    QCOMPARE(VORAChapterView::sizeText(60, 7800), QStringLiteral("60P/7.62M"));
}

void TestComicHomePage::accessRule_data()
{
    QTest::addColumn<qint64>("isVip");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("buyed");
    QTest::addColumn<int>("isView");
    QTest::addColumn<int>("price");
    QTest::addColumn<qint64>("secondsSincePass");
    QTest::addColumn<QString>("user"); // "", "reader" (member) or "vip"
    QTest::addColumn<qint64>("coins");
    QTest::addColumn<int>("fromAppStore");
    QTest::addColumn<int>("access");
    QTest::addColumn<int>("alertTag");
    QTest::addColumn<QString>("message");

    const qint64 old = 30 * 86400;
    const int open = int(Access::Open), signIn = int(Access::SignIn), nothing = int(Access::Nothing);
    QTest::newRow("free comic") << qint64(0) << 1 << 0 << 0 << 0 << old << "" << qint64(0) << 0 << open << -1 << "";
    QTest::newRow("is_view opens a paid chapter") << qint64(1) << 2 << 0 << 1 << 50 << old << "" << qint64(0) << 0 << open << -1 << "";
    QTest::newRow("paid comic, free chapter") << qint64(1) << 1 << 0 << 0 << 0 << old << "" << qint64(0) << 0 << open << -1 << "";
    QTest::newRow("paid and bought") << qint64(1) << 2 << 1 << 0 << 30 << old << "reader" << qint64(0) << 0 << open << -1 << "";
    QTest::newRow("paid, price 0") << qint64(2) << 2 << 0 << 0 << 0 << old << "reader" << qint64(0) << 0 << open << -1 << "";
    QTest::newRow("buyed -1: sign-in") << qint64(1) << 2 << -1 << 0 << 30 << old << "" << qint64(0) << 0 << signIn << -1 << "";
    QTest::newRow("buyed -1, price 0: sign-in") << qint64(2) << 2 << -1 << 0 << 0 << old << "reader" << qint64(500) << 0 << signIn << -1 << "";
    QTest::newRow("enough coins: 10002") << qint64(1) << 2 << 0 << 0 << 30 << old << "reader" << qint64(100) << 0
                                         << int(Access::CoinAlert) << 10002 << "购买此章节需要30quorin币";
    QTest::newRow("exactly the price: 10002") << qint64(2) << 2 << 0 << 0 << 30 << old << "reader" << qint64(30) << 0
                                              << int(Access::CoinAlert) << 10002 << "购买此章节需要30quorin币";
    QTest::newRow("too few coins: 10001") << qint64(1) << 2 << 0 << 0 << 30 << old << "reader" << qint64(29) << 0
                                          << int(Access::NotEnoughCoins) << 10001
                                          << "该章节为付费章节哦!请购买后进行阅读!阅读本章节需要30个quorin币,您当前quorin币余额为29,余额不足,请充值!";
    QTest::newRow("from the store: nothing") << qint64(1) << 2 << 0 << 0 << 30 << old << "reader" << qint64(100) << 1 << nothing << -1 << "";
    QTest::newRow("sealed: 10000") << qint64(3) << 1 << 0 << 0 << 0 << qint64(2 * 86400) << "reader" << qint64(0) << 0
                                   << int(Access::SealAlert) << 10000
                                   << "即将阅读的VIP章节暂时被封印啦,7天后解封,成为Quorin会员即刻解封哦~";
    QTest::newRow("sealed, signed out: sign-in") << qint64(3) << 1 << 0 << 0 << 0 << qint64(86400) << "" << qint64(0) << 0 << signIn << -1 << "";
    QTest::newRow("sealed, paying member") << qint64(3) << 1 << 0 << 0 << 0 << qint64(86400) << "vip" << qint64(0) << 0 << open << -1 << "";
    QTest::newRow("sealed, from the store: nothing") << qint64(3) << 1 << 0 << 0 << 0 << qint64(86400) << "reader" << qint64(0) << 1 << nothing << -1 << "";
    QTest::newRow("seal over at 604800 s") << qint64(3) << 1 << 0 << 0 << 0 << qint64(604800) << "reader" << qint64(0) << 0 << open << -1 << "";
    QTest::newRow("more than a day ahead") << qint64(3) << 1 << 0 << 0 << 0 << qint64(-86400) << "reader" << qint64(0) << 0 << open << -1 << "";
    QTest::newRow("unknown class opens") << qint64(9) << 2 << 0 << 0 << 40 << old << "" << qint64(0) << 0 << open << -1 << "";
}

void TestComicHomePage::accessRule()
{
    QFETCH(qint64, isVip);
    QFETCH(int, type);
    QFETCH(int, buyed);
    QFETCH(int, isView);
    QFETCH(int, price);
    QFETCH(qint64, secondsSincePass);
    QFETCH(QString, user);
    QFETCH(qint64, coins);
    QFETCH(int, fromAppStore);
    QFETCH(int, access);
    QFETCH(int, alertTag);
    QFETCH(QString, message);

    if (!user.isEmpty())
        QVERIFY(signInAs(user, user + QStringLiteral("123")));
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    global->user()->setUserCoin(coins);
    global->appStatus()->setFromAppStore(fromAppStore);

    m_env.site->faults().setMalformed(comicPath, comicFixture(isVip, chapterJson(type, buyed, isView, price, secondsSincePass)));
    auto view = openComic(QStringLiteral("777"), true);
    QVERIFY(view);
    QCOMPARE(view->state(), int(VORAComicHomePageView::Shown));

    AlertRecorder alerts;
    QSignalSpy read(view.get(), &VORAComicHomePageView::readRequested);
    QSignalSpy signInSpy(view.get(), &VORAComicHomePageView::signInRequested);
    global->user()->setUserViewJumpType(0);
    global->user()->setUserViewJumpIsTopupType(0);
    const Access result = view->readCurrentChapter(view->chapterView()->rowAt(0)->chapter);

    QCOMPARE(int(result), access);
    QCOMPARE(read.count(), access == int(Access::Open) ? 1 : 0);
    if (!read.isEmpty())
        QCOMPARE(read.first(), (QVariantList{QStringLiteral("777"), QStringLiteral("9001"), QStringLiteral("kFirstPage")}));
    QCOMPARE(signInSpy.count(), access == int(Access::SignIn) ? 1 : 0);
    if (access == int(Access::SignIn)) {
        QCOMPARE(global->user()->userViewJumpType(), 1);
        QCOMPARE(global->user()->userViewJumpIsTopupType(), 2);
    }
    if (alertTag < 0) {
        QVERIFY2(alerts.alerts.isEmpty(), qPrintable(alerts.lastMessage()));
    } else {
        QCOMPARE(alerts.alerts.size(), 1);
        QCOMPARE(alerts.lastTag(), alertTag);
        QCOMPARE(alerts.lastMessage(), message);
        const QStringList buttons = alerts.last().value("buttons").toStringList();
        if (alertTag == 10002)
            QCOMPARE(buttons.size(), 3);
        else if (alertTag == 10000)
            QCOMPARE(buttons, (QStringList{"取消", "成为VIP"}));
        else
            QCOMPARE(buttons, (QStringList{"拒绝", "购买"}));
    }
}

void TestComicHomePage::readButtonRule_data()
{
    QTest::addColumn<qint64>("isVip");
    QTest::addColumn<int>("type");
    QTest::addColumn<qint64>("secondsSincePass");
    QTest::addColumn<int>("fromAppStore");
    QTest::addColumn<QString>("message");
    QTest::newRow("sealed, from the store") << qint64(3) << 1 << qint64(3600) << 1 << "本章节是VIP章节，苹果支付功能正在研发中……";
    QTest::newRow("sealed") << qint64(3) << 1 << qint64(3600) << 0
                            << "本章节是VIP章节，VIP用户可以立即阅读。请前去网站充值，苹果支付功能正在研发中……";
    QTest::newRow("paid, from the store") << qint64(1) << 2 << qint64(86400 * 30) << 1 << "本章节是付费章节，苹果支付功能正在研发中……";
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
    const QVariantMap head = view->headInfo();
    QVERIFY(!head.value("name").toString().isEmpty());
    QVERIFY(head.value("serialAndTheme").toString().contains(QLatin1Char('/')));
    bool ok = false;
    QVERIFY(head.value("clickTotal").toString().toLongLong(&ok) > 0 && ok);

    VORAChapterView *chapters = view->chapterView();
    QAbstractItemModelTester tester(chapters);
    const int n = chapters->count();
    QVERIFY(n >= 6);
    const QStringList serverOrder = chapters->chapterIds();
    for (int i = 0; i < n; ++i)
        QCOMPARE(chapters->index(i).data(VORAChapterView::ChapterIndexRole).toInt(), i);
    QCOMPARE(chapters->index(0).data(VORAChapterView::SizeTextRole).toString().left(3), QStringLiteral("60P"));

    chapters->chapterSortUp();
    QVERIFY(!chapters->ascending());
    QCOMPARE(chapters->index(0).data(VORAChapterView::ChapterIndexRole).toInt(), n - 1);
    QStringList reversed = serverOrder;
    std::reverse(reversed.begin(), reversed.end());
    QCOMPARE(chapters->chapterIds(), reversed);

    // A tap on the first row as shown opens that chapter (free comic).
    QSignalSpy read(view.get(), &VORAComicHomePageView::readRequested);
    view->readCurrentChapterAtRow(0);
    QCOMPARE(read.count(), 1);
    QCOMPARE(read.first().at(1).toString(), serverOrder.last());

    chapters->chapterSortUp();
    QVERIFY(chapters->ascending());
    QCOMPARE(chapters->chapterIds(), serverOrder);
    view->readCurrentChapterAtRow(n); // out of range: nothing
    QCOMPARE(read.count(), 1);
}

void TestComicHomePage::sealedDemoComicMarks()
{
    // Comic 10006 seals chapters around the site's start: its newest chapter is two days
    // ahead, the next two passed 2 days and 6 days 23 hours ago, the fourth 8 days ago.
    auto view = openComic(QStringLiteral("10006"));
    QVERIFY(view);
    QCOMPARE(view->comicInfoDTO()->is_vip, 3);
    VORAChapterView *chapters = view->chapterView();
    const int n = chapters->count();
    QVERIFY(n >= 6);
    const auto mark = [&](int i) { return chapters->index(i).data(VORAChapterView::MarkRole).toString(); };
    QCOMPARE(mark(n - 1), QString());
    QCOMPARE(mark(n - 2), QStringLiteral("delayread"));
    QCOMPARE(mark(n - 3), QStringLiteral("delayread"));
    QCOMPARE(mark(n - 4), QString());
}

void TestComicHomePage::buyingOneChapterLowersCoinsAndMarksItBought()
{
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    global->appStatus()->setFromAppStore(0);
    const qint64 coinsBefore = global->user()->userCoin();
    QCOMPARE(coinsBefore, 100);

    auto view = openComic(QStringLiteral("10002"));
    QVERIFY(view);
    VORAChapterView *chapters = view->chapterView();
    const int row = rowOf(chapters, [](const VORAChapterInfoDTO &c) { return c.type == 2 && c.buyed == 0 && c.price > 0; });
    QVERIFY(row >= 0);
    const VORAChapterInfoDTO chapter = chapters->rowAt(row)->chapter;
    QCOMPARE(chapters->index(row).data(VORAChapterView::MarkRole).toString(), QStringLiteral("buyread"));

    AlertRecorder alerts;
    QSignalSpy bought(view.get(), &VORAComicHomePageView::purchaseFinished);
    QSignalSpy answered(view.get(), &VORAComicHomePageView::answered);
    QSignalSpy read(view.get(), &VORAComicHomePageView::readRequested);
    bool buySuccessPosted = false;
    NotificationCenter::defaultCenter().addObserver(this, QStringLiteral("BuySuccessPost"),
                                                    [&](const Notification &) { buySuccessPosted = true; });
    view->readCurrentChapterAtRow(row);
    QCOMPARE(alerts.lastTag(), 10002);
    QCOMPARE(read.count(), 0);

    view->alertView(10002, 1); // "购买此章节"
    QTRY_COMPARE_WITH_TIMEOUT(bought.count(), 1, 10000);
    QCOMPARE(bought.first().first().toBool(), true);
    QVERIFY(buySuccessPosted);
    NotificationCenter::defaultCenter().removeObserver(this);
    QCOMPARE(global->user()->userCoin(), coinsBefore - chapter.price);
    QVERIFY(m_env.site->lastRequest(QStringLiteral("v3/app/ios/pad/buyChapter/buy")).query.contains("chapter="));

    // The page asks again and shows the chapter bought, then offers to read it.
    QTRY_VERIFY_WITH_TIMEOUT(answered.count() >= 1 && alerts.lastTag() == 10005, 10000);
    QCOMPARE(alerts.lastMessage(), QStringLiteral("章节购买成功"));
    const int again = rowOf(view->chapterView(), [&](const VORAChapterInfoDTO &c) { return c.chapterId == chapter.chapterId; });
    QCOMPARE(view->chapterView()->rowAt(again)->chapter.buyed, 1);
    QCOMPARE(view->chapterView()->index(again).data(VORAChapterView::MarkRole).toString(), QStringLiteral("comicbuyed"));
    view->alertView(10005, 1); // "进去阅读"
    QCOMPARE(read.count(), 1);
    QCOMPARE(read.first().at(1).toString(), chapter.chapterId);

    // Now it opens at once.
    view->readCurrentChapterAtRow(again);
    QCOMPARE(read.count(), 2);
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

    // Exactly the whole price is not enough for the whole comic.
    global->user()->setUserCoin(total);
    view->readCurrentChapterAtRow(row);
    QCOMPARE(alerts.lastTag(), 10002);
    view->alertView(10002, 2); // "购买本书"
    QCOMPARE(alerts.lastTag(), 10004);
    QCOMPARE(alerts.lastMessage(), QString::asprintf("购买本书需要%d个quorin币,您当前的quorin币为%d,余额不足,请充值!", int(total), int(total)));
    QSignalSpy topUp(view.get(), &VORAComicHomePageView::topUpRequested);
    view->alertView(10004, 1);
    QCOMPARE(topUp.count(), 1);
    QCOMPARE(topUp.first().first().toInt(), 2);

    // One coin more: dialog 10003, and its "购买" buys every unbought paid chapter.
    global->user()->setUserCoin(realCoins);
    view->readCurrentChapterAtRow(row);
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

void TestComicHomePage::purchaseRefusedBySiteKeepsCoins()
{
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    global->appStatus()->setFromAppStore(0);
    auto view = openComic(QStringLiteral("10014"));
    QVERIFY(view);
    const int row = rowOf(view->chapterView(), [](const VORAChapterInfoDTO &c) { return c.type == 2 && c.buyed == 0 && c.price > 0; });
    QVERIFY(row >= 0);
    // The page believes in more coins than the site holds: the site refuses.
    global->user()->setUserCoin(1000000);
    AlertRecorder alerts;
    QSignalSpy bought(view.get(), &VORAComicHomePageView::purchaseFinished);
    view->readCurrentChapterAtRow(row);
    view->alertView(10002, 2);
    QCOMPARE(alerts.lastTag(), 10003);
    view->alertView(10003, 1);
    QTRY_COMPARE_WITH_TIMEOUT(bought.count(), 1, 10000);
    QCOMPARE(bought.first().first().toBool(), false);
    QCOMPARE(global->user()->userCoin(), 1000000);

    // A connection cut in the middle of the answer: "购买失败".
    m_env.site->faults().setDropMidBody(QStringLiteral("v3/app/ios/pad/buyChapter/buy"));
    view->readCurrentChapterAtRow(row);
    view->alertView(10002, 1);
    QTRY_COMPARE_WITH_TIMEOUT(bought.count(), 2, 10000);
    QCOMPARE(alerts.lastMessage(), QStringLiteral("购买失败"));
}

void TestComicHomePage::readingContinuesFromTheStoredPosition()
{
    auto first = openComic(QStringLiteral("10003"));
    QVERIFY(first);
    QSignalSpy read(first.get(), &VORAComicHomePageView::readRequested);
    first->readComicBtnClick();
    QCOMPARE(read.count(), 1);
    QCOMPARE(read.first().at(1).toString(), first->comicInfoDTO()->chapterList.first().chapterId);
    QCOMPARE(read.first().at(2).toString(), QStringLiteral("kFirstPage"));

    // A stored position: the reader saved chapter 3, page "page-x".
    const VORAComicInfoDTO comic = *first->comicInfoDTO();
    const VORAChapterInfoDTO chapter = comic.chapterList.at(2);
    VORAPageInfoDTO page;
    page.pageId = QStringLiteral("812345");
    {
        VORADatabaseManager db;
        db.addReadHistoryWithComic(comic, chapter, page);
    }
    auto second = openComic(QStringLiteral("10003"));
    QVERIFY(second);
    QVERIFY(second->hasReadHistory());
    QSignalSpy read2(second.get(), &VORAComicHomePageView::readRequested);
    second->readComicBtnClick();
    QCOMPARE(read2.count(), 1);
    QCOMPARE(read2.first(), (QVariantList{QStringLiteral("10003"), chapter.chapterId, QStringLiteral("812345")}));
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
    auto view = openComic(QStringLiteral("10001"));
    QVERIFY(view);
    QSignalSpy signIn(view.get(), &VORAComicHomePageView::signInRequested);
    view->addBookShelfBtnClick(); // signed out
    QCOMPARE(signIn.count(), 1);
    QVERIFY(!view->inBookshelf());

    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    auto *manager = qobject_cast<VORABookShelfManager *>(VORAAppGlobalData::shareAppGlobalData()->bookShelfManager());
    QVERIFY(manager);
    view->addBookShelfBtnClick();
    QVERIFY(view->inBookshelf());
    const std::optional<VORABookShelf> entry = manager->getBookshelfWithComicId(QStringLiteral("10001"));
    QVERIFY(entry);
    QCOMPARE(entry->comicName, view->headInfo().value("name").toString());
    {
        VORADatabaseManager db;
        QVERIFY(db.getBookshelfWithComicId(QStringLiteral("10001")));
    }
    // A new page for the same comic finds it on the shelf.
    auto again = openComic(QStringLiteral("10001"));
    QVERIFY(again && again->inBookshelf());
    again->addBookShelfBtnClick();
    QVERIFY(!again->inBookshelf());
    QVERIFY(!manager->getBookshelfWithComicId(QStringLiteral("10001")));
}

QTEST_MAIN(TestComicHomePage)
#include "tst_comichomepage.moc"
