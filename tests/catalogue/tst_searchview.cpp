// The search screen against the reference site: the keyword cloud's layout
// rules, the history rule (typed searches enter it, picks from the cloud or
// the history do not), the result header counting the entries received, the
// no-result row, failures and opening a result. The cloud's placement rules
// are checked on the cloud alone; the screen only feeds it and turns it.

#include "CatalogueTestSupport.h"
#include "catalogue/VORACloudView.h"
#include "catalogue/VORAComicListModel.h"
#include "catalogue/VORASearchView.h"
#include "net/VORAGetSearchKeyword.h"
#include "store/VORAHistory.h"
#include "store/VORAPersistenceManager.h"

#include <QAbstractItemModelTester>
#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <QUrlQuery>

namespace {
const QString searchPath = QStringLiteral("ios/pad/search.php");
const QString keywordsPath = QStringLiteral("ios/pad/hot_keywords.php");

QList<VORACloudTagDTO> makeTags(int n)
{
    QList<VORACloudTagDTO> tags;
    for (int i = 0; i < n; ++i)
        tags.append({QString::number(100 + i), QStringLiteral("关键词%1号").arg(i)});
    return tags;
}

void verifyCloud(const VORACloudView &cloud, int expected)
{
    QCOMPARE(cloud.buttonList().size(), expected);
    QSet<QString> seen;
    for (int i = 0; i < cloud.buttonList().size(); ++i) {
        const VORACloudView::Button &b = cloud.buttonList().at(i);
        QCOMPARE(b.tag, 1001 + i);
        QVERIFY2(!seen.contains(b.text), qPrintable(b.text)); // each keyword once per pass
        seen.insert(b.text);
        QVERIFY(b.x > 8);
        QVERIFY(b.x + b.width + 16 < 503);
        QVERIFY(b.width <= 181 + 5);
        QVERIFY(b.y >= 8);
        if (i > 0) {
            const VORACloudView::Button &p = cloud.buttonList().at(i - 1);
            QVERIFY(b.y >= p.y + p.height && b.y < p.y + p.height + 70);
        } else {
            QVERIFY(b.y < 98);
        }
    }
    if (expected > 0)
        QVERIFY(cloud.buttonList().last().y + cloud.buttonList().last().height <= cloud.heightLimit());
}
} // namespace

class TestSearchView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void cloudLayout_data();
    void cloudLayout();
    void cloudFromTheSiteAndRotation();
    void historyRule_data();
    void historyRule();
    void historyPanelAndClearing();
    void headerCountsEntriesReceived_data();
    void headerCountsEntriesReceived();
    void failuresKeepWhatWasShown();

private:
    std::unique_ptr<VORASearchView> makeView();
    CatalogueTestEnvironment m_env;
};

void TestSearchView::initTestCase()
{
    QVERIFY(m_env.start());
}

void TestSearchView::cleanup()
{
    m_env.site->faults().clear();
    m_env.pointAtSite();
}

std::unique_ptr<VORASearchView> TestSearchView::makeView()
{
    auto view = std::make_unique<VORASearchView>();
    QSignalSpy loaded(view.get(), &VORASearchView::historyLoaded);
    if (!loaded.wait(10000))
        return nullptr;
    return view;
}

void TestSearchView::cloudLayout_data()
{
    QTest::addColumn<int>("keywords");
    QTest::addColumn<bool>("landscape");
    QTest::addColumn<int>("buttons");
    QTest::newRow("none") << 0 << true << 0;
    QTest::newRow("one") << 1 << true << 1;
    QTest::newRow("ten") << 10 << true << 10;
    QTest::newRow("twelve: ten placed") << 12 << true << 10;
    QTest::newRow("twelve, portrait") << 12 << false << 10;
}

