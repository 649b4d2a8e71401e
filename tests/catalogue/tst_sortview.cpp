// The category screen against the reference site: the wire values of every
// filter button and of the shell's category buttons, the delay behind the
// loading panel, paging until an empty page, pull-down reload, the two
// layouts, failures that keep the list, and opening a comic.

#include "CatalogueTestSupport.h"
#include "catalogue/VORAComicListModel.h"
#include "catalogue/VORANetWorkNoLinking.h"
#include "catalogue/VORASortView.h"
#include "core/VORAUtility.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QUrlQuery>

#include <tuple>

namespace {
const QString listPath = QStringLiteral("ios/pad/list.php");
constexpr int shortDelay = 20;

QUrlQuery lastListQuery(QuorinSite &site)
{
    return QUrlQuery(QString::fromUtf8(site.lastRequest(listPath).query));
}
} // namespace

class TestSortView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void cellRules();
    void filterButtonsSendTheirWireValues_data();
    void filterButtonsSendTheirWireValues();
    void pagingUntilAnEmptyPageThenPullDown();
    void layoutsMenusAndOpening();
    void failuresKeepTheList();
    void failureWithoutNetworkAsksForATap();
    void malformedAnswers_data();
    void malformedAnswers();

private:
    std::unique_ptr<VORASortView> makeView();
    CatalogueTestEnvironment m_env;
};

void TestSortView::initTestCase()
{
    QVERIFY(m_env.start());
}

void TestSortView::cleanup()
{
    m_env.site->faults().clear();
    m_env.pointAtSite();
}

std::unique_ptr<VORASortView> TestSortView::makeView()
{
    auto view = std::make_unique<VORASortView>();
    view->setRequestDelay(shortDelay);
    return view;
}

void TestSortView::cellRules()
{
    // The cells' rules: {count, layout (0 grid of three, 1 list), rows}, and the licence badge.
    for (const auto &[count, layout, rows] : {std::tuple{0, 0, 0}, {-2, 0, 0}, {1, 0, 1}, {31, 0, 11}, {30, 0, 10}, {31, 1, 31}, {1, 1, 1}})
        QCOMPARE(VORASortView::rowsForCount(count, layout), rows);
    for (const auto &[accredit, badge] : {std::pair<int, QString>{0, ""}, {1, "dujia.png"}, {2, "qianyue.png"}, {3, ""}})
        QCOMPARE(VORAComicListModel::accreditBadge(accredit), badge);
}

void TestSortView::filterButtonsSendTheirWireValues_data()
{
    QTest::addColumn<int>("tag"); // a filter button, or 0 for the shell's category button below
    QTest::addColumn<qint64>("type");
    QTest::addColumn<QString>("argname");
    QTest::addColumn<QString>("argval");
    // One button of each menu (the codes of every filter value are the records
    // suite's table), and the buttons with a rule of their own.
    QTest::newRow("theme 118 搞笑") << 118 << qint64(0) << "theme" << "1";
    QTest::newRow("theme 127 体育 (513)") << 127 << qint64(0) << "theme" << "8";
    QTest::newRow("serial 129 finished") << 129 << qint64(0) << "serial" << "1";
    QTest::newRow("sort 131 tickets") << 131 << qint64(0) << "sort" << "23";
    QTest::newRow("sort 135 weekly: same as comments") << 135 << qint64(0) << "sort" << "20";
    QTest::newRow("shell 101") << 0 << qint64(1) << "cate" << "1";
    QTest::newRow("shell 104") << 0 << qint64(8) << "cate" << "4";
}

