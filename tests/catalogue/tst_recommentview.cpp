// The recommendation feed's screen logic against the reference site: tab wire
// values, the banner timer and its inverted pause flag, failures and retry,
// malformed answers, opening comics and slides, pull-to-refresh.

#include "CatalogueTestSupport.h"
#include "catalogue/VORANetWorkNoLinking.h"
#include "catalogue/VORARecommentView.h"
#include "net/VORAGetRcommentService.h"

#include <QSignalSpy>
#include <QTest>
#include <QUrlQuery>

#include <memory>
#include <utility>

namespace {
const QString listPath = QStringLiteral("ios/pad/list.php");
} // namespace

class TestRecommentView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void cellTexts();
    void tabsSendTheirWireValues_data();
    void tabsSendTheirWireValues();
    void bannerAdvancesAndPausesOnTheNotification();
    void answersAndFailures_data();
    void answersAndFailures();
    void openingComicsAndSlides();
    void pullToRefreshRequestsAgain();

private:
    std::unique_ptr<VORARecommentView> makeLoadedView();
    CatalogueTestEnvironment m_env;
};

void TestRecommentView::initTestCase()
{
    QVERIFY(m_env.start());
}

void TestRecommentView::cleanup()
{
    m_env.site->faults().clear();
    m_env.pointAtSite();
}

std::unique_ptr<VORARecommentView> TestRecommentView::makeLoadedView()
{
    auto view = std::make_unique<VORARecommentView>();
    QSignalSpy answered(view.get(), &VORARecommentView::answered);
    if (!answered.wait(10000) && answered.isEmpty())
        return nullptr;
    return view;
}

void TestRecommentView::cellTexts()
{
    // The click count of a cell (the rows of three and the badge are the
    // comic list model's, checked by tst_sortview's rows and tst_searchview's roles).
    for (const auto &[total, text] : {std::pair<QString, QString>{"", ""}, {"9999", "9999"}, {"10000", "1.0万"},
                                      {"4835429", "483.5万"}, {"123456789", "1.2亿"}, {"12k", "12k"}})
        QCOMPARE(VORARecommentView::clickText(total), text);
}

void TestRecommentView::tabsSendTheirWireValues_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("argname");
    QTest::addColumn<QString>("argval");
    QTest::addColumn<QString>("con");
    QTest::newRow("热门") << 2000 << "sort" << "7" << QString();
    QTest::newRow("新作") << 2001 << "sort" << "20" << QString();
    QTest::newRow("连载") << 2002 << "serial" << "0" << "2";
    QTest::newRow("完结") << 2003 << "serial" << "1" << "2";
}

void TestRecommentView::tabsSendTheirWireValues()
{
    QFETCH(int, tag);
    QFETCH(QString, argname);
    QFETCH(QString, argval);
    QFETCH(QString, con);

    auto view = makeLoadedView();
    QVERIFY(view);
    QCOMPARE(view->curTag(), 2000); // the first tab is requested at creation
    const int before = m_env.site->requestCount(listPath);
    QSignalSpy tagChanged(view.get(), &VORARecommentView::curTagChanged);
    QSignalSpy answered(view.get(), &VORARecommentView::answered);
    view->recommendLabel(tag);
    QCOMPARE(view->curTag(), tag);
    if (tag == 2000) { // already selected: nothing sent
        QCOMPARE(tagChanged.size(), 0);
        QVERIFY(!view->isLoading());
        QCOMPARE(m_env.site->requestCount(listPath), before);
    } else {
        QTRY_COMPARE_WITH_TIMEOUT(answered.size(), 1, 10000);
        QCOMPARE(m_env.site->requestCount(listPath), before + 1);
    }
    const QUrlQuery query(QString::fromUtf8(m_env.site->lastRequest(listPath).query));
    QCOMPARE(query.queryItemValue(QStringLiteral("argname")), argname);
    QCOMPARE(query.queryItemValue(QStringLiteral("argval")), argval);
    QCOMPARE(query.hasQueryItem(QStringLiteral("con")), !con.isEmpty());
    QCOMPARE(query.queryItemValue(QStringLiteral("con")), con);
}