void TestSearchView::cloudLayout()
{
    QFETCH(int, keywords);
    QFETCH(bool, landscape);
    QFETCH(int, buttons);
    VORACloudView cloud;
    for (quint32 seed = 1; seed <= 8; ++seed) {
        cloud.seed(seed);
        cloud.setLandscape(landscape);
        cloud.setTagList(makeTags(keywords));
        verifyCloud(cloud, buttons);
    }
}

void TestSearchView::cloudFromTheSiteAndRotation()
{
    auto view = makeView();
    QVERIFY(view);
    QSignalSpy cloud(view.get(), &VORASearchView::cloudAnswered);
    view->begainRequestData();
    QTRY_COMPARE_WITH_TIMEOUT(cloud.count(), 1, 10000);
    QCOMPARE(QUrlQuery(QString::fromUtf8(m_env.site->lastRequest(keywordsPath).query)).queryItemValue("num"), QStringLiteral("15"));
    QCOMPARE(view->cloudView()->tagList().size(), 15);

    QSignalSpy relaid(view->cloudView(), &VORACloudView::buttonsChanged);
    view->searchToOrientation(false);
    QCOMPARE(relaid.count(), 1);
    QCOMPARE(view->cloudView()->heightLimit(), 950);

    // An empty keyword answer leaves the cloud empty.
    m_env.site->faults().setMalformed(keywordsPath, R"({"data":[]})");
    view->begainRequestData();
    QTRY_COMPARE_WITH_TIMEOUT(cloud.count(), 2, 10000);
    QCOMPARE(view->cloudView()->buttonList().size(), 0);
}

void TestSearchView::historyRule_data()
{
    QTest::addColumn<QString>("how"); // typed, cloud, history
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<QStringList>("history");
    const QStringList start{"恋爱", "推理"};
    QTest::newRow("typed enters") << "typed" << "机甲" << QStringList{"机甲", "恋爱", "推理"};
    QTest::newRow("typed empty: nothing") << "typed" << "" << start;
    QTest::newRow("cloud pick does not") << "cloud" << "科幻" << start;
    QTest::newRow("history pick does not move") << "history" << "推理" << start;
}

void TestSearchView::historyRule()
{
    QFETCH(QString, how);
    QFETCH(QString, keyword);
    QFETCH(QStringList, history);
    {
        VORAHistory seedHistory;
        seedHistory.addSearchKey(QStringLiteral("推理"));
        seedHistory.addSearchKey(QStringLiteral("恋爱"));
        VORAPersistenceManager::saveObject(seedHistory.encodeWithCoder(), QStringLiteral("History"),
                                           VORAPersistenceManager::searchHistoryFile());
    }
    auto view = makeView();
    QVERIFY(view);
    QCOMPARE(view->searchHistoryArray(), (QStringList{"恋爱", "推理"}));
    QSignalSpy answered(view.get(), &VORASearchView::searchAnswered);
    const int searches = m_env.site->requestCount(searchPath);
    if (how == QLatin1String("typed")) {
        view->textDidChange(keyword);
        view->searchButtonClicked(keyword);
    } else if (how == QLatin1String("cloud")) {
        VORACloudView *cloud = view->cloudView();
        cloud->setTagList({{QStringLiteral("9"), keyword}});
        cloud->tapButton(1001);
    } else {
        view->enterComicListHistory(keyword);
    }
    QCOMPARE(view->searchHistoryArray(), history);
    QVERIFY(!view->historyVisible());
    if (keyword.isEmpty()) {
        QCOMPARE(m_env.site->requestCount(searchPath), searches);
    } else {
        QCOMPARE(view->fieldText(), keyword);
        QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 10000);
    }
    // What a new screen reads from the file is the same.
    view.reset();
    auto reopened = makeView();
    QVERIFY(reopened);
    QCOMPARE(reopened->searchHistoryArray(), history);
}

