// The wallet against the reference site over loopback, in a temporary app
// home: a coin top-up paid on the site's cashier page as a browser would, the
// way back through "safariSuccess" and the purchase it makes possible; a
// membership order left unpaid, then paid; the history lists paging to their end.

#include "../catalogue/CatalogueTestSupport.h"

#include "account/VORAPayViewController.h"
#include "account/VORAWalletHistoryModel.h"
#include "catalogue/VORAChapterPurchase.h"
#include "net/VORABuyChapterService.h"
#include "net/VORAGetComicBasicInfoService.h"

#include <QAbstractItemModelTester>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>

namespace {
// Opens the cashier page as the browser does, follows its link for `act`
// ("confirm" or "cancel") and hands the address it is sent back to over to the
// app the way the app's delegate does (without "quorin://", unescaped).
void payInBrowser(const QUrl &cashier, const QString &act, QString *returned)
{
    QNetworkAccessManager browser;
    auto get = [&browser](const QUrl &url) {
        QNetworkRequest request(url);
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
        return std::unique_ptr<QNetworkReply>(browser.get(request));
    };
    const auto page = get(cashier);
    QTRY_VERIFY(page->isFinished());
    const QString html = QString::fromUtf8(page->readAll());
    const auto link = QRegularExpression(QStringLiteral("href=\"([^\"]*act=%1)\"").arg(act)).match(html);
    QVERIFY2(link.hasMatch(), qPrintable(html));
    const auto answer = get(cashier.resolved(QUrl(link.captured(1).replace(QStringLiteral("&amp;"), QStringLiteral("&")))));
    QTRY_VERIFY(answer->isFinished());
    QCOMPARE(answer->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), 302);
    const QString location = QString::fromUtf8(answer->rawHeader("Location"));
    QVERIFY(location.startsWith(QStringLiteral("quorin://pay?")));
    *returned = location;
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::safariSuccess), nullptr,
                                             {{QStringLiteral("object"), QUrl::fromPercentEncoding(location.mid(9).toUtf8())}});
}

VORAChapterPurchase::Answer buyChapters(VORABuyChapterService &buy)
{
    ServiceWaiter waiter;
    buy.asynchronousRequestWithDelegate(&waiter);
    if (!QTest::qWaitFor([&] { return waiter.done; }, 10000))
        return VORAChapterPurchase::Answer::TransportFailed;
    return VORAChapterPurchase::readBuyAnswer(buy, nullptr);
}
}

class TestWalletFlows : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void topUpLetsARefusedPurchaseGoThrough();
    void membershipOrderWaitsForItsPayment();
    void historyPagesToItsEnd_data();
    void historyPagesToItsEnd();

private:
    CatalogueTestEnvironment m_env;
};

void TestWalletFlows::initTestCase()
{
    QVERIFY(m_env.start());
    qputenv("QUORIN_PAY_BASE", m_env.site->baseUrl().toString().toUtf8());
}

void TestWalletFlows::topUpLetsARefusedPurchaseGoThrough()
{
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    VORAUser *user = VORAAppGlobalData::shareAppGlobalData()->user();
    VORAGetComicBasicInfoService detail;
    detail.comicId = QStringLiteral("10002");
    ServiceWaiter waiter;
    detail.asynchronousRequestWithDelegate(&waiter);
    QTRY_VERIFY(waiter.done && detail.comicInfo());
    const QList<VORAChapterInfoDTO> chapters = detail.comicInfo()->chapterList;
    VORABuyChapterService buy;
    buy.comicId = detail.comicId;
    buy.chapterArray = VORAChapterPurchase::unboughtPaidChapterIds(chapters);
    QVERIFY(VORAChapterPurchase::wholeComicTotal(chapters) > user->userCoin());
    QCOMPARE(buyChapters(buy), VORAChapterPurchase::Answer::Refused);

    VORAPayViewController pay;
    QSignalSpy opened(&pay, &VORAPayViewController::openUrlRequested);
    QSignalSpy paid(&pay, &VORAPayViewController::paid);
    int announced = 0;
    NotificationCenter::defaultCenter().addObserver(&pay, QString::fromLatin1(VORANotificationNames::buyVIPorCoinSuccess),
                                                    [&announced](const Notification &) { ++announced; });
    pay.pushPayVC(VORAPayViewController::Coins);
    pay.setSelectedIndex(pay.packages()->count() - 1);
    const int coins = pay.packages()->packageAt(pay.selectedIndex())->amount;
    pay.placeOrder();
    QTRY_COMPARE(opened.count(), 1);
    QCOMPARE(pay.state(), VORAPayViewController::WaitingForPayment);
    QString returned;
    payInBrowser(opened.at(0).at(0).toUrl(), QStringLiteral("confirm"), &returned);
    QCOMPARE(returned, QStringLiteral("quorin://pay?order_id=%1&state=1").arg(pay.orderId()));
    QTRY_COMPARE(paid.count(), 1);
    QCOMPARE(announced, 1);
    QCOMPARE(user->userCoin(), 100 + coins);

    QCOMPARE(buyChapters(buy), VORAChapterPurchase::Answer::Bought);
}

