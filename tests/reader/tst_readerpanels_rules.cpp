// The rules of the reader's panels against the in-process reference site and
// a store in a temporary app home: the bookmark panel's order, deletion by
// comic and row tap; the chapter panel's sort, count label and what a row tap
// does after the gate, with the dialogs answered inside the panel; the
// brightness panel; and the read-page log with its upload.

#include "ReaderPanelsTestSupport.h"
#include "catalogue/VORAChapterPurchase.h"
#include "catalogue/VORAReadGate.h"
#include "core/VORAUserConfig.h"
#include "net/VORAUploadReadLogSerVice.h"
#include "reader/VORAAdjustLuminanceView.h"
#include "reader/VORABookmarkListModel.h"
#include "reader/VORABookmarkManager.h"
#include "reader/VORAChapterListModel.h"
#include "reader/VORAChapterManager.h"
#include "reader/VORAReadPageLog.h"

#include <QAbstractItemModelTester>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>
#include <QUrlQuery>

#include <memory>

namespace {
const QString readLogPath = QStringLiteral("ios/pad/image_log.php");
const QDateTime base = QDateTime(QDate(2024, 3, 5), QTime(12, 0), Qt::LocalTime);

std::unique_ptr<VORABookmarkManager> openBookmarkPanel(RecordingHooks *hooks = nullptr)
{
    auto panel = std::make_unique<VORABookmarkManager>();
    panel->setReadHomeController(hooks);
    if (!QTest::qWaitFor([&]() { return panel->isLoaded(); }, 10000))
        return nullptr;
    return panel;
}

QList<int> indicesOf(const VORAChapterListModel *model)
{
    QList<int> out;
    for (int i = 0; i < model->count(); ++i)
        out << model->chapterAt(i)->index;
    return out;
}

// The "image_ids" of the last read-log request, decoded.
QJsonObject lastReadLog(QuorinSite &site)
{
    const QuorinSiteRequestRecord record = site.lastRequest(readLogPath);
    for (const QByteArray &pair : record.query.split('&')) {
        if (pair.startsWith("image_ids="))
            return QJsonDocument::fromJson(QByteArray::fromBase64(pair.mid(10))).object();
    }
    return {};
}
} // namespace

class TestReaderPanelsRules : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void bookmarkOrder_data();
    void bookmarkOrder();
    void bookmarkDeletionByComic();
    void bookmarkRowTapClosesThePanel();
    void chapterSortAndCount_data();
    void chapterSortAndCount();
    void chapterRowTap_data();
    void chapterRowTap();
    void brightness_data();
    void brightness();
    void readPageLog_data();
    void readPageLog();

private:
    CatalogueTestEnvironment m_env;
};

void TestReaderPanelsRules::initTestCase()
{
    QVERIFY(m_env.start());
}

void TestReaderPanelsRules::cleanup()
{
    m_env.site->faults().clear();
    VORAAppGlobalData::shareAppGlobalData()->appStatus()->setFromAppStore(1);
    QVERIFY(signInAs(QString(), QString()));
    clearBookmarks();
}

// --- Bookmarks ---

void TestReaderPanelsRules::bookmarkOrder_data()
{
    QTest::addColumn<QStringList>("pages");     // stored in this order ...
    QTest::addColumn<QList<int>>("minutes");    // ... added at base + these minutes
    QTest::addColumn<QStringList>("newestFirst");
    QTest::addColumn<QStringList>("oldestFirst");
    QTest::newRow("empty") << QStringList() << QList<int>() << QStringList() << QStringList();
    QTest::newRow("stored out of order") << QStringList{"p1", "p2", "p3", "p4"} << QList<int>{200, 100, 300, -50}
                                         << QStringList{"p3", "p1", "p2", "p4"} << QStringList{"p4", "p2", "p1", "p3"};
    // The store lists equal times newest stored first; both sorts keep that.
    QTest::newRow("equal times") << QStringList{"p1", "p2"} << QList<int>{7, 7} << QStringList{"p2", "p1"}
                                 << QStringList{"p2", "p1"};
}