void TestSearchView::historyPanelAndClearing()
{
    VORAPersistenceManager::saveObject(VORAHistory().encodeWithCoder(), QStringLiteral("History"),
                                       VORAPersistenceManager::searchHistoryFile());
    auto view = makeView();
    QVERIFY(view);
    view->textDidChange(QStringLiteral("a"));
    QVERIFY(!view->historyVisible()); // nothing stored yet
    view->searchButtonClicked(QStringLiteral("a"));
    view->searchButtonClicked(QStringLiteral("b"));
    QCOMPARE(view->searchHistoryArray(), (QStringList{"b", "a"}));
    view->textDidChange(QStringLiteral("zz")); // the whole history, not filtered
    QVERIFY(view->historyVisible());
    view->textDidChange(QString());
    QVERIFY(!view->historyVisible());
    QVERIFY(!view->resultsVisible()); // the cloud is in front again

    view->textDidChange(QStringLiteral("q"));
    QVERIFY(view->historyVisible());
    view->clearnAllSearchHistory();
    QVERIFY(!view->historyVisible());
    QVERIFY(view->searchHistoryArray().isEmpty());
    view.reset();
    auto reopened = makeView();
    QVERIFY(reopened);
    QVERIFY(reopened->searchHistoryArray().isEmpty());
}

void TestSearchView::headerCountsEntriesReceived_data()
{
    QTest::addColumn<QByteArray>("answer"); // empty: the site's own
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<int>("received");
    QTest::newRow("2 of a total of 99") << QByteArray(R"({"total":99,"data":[{"comic_id":"10001","name":"一",
        "nick_name":"作者","accredit":"1"},{"comic_id":"10002","name":null,"cover":7}]})") << "一" << 2;
    QTest::newRow("none: the no-result row") << QByteArray() << "绝对没有这样的漫画zzz" << 0;
}

void TestSearchView::headerCountsEntriesReceived()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, keyword);
    QFETCH(int, received);
    if (!answer.isEmpty())
        m_env.site->faults().setMalformed(searchPath, answer);
    auto view = makeView();
    QVERIFY(view);
    QAbstractItemModelTester tester(view->comicList());
    QSignalSpy answered(view.get(), &VORASearchView::searchAnswered);
    QSignalSpy open(view.get(), &VORASearchView::openComicRequested);
    view->searchButtonClicked(keyword);
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 10000);
    QCOMPARE(view->headerText(), QStringLiteral("搜索“%1” 共计%2条查询结果").arg(keyword).arg(received));
    QCOMPARE(view->noResult(), received == 0);
    view->openResult(1);
    QCOMPARE(open.count(), received > 1 ? 1 : 0);
    if (received == 0)
        return;
    QCOMPARE(open.first().first().toString(), QStringLiteral("10002"));
    const QModelIndex first = view->comicList()->index(0);
    QCOMPARE(first.data(VORAComicListModel::ComicAuthorRole).toString(), QStringLiteral("作者"));
    QCOMPARE(first.data(VORAComicListModel::BadgeRole).toString(), QStringLiteral("dujia.png"));
    QCOMPARE(view->comicList()->index(1).data(VORAComicListModel::ComicNameRole).toString(), QString());
}

void TestSearchView::failuresKeepWhatWasShown()
{
    auto view = makeView();
    QVERIFY(view);
    QSignalSpy answered(view.get(), &VORASearchView::searchAnswered);
    QSignalSpy failed(view.get(), &VORASearchView::requestFailed);
    view->enterComicList(QStringLiteral("恋爱"));
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 10000);
    const int shown = view->comicList()->count();

    AlertRecorder alerts;
    m_env.site->faults().setDropMidBody(searchPath);
    view->enterComicList(QStringLiteral("推理"));
    QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, 10000);
    QCOMPARE(alerts.lastMessage(), VORASearchView::requestFailedText);
    QCOMPARE(view->comicList()->count(), shown);
    QVERIFY(!view->searching());
}

QTEST_MAIN(TestSearchView)
#include "tst_searchview.moc"
