// The bookshelf screen's wiring in a real offscreen window against the
// in-process reference site: the synchronise button through its confirmation
// (signed out: the sign-in panel; signed in: the counted message), the shelf
// in both orders with its letter sections, a tap to the detail page,
// "continue" to the reading position, and a removal in edit mode reaching the
// site. The order rules are tst_shelflists', the exchanges tst_bookshelfsite's.
// With QUORIN_WRITE_SCREENSHOTS=1 both orders are written to docs/screenshots.

#include "AppTestWindow.h"
#include "../catalogue/CatalogueTestSupport.h"
#include "catalogue/VORAComicHomePageView.h"
#include "core/VORAUtility.h"
#include "net/VORABookShelfInfoSynchronizationService.h"
#include "net/VORAChapterInfoDTO.h"
#include "net/VORAComicInfoDTO.h"
#include "net/VORAPageInfoDTO.h"
#include "store/VORABoolshelf.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QUrlQuery>

namespace {

VORABookShelfManager *shelfManager()
{
    return VORABookShelfManager::sharedManager();
}

// The last shelf exchange the site received, decoded.
QString lastShelfRecords(QuorinSite &site)
{
    QByteArray body = site.lastRequest(QStringLiteral("ios/pad/fav.php")).body;
    body.replace('+', "%20");
    const QString data = QUrlQuery(QString::fromLatin1(body)).queryItemValue(QStringLiteral("data"), QUrl::FullyDecoded);
    return QString::fromUtf8(QByteArray::fromBase64(data.toLatin1()));
}

} // namespace

class TestBookshelfScreen : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void signedOutSynchronisationAsksToSignIn();
    void synchronisationFillsTheShelfInBothOrders();
    void tapOpensTheDetailAndContinueTheReader();
    void editModeRemovesAndTellsTheSite();

private:
    TestHome m_home;
    std::unique_ptr<QuorinSite> m_site;
};

void TestBookshelfScreen::initTestCase()
{
    m_site = startSite(m_home);
    QVERIFY(m_site);
}

void TestBookshelfScreen::signedOutSynchronisationAsksToSignIn()
{
    AppTestWindow app(QSize(800, 600));
    QVERIFY(app.started());
    QVERIFY(signInAs(QString(), QString()));
    QTRY_VERIFY(VORAUtility::isExistenceNetwork());
    QVERIFY(app.click(QStringLiteral("button105")));
    QTRY_VERIFY(app.item(QStringLiteral("shelfEmpty")));
    QVERIFY(app.click(QStringLiteral("shelfSync")));
    QTRY_COMPARE(app.layer->alertMessages().value(0), VORABookShelfManager::confirmationMessage(false));
    VORAAppGlobalData::shareAppGlobalData()->setUserViewJump(0, 0); // a record's initial jump
    QVERIFY(app.click(QStringLiteral("alertButton0"))); // "确定"
    QTRY_VERIFY(app.root()->userViewOpen());
    // After the sign-in the panel goes back to the shelf, not on to a top-up.
    QCOMPARE(VORAAppGlobalData::shareAppGlobalData()->user()->userViewJumpIsTopupType(), 2);
}