void TestReaderPanelsRules::bookmarkOrder()
{
    QFETCH(QStringList, pages);
    QFETCH(QList<int>, minutes);
    QFETCH(QStringList, newestFirst);
    QFETCH(QStringList, oldestFirst);
    for (int i = 0; i < pages.size(); ++i)
        storeBookmark(QStringLiteral("5302"), QStringLiteral("第3话 %1"), pages.at(i), i, base.addSecs(60 * minutes.at(i)));

    auto panel = openBookmarkPanel();
    QVERIFY(panel);
    QAbstractItemModelTester tester(panel->bookmarkListModel());
    QCOMPARE(pageIdsOf(panel->mybookmarkList()), newestFirst);
    panel->chapterSort(); // the sort button
    QCOMPARE(pageIdsOf(panel->mybookmarkList()), oldestFirst);
    QCOMPARE(panel->bookmarkType(), 0); // the button's label follows
    panel->chapterSort();
    QCOMPARE(pageIdsOf(panel->mybookmarkList()), newestFirst);

    // The table follows the list: the newest row's date (its info text is
    // what the panel window suite reads off the rows).
    if (!pages.isEmpty()) {
        const QModelIndex first = panel->bookmarkListModel()->index(0);
        QCOMPARE(first.data(VORABookmarkListModel::DateTextRole).toString(),
                 base.addSecs(60 * minutes.at(pages.indexOf(newestFirst.first()))).toString(QStringLiteral("yyyy-MM-dd")));
    }
    QCOMPARE(VORABookmarkListModel::dateText(QDateTime()), QString());
}

void TestReaderPanelsRules::bookmarkDeletionByComic()
{
    storeBookmark(QStringLiteral("20001"), QStringLiteral("第1话"), QStringLiteral("a-old"), 0, base);
    storeBookmark(QStringLiteral("20002"), QStringLiteral("第1话"), QStringLiteral("b"), 1, base.addSecs(100));
    storeBookmark(QStringLiteral("20001"), QStringLiteral("第2话"), QStringLiteral("a-new"), 2, base.addSecs(200));

    auto panel = openBookmarkPanel();
    QVERIFY(panel);
    QCOMPARE(pageIdsOf(panel->mybookmarkList()), (QStringList{"a-new", "b", "a-old"}));
    // The second row of comic 20001 goes from the screen; the store loses the
    // comic's first stored bookmark, the newer one.
    panel->deleteCurrentBookmarkAtRow(2);
    QCOMPARE(pageIdsOf(panel->mybookmarkList()), (QStringList{"a-new", "b"}));
    panel->deleteCurrentBookmarkAtRow(7); // no such row
    panel->deleteCurrentBookmarkAtRow(-1);
    QCOMPARE(panel->bookmarkListModel()->count(), 2);

    panel = openBookmarkPanel();
    QVERIFY(panel);
    QCOMPARE(pageIdsOf(panel->mybookmarkList()), (QStringList{"b", "a-old"}));

    // The last bookmark of a comic goes the same way; then nothing is left.
    panel->deleteCurrentBookmarkAtRow(0);
    panel->deleteCurrentBookmarkAtRow(0);
    QVERIFY(panel->mybookmarkList().isEmpty());
    panel = openBookmarkPanel();
    QVERIFY(panel);
    QVERIFY(panel->mybookmarkList().isEmpty());
}

void TestReaderPanelsRules::bookmarkRowTapClosesThePanel()
{
    storeBookmark(QStringLiteral("30001"), QStringLiteral("第5话"), QStringLiteral("x1"), 4, base);
    storeBookmark(QStringLiteral("30002"), QStringLiteral("第9话"), QStringLiteral("x2"), 8, base.addSecs(60));
    RecordingHooks hooks;
    auto panel = openBookmarkPanel(&hooks);
    QVERIFY(panel);
    QSignalSpy closing(panel.get(), &VORAReaderSidePanel::closingChanged);
    QSignalSpy removed(panel.get(), &VORAReaderSidePanel::removeFromSuperview);

    panel->selectBookmarkAtRow(5); // no such row
    QVERIFY(hooks.calls.isEmpty());
    panel->selectBookmarkAtRow(0);
    QCOMPARE(hooks.calls, QStringList{"bookmark:x2"});
    QVERIFY(panel->isClosing());
    QCOMPARE(closing.count(), 1);

    // Closing: taps go nowhere, a second dimming tap changes nothing, and the
    // removal comes once.
    panel->selectBookmarkAtRow(1);
    panel->mengbanBtnClick();
    QCOMPARE(hooks.calls.size(), 1);
    QCOMPARE(closing.count(), 1);
    QTRY_COMPARE(removed.count(), 1);
    QVERIFY(panel->isRemoved());
}

