// Tucao editing against the reference site, signed in as a demo reader: a
// tucao placed, published, fetched back at its page pixels, moved and
// deleted; the messages of failed transports; and answers that are not what
// they should be (the site's own refusals are tests/site's).

#include "CatalogueTestSupport.h"
#include "TucaoTestSupport.h"
#include "net/ASIHTTPRequest.h"
#include "net/VORAGetChapterInfoService.h"
#include "net/VORAGetTucaoService.h"
#include "tucao/VORATuCaoEditManager.h"
#include "tucao/VORATucaoGeometry.h"
#include "tucao/VORATucaoPublisher.h"

#include <QDateTime>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>
#include <QUrlQuery>

namespace {
bool run(VORAHttpBaseWebService &service)
{
    ServiceWaiter waiter;
    service.asynchronousRequestWithDelegate(&waiter);
    return QTest::qWaitFor([&]() { return waiter.done; }, 10000) && !waiter.failed;
}

QString uniqueText(const char *what)
{
    return QStringLiteral("%1 %2").arg(QString::fromUtf8(what)).arg(QDateTime::currentMSecsSinceEpoch());
}
} // namespace

class TestTucaoSite : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void publishMoveDelete();
    void transportFailures_data();
    void transportFailures();
    void oddAnswers_data();
    void oddAnswers();

private:
    // The page's tucao as the page loader fetches them.
    std::optional<QList<VORATucao>> fetch();
    std::optional<VORATucao> fetchOne(const QString &tucaoId);
    // A tucao of the signed-in user on the page, published directly.
    VORATucao publishDirectly(const QString &text);
    void wire(VORATucaoPublisher &publisher, VORATuCaoEditManager &edit);

    CatalogueTestEnvironment m_env;
    QString m_comicId;
    VORAPageInfoDTO m_page;
    VORATucaoPagePlacement m_placement;
};

void TestTucaoSite::initTestCase()
{
    QVERIFY(m_env.start());
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    QCOMPARE(VORAAppGlobalData::shareAppGlobalData()->user()->userId(), QStringLiteral("100001"));

    // The first page of the first (free) chapter of the first comic.
    m_comicId = QStringLiteral("10001");
    const QString chapterId = QStringLiteral("40001");
    VORAGetChapterInfoService chapter;
    chapter.chapterId = chapterId;
    QVERIFY(run(chapter));
    QVERIFY(chapter.pageList() && !chapter.pageList()->isEmpty());
    m_page = chapter.pageList()->first();
    QVERIFY(m_page.width > 0 && m_page.height > 0);

    // Landscape reading: the page fitted to the 1004-point page view, scrolled
    // down by 300 points.
    m_placement.imageSize = QSizeF(m_page.width, m_page.height);
    m_placement.imageViewSize = QSizeF(1004, VORATucaoGeometry::fittedHeight(m_placement.imageSize, 1004));
    m_placement.contentOffset = QPointF(0, 300);
}

void TestTucaoSite::cleanup()
{
    m_env.site->faults().clear();
    m_env.pointAtSite();
    ASIHTTPRequest::setDefaultTimeOutSeconds(15);
}

std::optional<QList<VORATucao>> TestTucaoSite::fetch()
{
    VORAGetTucaoService get;
    get.pageId = m_page.pageId;
    get.lastId = QStringLiteral("100000000");
    get.pageSize = 200;
    get.isNext = true;
    if (!run(get))
        return std::nullopt;
    return get.tucaoList();
}

std::optional<VORATucao> TestTucaoSite::fetchOne(const QString &tucaoId)
{
    const QList<VORATucao> list = fetch().value_or(QList<VORATucao>());
    for (const VORATucao &t : list) {
        if (t.tucaoId == tucaoId)
            return t;
    }
    return std::nullopt;
}