void TestRecommentView::bannerAdvancesAndPausesOnTheNotification()
{
    auto view = makeLoadedView();
    QVERIFY(view);
    QVERIFY(view->isStop()); // runs from the start

    QSignalSpy ticks(view.get(), &VORARecommentView::timerFired);
    QList<int> seen;
    connect(view.get(), &VORARecommentView::timeCountChanged, this, [&] { seen.append(view->timeCount()); });
    view->setTimerInterval(20);
    // Five pages whatever the number of slides, then back to the first.
    QTRY_VERIFY_WITH_TIMEOUT(seen.size() >= 6, 10000);
    QCOMPARE(seen.mid(0, 6), (QList<int>{1, 2, 3, 4, 0, 1}));

    // "Invalidate" pauses the banner by clearing the flag.
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::recommentInvalidateNSTimer));
    QVERIFY(!view->isStop());
    const int page = view->timeCount();
    const qsizetype movesBefore = seen.size();
    const qsizetype ticksBefore = ticks.size();
    QTRY_VERIFY_WITH_TIMEOUT(ticks.size() >= ticksBefore + 5, 10000);
    QCOMPARE(view->timeCount(), page);
    QCOMPARE(seen.size(), movesBefore);

    // "Is valid" lets it run again.
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::recommentIsValueNSTimer));
    QVERIFY(view->isStop());
    QTRY_VERIFY_WITH_TIMEOUT(seen.size() > movesBefore, 10000);
    QCOMPARE(seen.at(movesBefore), (page + 1) % 5);
}

void TestRecommentView::answersAndFailures_data()
{
    QTest::addColumn<QString>("fault"); // "drop", "closedPort", "status" (500) or "body"
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("panel"); // the no-network panel's text; "" where an answer arrives
    QTest::newRow("connection dropped") << "drop" << QByteArray() << VORARecommentView::requestFailedText;
    QTest::newRow("no network") << "closedPort" << QByteArray() << VORARecommentView::noNetworkText;
    // An HTTP error status is an answer too (the engine reports only transport
    // failures): its body is no feed, so the lists come out empty.
    QTest::newRow("status 500") << "status" << QByteArray("<html>500</html>") << QString();
    QTest::newRow("truncated") << "body" << QByteArray("{\"data\": [tru") << QString();
    QTest::newRow("an array") << "body" << QByteArray("[1, 2, 3]") << QString();
    QTest::newRow("wrong types") << "body" << QByteArray("{\"data\": {\"a\": 1}, \"slide_data\": \"x\"}") << QString();
}

void TestRecommentView::answersAndFailures()
{
    QFETCH(QString, fault);
    QFETCH(QByteArray, body);
    QFETCH(QString, panel);

    auto view = makeLoadedView();
    QVERIFY(view);
    const QList<VORARecommentDTO> shown = view->recommentArray();
    QVERIFY(!shown.isEmpty() && !view->slideArray().isEmpty());
    if (fault == QLatin1String("drop"))
        m_env.site->faults().setDropMidBody(listPath);
    else if (fault == QLatin1String("closedPort"))
        pointAtClosedPort();
    else if (fault == QLatin1String("status"))
        m_env.site->faults().setErrorStatus(listPath, 500, body);
    else
        m_env.site->faults().setMalformed(listPath, body);

    VORANetWorkNoLinking *noNetwork = view->noNetwork();
    QSignalSpy answered(view.get(), &VORARecommentView::answered);
    view->recommendLabel(2002);
    if (panel.isEmpty()) {
        QTRY_COMPARE_WITH_TIMEOUT(answered.size(), 1, 10000);
        QCOMPARE(view->rowCount(), 0);
        QVERIFY(view->slideArray().isEmpty());
        QVERIFY(!noNetwork->isVisible());
        return;
    }
    QTRY_VERIFY_WITH_TIMEOUT(noNetwork->isVisible(), 10000);
    QCOMPARE(noNetwork->text(), panel);
    QCOMPARE(view->recommentArray(), shown); // the grid keeps what it showed
    QVERIFY(!view->isLoading());

    // Recovered: the retry asks for the tab that failed.
    cleanup();
    const int before = m_env.site->requestCount(listPath);
    noNetwork->retry();
    QTRY_COMPARE_WITH_TIMEOUT(answered.size(), 1, 10000);
    QVERIFY(!noNetwork->isVisible());
    QCOMPARE(m_env.site->requestCount(listPath), before + 1);
    const QUrlQuery query(QString::fromUtf8(m_env.site->lastRequest(listPath).query));
    QCOMPARE(query.queryItemValue(QStringLiteral("argname")), QStringLiteral("serial"));
}