// --- Chapters ---

void TestReaderPanelsRules::chapterSortAndCount_data()
{
    QTest::addColumn<int>("chapters");
    QTest::newRow("five chapters") << 5;
    QTest::newRow("no chapters") << 0;
}

void TestReaderPanelsRules::chapterSortAndCount()
{
    QFETCH(int, chapters);
    const QString comicId = QStringLiteral("777");
    VORAComicInfoDTO comic;
    for (int i = 0; i < chapters; ++i) {
        VORAChapterInfoDTO c;
        c.chapterId = QStringLiteral("c%1").arg(i);
        c.index = i;
        comic.chapterList.append(c);
    }
    // Handed over newest last but one: the panel keeps that until the first press.
    if (chapters > 0)
        comic.chapterList.move(chapters - 1, 0);
    const int n = int(comic.chapterList.size());
    const QString current = n > 1 ? comic.chapterList.at(1).chapterId : QString();

    VORAChapterManager panel(current, comicId);
    VORAChapterListModel *model = panel.chapterListModel();
    QAbstractItemModelTester tester(model);
    panel.setComicInfoDTO(comic);
    QCOMPARE(panel.countText(), QString::asprintf("当前共有%d章", n));
    QList<int> handedOver;
    for (const VORAChapterInfoDTO &c : comic.chapterList)
        handedOver << c.index;
    QCOMPARE(indicesOf(model), handedOver);
    QCOMPARE(model->currentRow(), n > 1 ? 1 : -1);

    QList<int> up, down;
    for (int i = 0; i < n; ++i) {
        up << i;
        down << n - 1 - i;
    }
    panel.chapterSort();
    QCOMPARE(indicesOf(model), down);
    QCOMPARE(model->currentRow(), n > 1 ? n - 1 - comic.chapterList.at(1).index : -1);
    panel.chapterSort();
    QCOMPARE(indicesOf(model), up);
}

// What a row tap does after the gate (whose rule has a table of its own):
// the jump, the sign-in and the dialogs answered inside the panel, on a
// comic and a user made up locally.
void TestReaderPanelsRules::chapterRowTap_data()
{
    QTest::addColumn<qint64>("isVip");
    QTest::addColumn<qint64>("buyed");
    QTest::addColumn<bool>("signedIn");
    QTest::addColumn<int>("fromAppStore");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<int>("alertTag");      // -1: none
    QTest::addColumn<QString>("then");      // "signedIn", "topUp", "answer0", "bought" or ""
    QTest::addColumn<QStringList>("callsAfter");

    const QStringList jump{"chapter:c2"};
    QTest::newRow("readable: jumps and closes") << qint64(0) << qint64(0) << false << 0 << jump << -1 << "" << jump;
    QTest::newRow("signed out: sign-in, then the chapter")
        << qint64(1) << qint64(-1) << false << 0 << QStringList{"user"} << -1 << "signedIn" << QStringList{"user", "chapter:c2"};
    QTest::newRow("sealed: become VIP, topped up") << qint64(3) << qint64(0) << true << 0 << QStringList() << 10000
                                                   << "topUp" << QStringList{"user", "pay:1", "chapter:c2"};
    QTest::newRow("sealed: refused") << qint64(3) << qint64(0) << true << 0 << QStringList() << 10000 << "answer0"
                                     << QStringList();
    QTest::newRow("from the store: nothing, stray notices move nothing")
        << qint64(3) << qint64(0) << true << 1 << QStringList() << -1 << "" << QStringList();
    QTest::newRow("bought dialog: 进去阅读") << qint64(1) << qint64(0) << true << 0 << QStringList() << 10001 << "bought"
                                         << QStringList{"chapter:c2"};
}