VORATucao TestTucaoSite::publishDirectly(const QString &text)
{
    VORATucaoPublisher publisher;
    publisher.setPagePlacement(m_placement);
    QSignalSpy published(&publisher, &VORATucaoPublisher::published);
    publisher.publishTucao(makeDto(100, 50, 120, 40, text), m_page.pageId);
    if (!QTest::qWaitFor([&]() { return !published.isEmpty(); }, 10000))
        return VORATucao();
    return published.first().first().value<VORATucao>();
}

void TestTucaoSite::wire(VORATucaoPublisher &publisher, VORATuCaoEditManager &edit)
{
    connect(&edit, &VORATuCaoEditManager::publishTucaoRequested, &publisher,
            [&](const VORATucaoDTO &dto) { publisher.publishTucao(dto, m_page.pageId); });
    connect(&edit, &VORATuCaoEditManager::confirmEditRequested, &publisher,
            [&](const VORATucaoDTO &dto) { publisher.confirmEdit(dto); });
    connect(&edit, &VORATuCaoEditManager::deleteTucaoRequested, &publisher,
            [&](const VORATucaoDTO &dto) { publisher.deleteTucao(dto, m_comicId); });
    connect(&publisher, &VORATucaoPublisher::closeEditRequested, &edit, &VORATuCaoEditManager::hideEditTuCaoView);
}

// Where the page's tucao show, and the reader's wiring of these signals, are
// the rules' and the tucao window suite's: here what goes to the site and back.
void TestTucaoSite::publishMoveDelete()
{
    VORATucaoPublisher publisher;
    publisher.setPagePlacement(m_placement);

    // Placed where the page was tapped and published (from the write button
    // to the tap is the tucao window suite's).
    const QString text = uniqueText("这一格 & \"笑\"死我了");
    VORATuCaoEditManager placing(text, QPointF(400, 200), m_placement, 1);
    wire(publisher, placing);
    QSignalSpy published(&publisher, &VORATucaoPublisher::published);
    const VORATucaoDTO expected = VORATucaoGeometry::getNewTucaoDTO(placing.transRectFromCurrentView(), m_placement);
    QVERIFY(expected.y > 300); // the scroll counts
    const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);
    placing.confirmPubTuCao();
    QTRY_COMPARE_WITH_TIMEOUT(published.count(), 1, 10000);
    QTRY_VERIFY(placing.isRemoved());
    const VORATucao mine = published.first().first().value<VORATucao>();
    QVERIFY(!mine.tucaoId.isEmpty());
    QCOMPARE(rectOf(mine), rectOf(expected));

    // Sent with the time of sending.
    const QUrlQuery form(QString::fromUtf8(m_env.site->lastRequest(addPath).body));
    const QDateTime sent = QDateTime::fromSecsSinceEpoch(form.queryItemValue("create_time").toLongLong(), Qt::UTC);
    QVERIFY(sent >= before && sent <= QDateTime::currentDateTimeUtc().addSecs(1));

    // Fetched back where it was put, in page pixels, as the reader's own.
    std::optional<VORATucao> fetched = fetchOne(mine.tucaoId);
    QVERIFY(fetched);
    QCOMPARE(rectOf(*fetched), rectOf(expected));
    QCOMPARE(fetched->content, text);
    QCOMPARE(fetched->userId, QStringLiteral("100001"));

    // Moved and widened.
    VORATuCaoEditManager moving(*fetched, m_placement, 1);
    wire(publisher, moving);
    QSignalSpy updated(&publisher, &VORATucaoPublisher::updated);
    moving.moveBy(30, 40);
    moving.resizeBy(10, 0);
    const VORATucaoDTO moved = VORATucaoGeometry::getNewTucaoDTO(moving.transRectFromCurrentView(), m_placement);
    QVERIFY(rectOf(moved) != rectOf(expected));
    moving.confirmPubTuCao();
    QTRY_COMPARE_WITH_TIMEOUT(updated.count(), 1, 10000);
    QTRY_VERIFY(moving.isRemoved());
    QCOMPARE(rectOf(updated.first().first().value<VORATucao>()), rectOf(moved));
    fetched = fetchOne(mine.tucaoId);
    QVERIFY(fetched);
    QCOMPARE(rectOf(*fetched), rectOf(moved));
    QCOMPARE(fetched->content, text); // an edit carries no text

    // Delete: off the page before the answer, gone from the site after it.
    VORATuCaoEditManager deleting(*fetched, m_placement, 1);
    wire(publisher, deleting);
    QSignalSpy removedFromPage(&publisher, &VORATucaoPublisher::removedFromPage);
    QSignalSpy deleted(&publisher, &VORATucaoPublisher::deleted);
    deleting.deleteTuCaoView();
    QCOMPARE(removedFromPage.count(), 1);
    QVERIFY(deleting.menuExpanded()); // open until the answer
    QTRY_COMPARE_WITH_TIMEOUT(deleted.count(), 1, 10000);
    QTRY_VERIFY(deleting.isRemoved());
    QVERIFY(fetch());
    QVERIFY(!fetchOne(mine.tucaoId));
    QCOMPARE(QUrlQuery(QString::fromLatin1(m_env.site->lastRequest(deletePath).query)).queryItemValue("comic_id"),
             m_comicId);
}

