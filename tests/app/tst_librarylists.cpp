// The bookmarks and recent-reading segments of the bookshelf screen in the
// app's window: a row tap opens the reader at the row's place, the edit mode's
// "删除" takes a row away (the rules: tst_shelflists). Screenshots too.

#include "ReaderTestWindow.h"
#include "../reader/ReaderPanelsTestSupport.h"
#include "net/VORAGetChapterInfoService.h"
#include "store/ReadingPositionRecorder.h"

#include <optional>

namespace {
// Page `pageIndex` of the comic's chapter `chapterIndex`, as the site serves them.
struct Place { VORAComicInfoDTO comic; VORAChapterInfoDTO chapter; VORAPageInfoDTO page; };
std::optional<Place> sitePlace(const QString &comicId, int chapterIndex, int pageIndex)
{
    const std::optional<VORAComicInfoDTO> comic = fetchComic(comicId);
    if (!comic || comic->chapterList.size() <= chapterIndex)
        return std::nullopt;
    Place place{*comic, comic->chapterList.at(chapterIndex), {}};
    VORAGetChapterInfoService pages;
    pages.chapterId = place.chapter.chapterId;
    ServiceWaiter pagesWaiter;
    pages.asynchronousRequestWithDelegate(&pagesWaiter);
    if (!QTest::qWaitFor([&] { return pagesWaiter.done; }, 10000) || !pages.pageList()
        || pages.pageList()->size() <= pageIndex)
        return std::nullopt;
    place.page = pages.pageList()->at(pageIndex);
    return place;
}
} // namespace

class TestLibraryLists : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void rowOpensTheReaderAtItsPlace_data();
    void rowOpensTheReaderAtItsPlace();

private:
    TestHome m_home;
    std::unique_ptr<QuorinSite> m_site;
};

void TestLibraryLists::initTestCase()
{
    m_site = startSite(m_home);
    QVERIFY(m_site);
}

void TestLibraryLists::rowOpensTheReaderAtItsPlace_data()
{
    QTest::addColumn<bool>("bookmarks");
    QTest::newRow("bookmark") << true;
    QTest::newRow("recent reading") << false;
}

void TestLibraryLists::rowOpensTheReaderAtItsPlace()
{
    QFETCH(bool, bookmarks);
    ReaderTestWindow app(QSize(1024, 768));
    QVERIFY(app.started());
    // Two other comics first, then the place to open: the newest, the first row.
    VORADatabaseManager db;
    const auto other = sitePlace(QStringLiteral("10001"), 0, 0);
    const auto another = sitePlace(QStringLiteral("10002"), 0, 5);
    const auto target = sitePlace(QStringLiteral("10007"), 1, 2);
    QVERIFY(other && another && target);
    for (const auto &place : {*other, *another, *target}) {
        if (bookmarks)
            db.addBookmarkWithComic(place.comic, place.chapter, place.page);
        else
            ReadingPositionRecorder::saveReadingPosition(db, place.comic, place.chapter, place.page);
        db.save(); // equal times keep this order
    }
    app.root()->switchView(105);
    QVERIFY(app.click(bookmarks ? QStringLiteral("shelfSegment1") : QStringLiteral("shelfSegment2")));
    QTRY_VERIFY(app.item(QStringLiteral("placeRow2")));
    app.shot(bookmarks ? "bookmarks.png" : "recent-reading.png");

    QVERIFY(app.click(QStringLiteral("placeRow0")));
    QTRY_VERIFY_WITH_TIMEOUT(app.reader() && app.reader()->pageId() == target->page.pageId, 15000);
    QCOMPARE(app.reader()->comicId(), target->comic.comicId);
    QCOMPARE(app.reader()->chapterId(), target->chapter.chapterId);
    app.root()->closeReader();

    // The edit mode's delete takes the row away (what it deletes: tst_shelflists).
    QVERIFY(app.click(QStringLiteral("editButton")));
    QTRY_VERIFY(app.item(QStringLiteral("deleteRow1")));
    QVERIFY(app.click(QStringLiteral("deleteRow1")));
    QTRY_VERIFY(!app.item(QStringLiteral("placeRow2")));
}

QTEST_MAIN(TestLibraryLists)
#include "tst_librarylists.moc"