void TestRecommentView::openingComicsAndSlides()
{
    auto view = makeLoadedView();
    QVERIFY(view);
    view->setTimerInterval(60000);
    QSignalSpy comics(view.get(), &VORARecommentView::openComicRequested);
    QSignalSpy urls(view.get(), &VORARecommentView::openUrlRequested);

    view->touchImageView(-1);
    view->touchImageView(int(view->recommentArray().size()));
    QCOMPARE(comics.size(), 0);
    view->touchImageView(1);
    QCOMPARE(comics.size(), 1);
    QCOMPARE(comics.at(0).at(0).toString(), view->recommentArray().at(1).comicId);

    // A swipe sets the page from the offset: floor((x - w/2) / w) + 1.
    view->scrollViewDidScroll(800.0 * 1.6, 800.0);
    QCOMPARE(view->timeCount(), 2);
    view->scrollViewDidScroll(800.0 * 1.4, 800.0);
    QCOMPARE(view->timeCount(), 1);
    view->scrollViewDidScroll(100.0, 0.0); // no width: ignored
    QCOMPARE(view->timeCount(), 1);

    // Every slide opens what its type says; the empty pages open nothing.
    const QList<VORASlideComicDTO> slides = view->slideArray();
    QVERIFY(!slides.isEmpty());
    bool sawComic = false;
    for (int page = 0; page < 5; ++page) {
        view->scrollViewDidScroll(page * 1000.0, 1000.0);
        QCOMPARE(view->timeCount(), page);
        comics.clear();
        urls.clear();
        view->handleTapGesture();
        if (page >= slides.size()) {
            QCOMPARE(comics.size() + urls.size(), 0);
        } else if (slides.at(page).slideType == 0) {
            QCOMPARE(comics.size(), 1);
            QCOMPARE(comics.at(0).at(0).toString(), slides.at(page).comicId);
            sawComic = true;
        } else {
            QCOMPARE(urls.size(), 1);
            const QString site = m_env.site->baseUrl().toString();
            QCOMPARE(urls.at(0).at(0).toUrl().toString(), slides.at(page).comicUrl.isEmpty() ? site : slides.at(page).comicUrl);
        }
    }
    QVERIFY(sawComic);

    // Without network a tap only alerts.
    pointAtClosedPort();
    AlertRecorder alerts;
    comics.clear();
    view->touchImageView(0);
    QCOMPARE(comics.size(), 0);
    QCOMPARE(alerts.alerts.size(), 1);
    QCOMPARE(alerts.lastMessage(), VORARecommentView::noNetworkText);
}

void TestRecommentView::pullToRefreshRequestsAgain()
{
    auto view = makeLoadedView();
    QVERIFY(view);
    const int before = m_env.site->requestCount(listPath);
    QSignalSpy answered(view.get(), &VORARecommentView::answered);
    view->reloadTableViewDataSource();
    QVERIFY(view->reloadingUp());
    view->reloadTableViewDataSource(); // a second pull while loading changes nothing
    QTRY_VERIFY_WITH_TIMEOUT(!view->reloadingUp(), 10000);
    QCOMPARE(answered.size(), 1);
    QCOMPARE(m_env.site->requestCount(listPath), before + 1);
}

QTEST_GUILESS_MAIN(TestRecommentView)
#include "tst_recommentview.moc"