void TestTucaoSite::transportFailures_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("stalled");
    QTest::addColumn<QString>("message");
    const QString add = QStringLiteral("吐槽发布失败，请检查网络是否通畅!");
    const QString edit = QStringLiteral("吐槽更新失败，请检查网络是否通畅");
    const QString del = QStringLiteral("吐槽删除失败，请检查网络是否通畅");
    QTest::newRow("publish, site stopped") << "add" << false << add;
    QTest::newRow("edit, site stalled") << "edit" << true << edit;
    QTest::newRow("delete, site stopped") << "delete" << false << del;
}

void TestTucaoSite::transportFailures()
{
    QFETCH(QString, kind);
    QFETCH(bool, stalled);
    QFETCH(QString, message);

    VORATucao mine;
    if (kind != QLatin1String("add")) {
        mine = publishDirectly(uniqueText("to fail"));
        QVERIFY(!mine.tucaoId.isEmpty());
    }

    const QString path = kind == QLatin1String("add") ? addPath : kind == QLatin1String("edit") ? editPath : deletePath;
    QTcpServer closed;
    if (stalled) {
        ASIHTTPRequest::setDefaultTimeOutSeconds(1);
        m_env.site->faults().setStall(path);
    } else {
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const quint16 port = closed.serverPort();
        closed.close();
        qputenv("QUORIN_API_BASE", QStringLiteral("http://127.0.0.1:%1/").arg(port).toUtf8());
    }

    VORATucaoPublisher publisher;
    publisher.setPagePlacement(m_placement);
    std::unique_ptr<VORATuCaoEditManager> edit =
        kind == QLatin1String("add")
            ? std::make_unique<VORATuCaoEditManager>(uniqueText("never sent"), QPointF(300, 300), m_placement, 1)
            : std::make_unique<VORATuCaoEditManager>(mine, m_placement, 1);
    wire(publisher, *edit);
    QSignalSpy closeEdit(&publisher, &VORATucaoPublisher::closeEditRequested);
    QSignalSpy removedFromPage(&publisher, &VORATucaoPublisher::removedFromPage);
    QSignalSpy published(&publisher, &VORATucaoPublisher::published);
    QSignalSpy updated(&publisher, &VORATucaoPublisher::updated);
    QSignalSpy deleted(&publisher, &VORATucaoPublisher::deleted);
    NotificationRecorder panels(textPanelName());

    if (kind == QLatin1String("delete"))
        edit->deleteTuCaoView();
    else
        edit->confirmPubTuCao();
    QTRY_COMPARE_WITH_TIMEOUT(panels.texts(), QStringList{message}, 15000);
    QVERIFY(!publisher.isSending());
    // The edit panel stays open for another try.
    QVERIFY(closeEdit.isEmpty());
    QVERIFY(edit->menuExpanded());
    QCOMPARE(published.count() + updated.count() + deleted.count(), 0);
    QCOMPARE(removedFromPage.count(), kind == QLatin1String("delete") ? 1 : 0);

    // Once the site answers again, the same panel gets through.
    cleanup();
    if (kind == QLatin1String("delete"))
        edit->deleteTuCaoView();
    else
        edit->confirmPubTuCao();
    QTRY_COMPARE_WITH_TIMEOUT(closeEdit.count(), 1, 10000);
    QCOMPARE(published.count() + updated.count() + deleted.count(), 1);
    QTRY_VERIFY(edit->isRemoved());
}