void TestReaderPanelsRules::chapterRowTap()
{
    QFETCH(qint64, isVip);
    QFETCH(qint64, buyed);
    QFETCH(bool, signedIn);
    QFETCH(int, fromAppStore);
    QFETCH(QStringList, calls);
    QFETCH(int, alertTag);
    QFETCH(QString, then);
    QFETCH(QStringList, callsAfter);

    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    global->user()->logonOut();
    if (signedIn)
        global->user()->setKey(QStringLiteral("local-key"));
    global->user()->setUserCoin(0);
    global->appStatus()->setFromAppStore(fromAppStore);
    VORAComicInfoDTO comic;
    comic.comicId = QStringLiteral("777");
    comic.is_vip = isVip;
    for (int i = 1; i <= 3; ++i) {
        VORAChapterInfoDTO c;
        c.chapterId = QStringLiteral("c%1").arg(i);
        c.index = i - 1;
        c.type = 2;
        c.price = 30;
        c.buyed = buyed;
        c.pass_time = base;
        comic.chapterList.append(c);
    }

    RecordingHooks hooks;
    VORAChapterManager panel(QStringLiteral("c1"), comic.comicId);
    panel.setNowForTesting([]() { return base.addSecs(10); });
    panel.setReadHomeController(&hooks);
    panel.setComicInfoDTO(comic);
    AlertRecorder alerts;
    panel.selectChapterAtRow(1);
    QCOMPARE(panel.chapterId(), QStringLiteral("c2"));
    QCOMPARE(hooks.calls, calls);
    QCOMPARE(alerts.alerts.isEmpty() ? -1 : alerts.lastTag(), alertTag);
    if (alertTag >= 0)
        QCOMPARE(alerts.last().value("delegate").value<QObject *>(), &panel);
    QCOMPARE(panel.userViewShown(), calls == QStringList{"user"});

    if (then.isEmpty() && !panel.isClosing()) {
        NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::userViewPostInfo));
        NotificationCenter::defaultCenter().post(QStringLiteral("BuyVIPorCoinSuccess"));
    } else if (then == QLatin1String("signedIn")) {
        global->user()->setKey(QStringLiteral("local-key"));
        NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::userViewPostInfo));
    } else if (then == QLatin1String("topUp")) {
        panel.alertView(alertTag, 1);
        QVERIFY(panel.userViewShown());
        NotificationCenter::defaultCenter().post(QStringLiteral("BuyVIPorCoinSuccess"));
    } else if (then == QLatin1String("answer0")) {
        panel.alertView(alertTag, 0);
    } else if (then == QLatin1String("bought")) {
        panel.alertView(VORAChapterPurchase::boughtAlertTag, 0);
        QVERIFY(hooks.calls.isEmpty());
        panel.alertView(VORAChapterPurchase::boughtAlertTag, 1);
    }
    QCOMPARE(hooks.calls, callsAfter);
    QCOMPARE(panel.isClosing(), callsAfter.contains(QStringLiteral("chapter:c2")));
    QVERIFY(!panel.userViewShown() || !panel.isClosing());
}

// --- Brightness ---

void TestReaderPanelsRules::brightness_data()
{
    QTest::addColumn<double>("slider");
    QTest::addColumn<double>("opacity");
    QTest::addColumn<double>("reopened");
    QTest::newRow("slider at 0") << 0.0 << 0.8333 << 0.1667;
    QTest::newRow("slider at 1") << 1.0 << 0.0 << 1.0;
    QTest::newRow("slider at 0.4") << 0.4 << 0.5 << 0.5;
    QTest::newRow("beyond 1") << 1.7 << 0.0 << 1.0;
    QTest::newRow("below 0") << -0.2 << 0.8333 << 0.1667;
}

void TestReaderPanelsRules::brightness()
{
    QFETCH(double, slider);
    QFETCH(double, opacity);
    QFETCH(double, reopened);
    VORAUserConfig::shareUserConfigInstance()->setLuminanceValue(0.25);
    {
        VORAAdjustLuminanceView panel;
        QVERIFY(qAbs(panel.sliderValue() - 0.75) < 1e-6);
        QSignalSpy layer(&panel, &VORAAdjustLuminanceView::layerOpacityChanged);
        panel.adjustLuminance(slider);
        QCOMPARE(layer.count(), 1);
        QVERIFY2(qAbs(layer.first().first().toDouble() - opacity) < 1e-4, qPrintable(layer.first().first().toString()));
        QVERIFY(qAbs(VORAUserConfig::shareUserConfigInstance()->luminanceValue() - opacity) < 1e-4);
        panel.adjustLuminance(qQNaN()); // ignored
        QCOMPARE(layer.count(), 1);
    }
    VORAAdjustLuminanceView reopen;
    QVERIFY2(qAbs(reopen.sliderValue() - reopened) < 1e-4, qPrintable(QString::number(reopen.sliderValue())));
    QVERIFY(qAbs(reopen.layerOpacity() - opacity) < 1e-4);
}

