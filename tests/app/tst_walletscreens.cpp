// The wallet's screens wired into the shell, in a real offscreen window against
// the in-process reference site: a coin top-up opened by tag 112, paid on
// the cashier page and handed back to the app as the browser would; the
// history lists paged to their end by a finger and by the wheel. The wallet's
// rules are tests/account/tst_walletflows'.
// With QUORIN_WRITE_SCREENSHOTS=1 the screens are written to docs/screenshots.

#include "AppTestWindow.h"
#include "../catalogue/CatalogueTestSupport.h"
#include "account/VORAPayViewController.h"
#include "account/VORAWalletHistoryModel.h"
#include "reader/VORAReadComicManager.h"
#include "reader/VORAReadHomePageViewController.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QSignalSpy>

namespace {
// The address a browser is sent back to after "确认支付" on the cashier page.
QString confirmInBrowser(const QUrl &cashier)
{
    QNetworkAccessManager browser;
    auto get = [&browser](const QUrl &url) {
        QNetworkRequest request(url);
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
        std::unique_ptr<QNetworkReply> reply(browser.get(request));
        if (!QTest::qWaitFor([&reply] { return reply->isFinished(); }, 10000))
            reply->abort();
        return reply;
    };
    const QString html = QString::fromUtf8(get(cashier)->readAll());
    const auto link = QRegularExpression(QStringLiteral("href=\"([^\"]*act=confirm)\"")).match(html);
    if (!link.hasMatch())
        return QString();
    const QString path = link.captured(1).replace(QStringLiteral("&amp;"), QStringLiteral("&"));
    return QString::fromUtf8(get(cashier.resolved(QUrl(path)))->rawHeader("Location"));
}
}

class TestWalletScreens : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void coinTopUpPaidInTheBrowser();
    void historyPagedToItsEnd();
    void payRequestOverTheReader();

private:
    TestHome m_home;
    std::unique_ptr<QuorinSite> m_site;
};

void TestWalletScreens::initTestCase()
{
    m_site = startSite(m_home);
    QVERIFY(m_site);
    qputenv("QUORIN_PAY_BASE", m_site->baseUrl().toString().toUtf8());
}

void TestWalletScreens::coinTopUpPaidInTheBrowser()
{
    AppTestWindow app(QSize(1366, 768));
    QVERIFY(app.started());
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    QSignalSpy browserAsked(app.delegate.get(), &VORAAppDelegate::openUrlRequested);

    app.root()->switchView(112); // as the user panel's "充值" does
    QTRY_VERIFY(app.item(QStringLiteral("package2")));
    QVERIFY(app.click(QStringLiteral("package2"))); // 3000 coins
    app.shot("pay-coins.png");
    QVERIFY(app.click(QStringLiteral("payPlaceOrder")));
    QTRY_COMPARE_WITH_TIMEOUT(browserAsked.count(), 1, 10000);
    QTRY_VERIFY(app.item(QStringLiteral("payCheck")));
    app.shot("pay-waiting.png");

    const QString returned = confirmInBrowser(browserAsked.at(0).at(0).toUrl());
    QVERIFY2(returned.startsWith(QStringLiteral("quorin://pay?")), qPrintable(returned));
    QVERIFY(app.delegate->openURL(returned, VORAAppDelegate::browserSourceApplication));
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("payFinish")), 10000);
    QVERIFY(app.item(QStringLiteral("payPaidMessage"))->property("text").toString().endsWith(QStringLiteral("3100")));

    QVERIFY(app.click(QStringLiteral("payFinish")));
    QTRY_VERIFY(!app.item(QStringLiteral("payView")) && !app.item(QStringLiteral("dimming777777")));
}

void TestWalletScreens::historyPagedToItsEnd()
{
    AppTestWindow app(QSize(800, 600));
    QVERIFY(app.started());
    QVERIFY(signInAs(QStringLiteral("rich"), QStringLiteral("rich123")));

    // From the payment screen's "充值记录" to the coin changes: 45 rows, three pages.
    app.root()->switchView(112);
    QTRY_VERIFY(app.item(QStringLiteral("payHistory")));
    QVERIFY(app.click(QStringLiteral("payHistory")));
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("walletRow0")), 10000);
    QVERIFY(app.click(QStringLiteral("walletTab0")));
    VORAWalletHistoryModel *history = app.root()->walletHistory();
    QCOMPARE(history->kind(), VORAWalletHistoryModel::CoinLog);
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("walletRow0")) && history->count() == 20, 10000);
    QTRY_VERIFY(app.item(QStringLiteral("walletBalance"))->property("text").toString().endsWith(QStringLiteral("100000")));
    app.shot("wallet-history.png");

    QQuickItem *list = app.item(QStringLiteral("walletList"));
    for (int i = 0; i < 12 && history->count() == 20; ++i)
        app.drag(list, -(list->height() - 80));
    QTRY_COMPARE_WITH_TIMEOUT(history->count(), 40, 10000);
    const QPoint at = app.centreOf(list);
    QTRY_VERIFY_WITH_TIMEOUT((app.wheelDown(at), history->atEnd()), 20000);
    QQuickItem *end = app.item(QStringLiteral("walletEndText"));
    QTRY_COMPARE(end->property("text").toString(), QStringLiteral("就这么多"));
    QTRY_VERIFY((app.wheelDown(at), list->property("atYEnd").toBool()));
    QQuickItem *last = app.item(QStringLiteral("walletRow44"));
    QVERIFY(last);
    QVERIFY(last->mapToScene(QPointF(0, last->height())).y() <= end->mapToScene(QPointF(0, 0)).y());
    QVERIFY(end->mapToScene(QPointF(0, end->height())).y() <= list->mapToScene(QPointF(0, list->height())).y());
}

// The reader's top-up dialogs ask for the payment screen: it comes over the
// reader and takes the clicks, and closing it leaves the reader as it was.
void TestWalletScreens::payRequestOverTheReader()
{
    AppTestWindow app;
    QVERIFY(app.started());
    app.root()->openReader(QStringLiteral("10001"), QString(), VORAReadComicManager::kFirstPage);
    VORAReadHomePageViewController *reader = app.root()->readHomePageViewController();
    QTRY_VERIFY_WITH_TIMEOUT(reader->isActive(), 10000);
    reader->pushPayVC(VORAPayViewController::Membership);
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("package1")), 10000);
    QVERIFY(app.click(QStringLiteral("package1")));
    QCOMPARE(app.root()->payView()->selectedIndex(), 1);
    QVERIFY(app.click(QStringLiteral("payClose")));
    QTRY_VERIFY(!app.item(QStringLiteral("payView")));
    QVERIFY(app.item(QStringLiteral("readerView")) && app.root()->readHomePageViewController() == reader);
}

QTEST_MAIN(TestWalletScreens)
#include "tst_walletscreens.moc"