void TestSortView::filterButtonsSendTheirWireValues()
{
    QFETCH(int, tag);
    QFETCH(qint64, type);
    QFETCH(QString, argname);
    QFETCH(QString, argval);
    auto view = makeView();
    QSignalSpy answered(view.get(), &VORASortView::answered);
    const int before = m_env.site->requestCount(listPath);
    view->setPopbutton(116);
    if (tag)
        view->switchFilter(tag);
    else
        view->showCategoryType(type);
    // Behind the panel for the delay, the menu closed, nothing sent yet.
    QVERIFY(view->loadingPanel());
    QCOMPARE(view->openMenu(), 0);
    QCOMPARE(m_env.site->requestCount(listPath), before);
    QTRY_VERIFY_WITH_TIMEOUT(!answered.isEmpty(), 10000);
    QVERIFY(!view->loadingPanel());
    QCOMPARE(m_env.site->requestCount(listPath), before + 1);
    QVERIFY(!view->filterTitle().isEmpty());
    const QUrlQuery query = lastListQuery(*m_env.site);
    QCOMPARE(query.queryItemValue("argname"), argname);
    QCOMPARE(query.queryItemValue("argval"), argval);
    QCOMPARE(query.queryItemValue("page"), QStringLiteral("0"));
}

void TestSortView::pagingUntilAnEmptyPageThenPullDown()
{
    auto view = makeView();
    QAbstractItemModelTester tester(view->comicList());
    QSignalSpy answered(view.get(), &VORASortView::answered);
    view->switchSort(130); // the whole catalogue: 60 comics
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 10000);
    QCOMPARE(view->comicList()->count(), 30);
    QCOMPARE(view->comicTotal(), 60);
    QVERIFY(view->hasFooter());
    const QString firstId = view->comicList()->comicAt(0)->comicId;

    view->refreshTriggered(40); // pull-up past the footer
    QVERIFY(view->reloadingUp());
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 2, 10000);
    QVERIFY(!view->reloadingUp());
    QCOMPARE(lastListQuery(*m_env.site).queryItemValue("page"), QStringLiteral("1"));
    QCOMPARE(view->comicList()->count(), 60);
    QCOMPARE(view->comicList()->comicAt(0)->comicId, firstId);
    QVERIFY(view->textPanel().isEmpty());

    // Past the end: an empty page, the list unchanged, the end-of-category panel.
    view->refreshTriggered(40);
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 3, 10000);
    QCOMPARE(lastListQuery(*m_env.site).queryItemValue("page"), QStringLiteral("2"));
    QCOMPARE(view->comicList()->count(), 60);
    QCOMPARE(view->textPanel(), VORASortView::endOfCategoryText);
    QTRY_VERIFY_WITH_TIMEOUT(view->textPanel().isEmpty(), 10000);

    // Pulling up again asks for that page again, not for one beyond.
    view->refreshTriggered(40);
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 4, 10000);
    QCOMPARE(lastListQuery(*m_env.site).queryItemValue("page"), QStringLiteral("2"));

    // Pull-down: page 0 replaces the list.
    view->refreshTriggered(-70);
    QVERIFY(view->reloading());
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 5, 10000);
    QVERIFY(!view->reloading());
    QCOMPARE(lastListQuery(*m_env.site).queryItemValue("page"), QStringLiteral("0"));
    QCOMPARE(view->comicList()->count(), 30);
}

void TestSortView::layoutsMenusAndOpening()
{
    auto view = makeView();
    QSignalSpy answered(view.get(), &VORASortView::answered);
    QSignalSpy open(view.get(), &VORASortView::openComicRequested);
    view->switchSerial(129);
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 10000);
    const int n = view->comicList()->count();
    QVERIFY(n > 1);
    QCOMPARE(view->sortTableType(), 0);

    view->setPopbutton(115);
    QCOMPARE(view->openMenu(), 115);
    view->setPopbutton(117); // another menu replaces it
    QCOMPARE(view->openMenu(), 117);
    view->setPopbutton(117); // the same button closes it
    QCOMPARE(view->openMenu(), 0);

    view->setPopbutton(116);
    view->layoutBtn(); // closes the menu first
    QCOMPARE(view->openMenu(), 0);
    QCOMPARE(view->sortTableType(), 1);
    QCOMPARE(view->tableRowCount(), n);

    // Buttons outside the tables do nothing.
    view->switchFilter(117);
    view->switchTheme(130);
    view->switchSort(118);
    QVERIFY(!view->loadingPanel());

    // A comic opens (closing the menu); rows outside the list do nothing.
    view->setPopbutton(115);
    view->executeDown(1);
    QCOMPARE(view->openMenu(), 0);
    const VORAComicListModel::Comic *comic = view->comicList()->comicAt(1);
    QCOMPARE(open.count(), 1);
    QCOMPARE(open.first(), (QVariantList{comic->comicId, comic->comicName, comic->comicCover}));
    view->executeDown(-1);
    view->executeDown(n);
    QCOMPARE(open.count(), 1);
}