void TestBookshelfScreen::synchronisationFillsTheShelfInBothOrders()
{
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    // Another device put five comics on the site shelf, one long ago (it comes
    // with the update mark); a local comic named by a digit stays.
    VORABookShelfInfoSynchronizationService other;
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    other.comicIdsDate = QStringLiteral("10001|add|1||10002|add|%1||10003|add|%1||10004|add|%1||10005|add|%1||").arg(now);
    other.synchronousRequest();
    QVERIFY(!other.error());
    VORABookShelf local;
    local.comicId = QStringLiteral("99001");
    local.comicName = QStringLiteral("1001夜");
    local.nameFirstletter = QStringLiteral("1");
    local.updateTime = QDateTime::fromSecsSinceEpoch(now - 86400);
    local.adddateTime = local.updateTime;
    shelfManager()->addBookshelf(local);

    AppTestWindow app(QSize(1366, 768));
    QVERIFY(app.started());
    QVERIFY(app.click(QStringLiteral("button105")));
    VORABoolshelf *shelf = app.root()->bookshelfView();
    QVERIFY(shelf);
    QAbstractItemModelTester tester(shelf->shelfList(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    QTRY_VERIFY(app.item(QStringLiteral("shelfComic99001")));

    QVERIFY(app.click(QStringLiteral("shelfSync")));
    QTRY_COMPARE(app.layer->alertMessages().value(0), VORABookShelfManager::confirmationMessage(true));
    QVERIFY(app.click(QStringLiteral("alertButton0")));
    QVERIFY(!shelf->synchronizeEnabled()); // until the answer
    QTRY_COMPARE_WITH_TIMEOUT(app.layer->alertMessages().value(0), QStringLiteral("已从quorin网站同步5本漫画到本地"), 10000);
    QVERIFY(shelf->synchronizeEnabled());
    QVERIFY(app.click(QStringLiteral("alertButton0")));

    // By update the comic with the mark comes first, and shows it.
    QTRY_VERIFY(app.item(QStringLiteral("shelfComic10001")));
    QQuickItem *first = app.item(QStringLiteral("shelfComic10001"));
    app.centreOf(first); // the flow laid out
    for (QQuickItem *card : app.items(QStringLiteral("shelfComic99001")) + app.items(QStringLiteral("shelfComic10002")))
        QVERIFY(card->y() > first->y() || card->x() > first->x());
    QVERIFY(!app.items(QStringLiteral("shelfUpdateMark"), first).isEmpty());
    QVERIFY(app.items(QStringLiteral("shelfSection#")).isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(!app.layer->noticeVisible(), 10000); // the sign-in notice, off the pictures
    app.shot("bookshelf-update.png");

    // By letter: one header a section, the digit's catch-all section last.
    QVERIFY(app.click(QStringLiteral("shelfOrderLetter")));
    QCOMPARE(shelf->sortMode(), int(VORABoolshelf::ByFirstLetter));
    const QStringList titles = shelf->shelfList()->sectionTitles();
    QCOMPARE(titles.last(), QStringLiteral("#"));
    for (const QString &title : titles)
        QTRY_COMPARE(app.items(QStringLiteral("shelfSection") + title).size(), 1);
    QVERIFY(app.centreOf(app.item(QStringLiteral("shelfSection#"))).y()
            < app.centreOf(app.item(QStringLiteral("shelfComic99001"))).y());
    app.shot("bookshelf-letters.png");
    QVERIFY(app.click(QStringLiteral("shelfOrderUpdate")));
}

void TestBookshelfScreen::tapOpensTheDetailAndContinueTheReader()
{
    VORAComicInfoDTO comic;
    comic.comicId = QStringLiteral("10002");
    VORAChapterInfoDTO chapter;
    chapter.chapterId = QStringLiteral("100020002");
    VORAPageInfoDTO page;
    page.pageId = QStringLiteral("100020002003");
    VORADatabaseManager().addReadHistoryWithComic(comic, chapter, page);

    AppTestWindow app(QSize(800, 600));
    QVERIFY(app.started());
    QVERIFY(app.click(QStringLiteral("button105")));
    QTRY_VERIFY(app.item(QStringLiteral("shelfComic10002")));
    QSignalSpy read(app.root()->bookshelfView(), &VORABoolshelf::readRequested);
    QVERIFY(clickItem(app.window(), app.items(QStringLiteral("shelfContinue"), app.item(QStringLiteral("shelfComic10002"))).value(0)));
    QTRY_COMPARE(read.count(), 1);
    QCOMPARE(read.first(), (QVariantList{comic.comicId, chapter.chapterId, page.pageId}));
    QVERIFY(app.root()->readHomePageViewController());
    app.root()->closeReader();

    QTRY_VERIFY(app.item(QStringLiteral("shelfComic10003")));
    QVERIFY(app.click(QStringLiteral("shelfComic10003")));
    QTRY_VERIFY(app.root()->hasComicDetail());
    QCOMPARE(app.root()->comicHomePageView()->comicId(), QStringLiteral("10003"));
}

void TestBookshelfScreen::editModeRemovesAndTellsTheSite()
{
    AppTestWindow app(QSize(800, 600));
    QVERIFY(app.started());
    QVERIFY(app.click(QStringLiteral("button105")));
    QTRY_VERIFY(app.item(QStringLiteral("shelfComic10004")));
    QVERIFY(app.click(QStringLiteral("shelfEdit")));
    QVERIFY(app.root()->bookshelfView()->isEditing());
    const int exchanges = m_site->requestCount(QStringLiteral("ios/pad/fav.php"));
    QVERIFY(clickItem(app.window(), app.items(QStringLiteral("shelfDelete"), app.item(QStringLiteral("shelfComic10004"))).value(0)));
    QVERIFY(!shelfManager()->getBookshelfWithComicId(QStringLiteral("10004")));
    QCOMPARE(app.layer->loadingViews().value(0).toMap().value(QStringLiteral("text")).toString(), VORABoolshelf::removingText());
    QTRY_VERIFY(app.layer->loadingViews().isEmpty());
    QCOMPARE(m_site->requestCount(QStringLiteral("ios/pad/fav.php")), exchanges + 1);
    QVERIFY(lastShelfRecords(*m_site).startsWith(QStringLiteral("10004|delete|")));
    QTRY_VERIFY(app.items(QStringLiteral("shelfComic10004")).isEmpty());
}

QTEST_MAIN(TestBookshelfScreen)
#include "tst_bookshelfscreen.moc"