void TestTucaoSite::oddAnswers_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("notice");
    QTest::addColumn<bool>("publishes");

    QTest::newRow("tucao_id as a number") << QByteArray(R"({"code":1,"message":"吐槽发布成功","tucao_id":123456})")
                                          << "吐槽发布成功!" << true;
    QTest::newRow("tucao_id null") << QByteArray(R"({"code":1,"tucao_id":null})") << "吐槽发布成功!" << true;
    QTest::newRow("refusal passed through") << QByteArray(R"({"code":0,"message":"服务器维护中"})") << "服务器维护中" << false;
    QTest::newRow("not an object") << QByteArray("[1,2]") << "" << false;
    QTest::newRow("cut short") << QByteArray(R"({"code":1,"mess)") << "" << false;
}

void TestTucaoSite::oddAnswers()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, notice);
    QFETCH(bool, publishes);

    m_env.site->faults().setMalformed(addPath, body);

    VORATucaoPublisher publisher;
    publisher.setPagePlacement(m_placement);
    QSignalSpy notices(&publisher, &VORATucaoPublisher::noticeShown);
    QSignalSpy closeEdit(&publisher, &VORATucaoPublisher::closeEditRequested);
    QSignalSpy published(&publisher, &VORATucaoPublisher::published);
    const VORATucaoDTO dto = makeDto(20, 20, 60, 30, uniqueText("odd"));
    QVERIFY(publisher.publishTucao(dto, m_page.pageId));
    QVERIFY(!publisher.publishTucao(dto, m_page.pageId)); // one at a time
    QTRY_COMPARE_WITH_TIMEOUT(closeEdit.count(), 1, 10000);
    QVERIFY(m_env.site->requestCount(addPath) > 0);
    QCOMPARE(notices.isEmpty() ? QString() : notices.last().first().toString(), notice);
    QCOMPARE(published.count(), publishes ? 1 : 0);
    if (!publishes)
        return;

    // Published without a usable id: on the page, but it can be neither moved
    // nor deleted, and nothing with a made-up id is sent.
    const VORATucao kept = published.first().first().value<VORATucao>();
    QVERIFY(kept.tucaoId.isEmpty());
    QCOMPARE(kept.content, dto.content);
    const int edits = m_env.site->requestCount(editPath);
    const int deletes = m_env.site->requestCount(deletePath);
    VORATucaoDTO again = publisher.tucaoDTO();
    QVERIFY(!publisher.confirmEdit(again));
    QCOMPARE(notices.last().first().toString(), QStringLiteral("吐槽不存在"));
    again.tucaoId = QStringLiteral("1&x=5");
    QVERIFY(!publisher.confirmEdit(again));
    again.tucaoId = QStringLiteral("../x");
    QVERIFY(!publisher.deleteTucao(again, m_comicId));
    again.tucaoId = QStringLiteral("12");
    QVERIFY(!publisher.deleteTucao(again, QStringLiteral("10001/../1")));
    QCOMPARE(m_env.site->requestCount(editPath), edits);
    QCOMPARE(m_env.site->requestCount(deletePath), deletes);
}

QTEST_MAIN(TestTucaoSite)
#include "tst_tucaosite.moc"