void TestWalletFlows::membershipOrderWaitsForItsPayment()
{
    QVERIFY(signInAs(QString(), QString()));
    VORAPayViewController pay;
    QSignalSpy opened(&pay, &VORAPayViewController::openUrlRequested);
    QSignalSpy signIn(&pay, &VORAPayViewController::signInRequested);
    pay.pushPayVC(VORAPayViewController::Membership);
    QTRY_COMPARE(pay.state(), VORAPayViewController::Choosing);
    QVERIFY(pay.packages()->count() > 0);
    pay.placeOrder(); // signed out: no order
    QCOMPARE(signIn.count(), 1);
    QCOMPARE(pay.state(), VORAPayViewController::Choosing);

    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    pay.placeOrder();
    QTRY_COMPARE(opened.count(), 1);
    QString returned;
    payInBrowser(pay.payUrl(), QStringLiteral("cancel"), &returned);
    QVERIFY(returned.endsWith(QStringLiteral("&state=0")));
    QTRY_VERIFY(pay.message().contains(QStringLiteral("尚未支付")));
    pay.checkPayment(); // "我已完成支付" without paying
    QCOMPARE(pay.state(), VORAPayViewController::Checking);
    QTRY_COMPARE(pay.state(), VORAPayViewController::WaitingForPayment);
    QVERIFY(pay.message().contains(QStringLiteral("尚未支付")));
    VORAUser *user = VORAAppGlobalData::shareAppGlobalData()->user();
    QCOMPARE(user->vipUser(), QStringLiteral("0"));

    // Paid later all the same: the membership and its tickets reach the user.
    const qint64 tickets = user->ticket();
    payInBrowser(pay.payUrl(), QStringLiteral("confirm"), &returned);
    QTRY_COMPARE(pay.state(), VORAPayViewController::Paid);
    QCOMPARE(user->vipUser(), QStringLiteral("1"));
    QCOMPARE(user->ticket(), tickets + 2 * pay.packages()->packageAt(0)->amount);
}

void TestWalletFlows::historyPagesToItsEnd_data()
{
    QTest::addColumn<VORAWalletHistoryModel::Kind>("kind");
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("total");
    QTest::addColumn<int>("balance");
    // The demo account "rich" has a history of three pages in every list.
    QTest::newRow("coins") << VORAWalletHistoryModel::CoinLog << "ios/pad/coin_log.php" << 45 << 100000;
    QTest::newRow("top-ups") << VORAWalletHistoryModel::RechargeLog << "ios/pad/recharge_log.php" << 25 << -1;
    QTest::newRow("tickets") << VORAWalletHistoryModel::TicketLog << "android/phone/ticket_log.php" << 30 << 20;
}

void TestWalletFlows::historyPagesToItsEnd()
{
    QFETCH(VORAWalletHistoryModel::Kind, kind);
    QFETCH(QString, path);
    QFETCH(int, total);
    QFETCH(int, balance);
    QVERIFY(signInAs(QStringLiteral("rich"), QStringLiteral("rich123")));
    VORAWalletHistoryModel model(kind);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);

    model.reload();
    model.loadMore(); // a page on its way is not asked for again
    QTRY_VERIFY(!model.busy());
    QCOMPARE(model.count(), 20);
    QCOMPARE(model.total(), total);
    QCOMPARE(model.balance(), balance);

    // A failed page keeps the rows and says why; the next loadMore asks again.
    m_env.site->faults().setErrorStatus(path, 503, "busy");
    model.loadMore();
    QTRY_VERIFY(!model.busy());
    m_env.site->faults().clear();
    QVERIFY(!model.message().isEmpty());
    QCOMPARE(model.count(), 20);
    QVERIFY(!model.atEnd());

    while (!model.atEnd()) {
        model.loadMore();
        model.loadMore();
        QTRY_VERIFY(!model.busy());
        QVERIFY2(model.message().isEmpty(), qPrintable(model.message()));
    }
    QCOMPARE(model.count(), total);
    const int pagesAsked = m_env.site->requestCount(path);
    model.loadMore(); // at the end nothing more is asked
    QCOMPARE(m_env.site->requestCount(path), pagesAsked);

    QSet<QString> rows;
    for (const VORAWalletHistoryModel::Entry &e : model.entries()) {
        QVERIFY(e.time.isValid() && !e.title.isEmpty() && e.amount != 0);
        rows.insert(e.time.toString() + e.title + e.itemId);
    }
    if (kind == VORAWalletHistoryModel::RechargeLog)
        QCOMPARE(rows.size(), total);
}

QTEST_MAIN(TestWalletFlows)
#include "tst_walletflows.moc"