void TestSortView::failuresKeepTheList()
{
    auto view = makeView();
    QSignalSpy answered(view.get(), &VORASortView::answered);
    QSignalSpy failed(view.get(), &VORASortView::requestFailed);
    view->switchSort(131);
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 10000);
    QCOMPARE(view->comicList()->count(), 30);

    // The next page breaks off in the middle of the answer.
    m_env.site->faults().setDropMidBody(listPath);
    view->requestNextPageData();
    QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, 10000);
    QCOMPARE(view->comicList()->count(), 30);
    QVERIFY(view->noNetwork()->isVisible());
    QCOMPARE(view->noNetwork()->text(), VORASortView::requestFailedText);

    // The panel's retry asks for the page that failed.
    m_env.site->faults().clear();
    view->noNetwork()->retry();
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 2, 10000);
    QCOMPARE(lastListQuery(*m_env.site).queryItemValue("page"), QStringLiteral("1"));
    QCOMPARE(view->comicList()->count(), 60);
    QVERIFY(!view->noNetwork()->isVisible());
}

void TestSortView::failureWithoutNetworkAsksForATap()
{
    // A host that takes the request, then goes away before answering.
    QTcpServer host;
    QVERIFY(host.listen(QHostAddress::LocalHost));
    qputenv("QUORIN_API_BASE", QStringLiteral("http://127.0.0.1:%1/").arg(host.serverPort()).toUtf8());
    auto view = makeView();
    QSignalSpy failed(view.get(), &VORASortView::requestFailed);
    view->begainRequestData();
    // The reachability probes connect too: wait for the connection that carries the request.
    QList<QTcpSocket *> sockets;
    const auto requestArrived = [&]() {
        while (host.hasPendingConnections())
            sockets.append(host.nextPendingConnection());
        return std::any_of(sockets.cbegin(), sockets.cend(), [](QTcpSocket *s) { return s->bytesAvailable() > 0; });
    };
    QTRY_VERIFY_WITH_TIMEOUT(requestArrived(), 10000);
    host.close();
    QTRY_VERIFY_WITH_TIMEOUT(!VORAUtility::isExistenceNetwork(), 10000);
    for (QTcpSocket *socket : sockets)
        socket->abort();
    QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, 10000);
    QVERIFY(view->noNetwork()->isVisible());
    QCOMPARE(view->noNetwork()->text(), VORASortView::tapToRetryText);

    // Still without network, the next request only alerts: nothing goes out.
    AlertRecorder alerts;
    view->begainRequestData();
    QCOMPARE(alerts.lastMessage(), VORASortView::noNetworkText);
    QVERIFY(!view->isLoading());
}

void TestSortView::malformedAnswers_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("count");
    QTest::newRow("not JSON") << QByteArray("<html>this is not JSON") << 0;
    QTest::newRow("an array") << QByteArray("[1,2]") << 0;
    QTest::newRow("data not a list") << QByteArray(R"({"total":5,"data":{"x":1}})") << 0;
    QTest::newRow("nulls and numbers") << QByteArray(R"({"total":null,"data":[{"comic_id":12,"name":null,"cover":null},null,7]})") << 3;
}

void TestSortView::malformedAnswers()
{
    QFETCH(QByteArray, body);
    QFETCH(int, count);
    m_env.site->faults().setMalformed(listPath, body);
    auto view = makeView();
    QSignalSpy answered(view.get(), &VORASortView::answered);
    view->begainRequestData();
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 10000);
    QCOMPARE(view->comicList()->count(), count);
    QCOMPARE(view->textPanel().isEmpty(), count > 0);
    QCOMPARE(view->hasFooter(), count > 0);
}

QTEST_MAIN(TestSortView)
#include "tst_sortview.moc"
