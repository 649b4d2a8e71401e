// The wallet against the reference site over loopback, in a temporary app
// home: the three history lists paging to their end.

#include "../catalogue/CatalogueTestSupport.h"

#include "account/VORAWalletHistoryModel.h"

#include <QAbstractItemModelTester>
#include <QSet>
#include <QSignalSpy>

class TestWalletFlows : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
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