// --- Read-page log ---

void TestReaderPanelsRules::readPageLog_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QStringList>("pages");   // "<page index>/<chapter id>/<page id>", shown in order
    QTest::addColumn<bool>("leave");          // then uploadingReadHistoryInfo, as leaving the reader does
    QTest::addColumn<int>("uploads");
    QTest::addColumn<int>("keys");
    QTest::addColumn<int>("values");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("uploaded"); // the records of the last upload: "i<page>=<index>_<chapter>"

    QStringList eleven, tenRecords;
    for (int i = 0; i < 11; ++i) {
        eleven << QStringLiteral("%1/44120/%2").arg(i).arg(889100 + i);
        if (i < 10)
            tenRecords << QStringLiteral("i%1=%2_44120").arg(889100 + i).arg(i);
    }
    QStringList twelve = eleven;
    twelve << QStringLiteral("3/44121/889200");

    QTest::newRow("eleventh page uploads the first ten") << "reader" << eleven << false << 1 << 10 << 10 << 0 << tenRecords;
    QTest::newRow("every later page sends the same ten") << "reader" << twelve << false << 2 << 10 << 10 << 0 << tenRecords;
    QTest::newRow("signed out: keys dropped, values kept") << "" << eleven << false << 0 << 0 << 10 << 0 << QStringList();
    QTest::newRow("signed out, reading on") << "" << (QStringList(eleven) << "0/44121/889300") << false << 0 << 1 << 11
                                            << 1 << QStringList();
    QTest::newRow("repeats are not counted")
        << "reader" << QStringList{"0/44120/1", "0/44120/1", "1/44120/2", "0/44120/1", "1/44121/2"} << false << 0 << 3
        << 3 << 3 << QStringList();
    QTest::newRow("leaving uploads what was read")
        << "reader" << QStringList{"0/44120/1", "1/44120/2", "2/44120/3"} << true << 1 << 3 << 3 << 0
        << QStringList{"i1=0_44120", "i2=1_44120", "i3=2_44120"};
    QTest::newRow("leaving with nothing read sends nothing") << "reader" << QStringList() << true << 0 << 0 << 0 << 0
                                                             << QStringList();
}

void TestReaderPanelsRules::readPageLog()
{
    QFETCH(QString, user);
    QFETCH(QStringList, pages);
    QFETCH(bool, leave);
    QFETCH(int, uploads);
    QFETCH(int, keys);
    QFETCH(int, values);
    QFETCH(int, count);
    QFETCH(QStringList, uploaded);
    if (!user.isEmpty())
        QVERIFY(signInAs(user, user + QStringLiteral("123")));
    const int before = m_env.site->requestCount(readLogPath);

    VORAReadPageLog log;
    for (const QString &page : pages) {
        const QStringList parts = page.split(QLatin1Char('/'));
        log.addReadPageToList(parts.at(0).toLongLong(), parts.at(1), parts.at(2), QStringLiteral("5302"));
    }
    if (leave)
        log.uploadingReadHistoryInfo(QStringLiteral("5302"));
    QTRY_VERIFY_WITH_TIMEOUT(log.findChildren<VORAUploadReadLogSerVice *>().isEmpty(), 10000);
    QCOMPARE(m_env.site->requestCount(readLogPath) - before, uploads);
    QCOMPARE(log.readRecordKeyList().size(), keys);
    QCOMPARE(log.readRecordValueList().size(), values);
    QCOMPARE(log.readPageCount(), count);
    if (uploads == 0)
        return;

    const QJsonObject sent = lastReadLog(*m_env.site);
    QCOMPARE(sent.value("count").toString(), QString::number(uploaded.size()));
    const QJsonObject records = sent.value("c5302").toObject();
    QStringList got;
    for (auto it = records.begin(); it != records.end(); ++it)
        got << it.key() + QLatin1Char('=') + it.value().toString();
    got.sort();
    uploaded.sort();
    QCOMPARE(got, uploaded);
}

QTEST_MAIN(TestReaderPanelsRules)
#include "tst_readerpanels_rules.moc"
