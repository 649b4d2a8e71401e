// Unit rules of the local store's small files and lists: search history,
// keyed archives and file names, the recent-reading limit, and the orders of
// the bookshelf, bookmarks and recent-reading screens.

#include "StoreTestData.h"
#include "TestHome.h"

#include "store/BookshelfScreenLists.h"
#include "store/ReadingPositionRecorder.h"
#include "store/VORABookMarkView.h"
#include "store/VORARecendRead.h"
#include "store/VORADatabaseManager.h"
#include "store/VORAHistory.h"
#include "store/VORAPersistenceManager.h"

#include <QCborArray>
#include <QCborMap>
#include <QAbstractItemModelTester>
#include <QFile>
#include <QTest>

using namespace StoreTestData;

class TestShelfLists : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { useTickingStoreClock(); }
    void searchHistoryRule_data();
    void searchHistoryRule();
    void searchHistoryFile();
    void archivePaths_data();
    void archivePaths();
    void recentReadingKeepsThirty();
    void shelfOrderByUpdate();
    void shelfSectionsByFirstLetter();
    void bookmarkOrdersAndRowDeletion();
    void placeScreens();

private:
    TestHome m_home;
};

void TestShelfLists::searchHistoryRule_data()
{
    QTest::addColumn<QStringList>("added");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("six keeps newest five") << QStringList{"a", "b", "c", "d", "e", "f"}
                                           << QStringList{"f", "e", "d", "c", "b"};
    QTest::newRow("repeat moves to front") << QStringList{"a", "b", "c", "a"} << QStringList{"a", "c", "b"};
    QTest::newRow("repeat when full keeps five") << QStringList{"a", "b", "c", "d", "e", "c"}
                                                 << QStringList{"c", "e", "d", "b", "a"};
    QTest::newRow("empty ignored") << QStringList{"a", "", "b", ""} << QStringList{"b", "a"};
    QTest::newRow("case sensitive") << QStringList{"One", "one"} << QStringList{"one", "One"};
    QTest::newRow("spaces kept") << QStringList{"a", " a"} << QStringList{" a", "a"};
}

void TestShelfLists::searchHistoryRule()
{
    QFETCH(QStringList, added);
    QFETCH(QStringList, expected);
    VORAHistory history;
    for (const QString &text : added)
        history.addSearchKey(text);
    QCOMPARE(history.getAllSearchHistory(), expected);
    const VORAHistory reread = VORAHistory::initWithCoder(history.encodeWithCoder());
    QCOMPARE(reread.getAllSearchHistory(), expected);
    history.cleanAllSearchHistory();
    QVERIFY(history.getAllSearchHistory().isEmpty());
}

void TestShelfLists::searchHistoryFile()
{
    VORAPersistenceManager *manager = VORAPersistenceManager::getPersistenceManager();
    QFile::remove(VORAPersistenceManager::searchHistoryFile());
    QVERIFY(manager->loadSearchHistory()->getAllSearchHistory().isEmpty()); // first start

    manager->history()->addSearchKey(QStringLiteral("海贼"));
    manager->history()->addSearchKey(QStringLiteral("火影"));
    manager->saveSearchHistory();
    manager->history()->cleanAllSearchHistory();
    QCOMPARE(manager->loadSearchHistory()->getAllSearchHistory(), (QStringList{"火影", "海贼"}));

    // Hostile files: wrong shapes, too many entries, garbage bytes.
    VORAPersistenceManager::saveObject(QCborMap{{QStringLiteral("historyListArray"),
                                                 QCborArray{1, "a", "", "a", "b", "c", "d", "e", "f"}}},
                                       "History", VORAPersistenceManager::searchHistoryFile());
    QCOMPARE(manager->loadSearchHistory()->getAllSearchHistory(), (QStringList{"a", "b", "c", "d", "e"}));
    VORAPersistenceManager::saveObject(QCborValue(42), "History", VORAPersistenceManager::searchHistoryFile());
    QVERIFY(manager->loadSearchHistory()->getAllSearchHistory().isEmpty());
    {
        QFile file(VORAPersistenceManager::searchHistoryFile());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("\xff\x00garbage", 9);
    }
    QVERIFY(manager->loadSearchHistory()->getAllSearchHistory().isEmpty());
}

void TestShelfLists::archivePaths_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("safe");
    QTest::newRow("plain") << "12345" << true;
    QTest::newRow("slash") << "../etc/passwd" << false;
    QTest::newRow("dots") << ".." << false;
    QTest::newRow("backslash") << "a\\b" << false;
    QTest::newRow("control") << QStringLiteral("a\nb") << false;
    QTest::newRow("empty") << "" << false;
}

void TestShelfLists::archivePaths()
{
    QFETCH(QString, name);
    QFETCH(bool, safe);
    const QString page = VORAPersistenceManager::pageCacheFileWithPageId(name);
    const QString skin = VORAPersistenceManager::photoSkinWithString(name);
    const QString wallpaper = VORAPersistenceManager::themeWallpapers(name);
    QCOMPARE(!page.isEmpty(), safe);
    QCOMPARE(!skin.isEmpty(), safe);
    QCOMPARE(!wallpaper.isEmpty(), safe);
    if (safe) {
        VORAPersistenceManager::saveSkinFile(QCborArray{"red", "blue"}, name);
        QCOMPARE(VORAPersistenceManager::loadSkinWithSkin(name), (QCborArray{"red", "blue"}));
        QVERIFY(VORAPersistenceManager::loadSkinWithSmallSkin(name).isEmpty());
    } else {
        VORAPersistenceManager::saveSkinFile(QCborArray{"red"}, name); // refused quietly
        QVERIFY(VORAPersistenceManager::loadSkinWithSkin(name).isEmpty());
    }
}

void TestShelfLists::recentReadingKeepsThirty()
{
    VORADatabaseManager db;
    for (int i = 1; i <= 30; ++i) {
        ReadingPositionRecorder::saveReadingPosition(db, comic(QString::number(i)), chapter("c", 0), page("p", 0));
    }
    QCOMPARE(db.getRecentReadInfo().size(), 30);
    // Reading a comic already listed updates it: still 30, comic 1 is kept and moves up.
    ReadingPositionRecorder::saveReadingPosition(db, comic("2"), chapter("c2", 3), page("p9", 9));
    QCOMPARE(db.getRecentReadInfo().size(), 30);
    QCOMPARE(db.getRecentReadInfo().first()->comicId(), QStringLiteral("2"));
    QCOMPARE(db.getReadHistoryWithComic("2")->pageId(), QStringLiteral("p9"));

    // The 31st distinct comic evicts the oldest entry (comic 1).
    ReadingPositionRecorder::saveReadingPosition(db, comic("31"), chapter("c", 0), page("p", 0));
    const auto recent = VORADatabaseManager().getRecentReadInfo();
    QCOMPARE(recent.size(), 30);
    QCOMPARE(recent.first()->comicId(), QStringLiteral("31"));
    QVERIFY(!db.getRecentReadInfoWithComic("1"));
    QVERIFY(db.getRecentReadInfoWithComic("3"));
    QVERIFY(db.getReadHistoryWithComic("1")); // reading positions are not limited
}

void TestShelfLists::shelfOrderByUpdate()
{
    QList<VORABookShelfDTO> rows;
    rows << VORABookShelfDTO::fromBookShelf(shelf("plainOld", 100))
         << VORABookShelfDTO::fromBookShelf(shelf("notReadOld", 200, false, true))
         << VORABookShelfDTO::fromBookShelf(shelf("updatedOld", 300, true))
         << VORABookShelfDTO::fromBookShelf(shelf("plainNew", 900))
         << VORABookShelfDTO::fromBookShelf(shelf("updatedNew", 800, true, true))
         << VORABookShelfDTO::fromBookShelf(shelf("notReadNew", 700, false, true));
    QStringList order;
    for (const auto &row : BookshelfScreenLists::sortedByUpdate(rows))
        order << row.comicId;
    QCOMPARE(order, (QStringList{"updatedNew", "updatedOld", "notReadNew", "notReadOld", "plainNew", "plainOld"}));
    QCOMPARE(rows.first().latestChapterId, QStringLiteral("plainOld9"));
}

void TestShelfLists::shelfSectionsByFirstLetter()
{
    QList<VORABookShelfDTO> rows;
    for (const char *id : {"b1", "a1", "z1", "b2", "91", "中1"})
        rows << VORABookShelfDTO::fromBookShelf(shelf(id, 1));
    const auto sections = BookshelfScreenLists::sectionsByFirstLetter(rows);
    QStringList titles;
    for (const auto &section : sections)
        titles << section.first + QString::number(section.second.size());
    QCOMPARE(titles, (QStringList{"A1", "B2", "Z1", "#2"}));
    QCOMPARE(sections.at(1).second.at(0).comicId, QStringLiteral("b1"));
    QVERIFY(BookshelfScreenLists::sectionsByFirstLetter(rows, {}).isEmpty());
}

void TestShelfLists::bookmarkOrdersAndRowDeletion()
{
    VORADatabaseManager db;
    for (const auto &bookmark : db.getBookmark())
        db.deleteBookmark(bookmark);
    db.addBookmarkWithComic(comic("1"), chapter("10", 0), page("first", 0));
    db.addBookmarkWithComic(comic("2"), chapter("20", 0), page("other", 0));
    db.addBookmarkWithComic(comic("1"), chapter("11", 1), page("newest", 4));
    db.save();

    const auto rows = BookshelfScreenLists::bookmarkRows(db);
    QStringList newest, oldest;
    for (const auto &row : BookshelfScreenLists::sortedBookmarks(rows, true))
        newest << row.pageId;
    for (const auto &row : BookshelfScreenLists::sortedBookmarks(rows, false))
        oldest << row.pageId;
    QCOMPARE(newest, (QStringList{"newest", "other", "first"}));
    QCOMPARE(oldest, (QStringList{"first", "other", "newest"}));
    QCOMPARE(rows.first().coverUrl, QStringLiteral("http://img.example/1.jpg"));

    // Deleting the row of comic 1's older bookmark deletes comic 1's newest one.
    VORABookMarkDTO olderRow;
    for (const auto &row : rows) {
        if (row.pageId == QLatin1String("first"))
            olderRow = row;
    }
    BookshelfScreenLists::deleteBookmarkRow(db, olderRow.comicId);
    QStringList left;
    for (const auto &row : BookshelfScreenLists::bookmarkRows(db))
        left << row.pageId;
    QCOMPARE(left, (QStringList{"other", "first"}));

    ReadingPositionRecorder::saveReadingPosition(db, comic("r1"), chapter("c", 0), page("p", 0));
    ReadingPositionRecorder::saveReadingPosition(db, comic("r2"), chapter("c", 0), page("p", 0));
    const auto recent = BookshelfScreenLists::recentReadRows(db);
    // Other tests' entries are older; the two read here come last / first.
    const auto oldestFirst = BookshelfScreenLists::sortedRecentRead(recent, false);
    QCOMPARE(oldestFirst.at(oldestFirst.size() - 2).comicId, QStringLiteral("r1"));
    QCOMPARE(oldestFirst.last().comicId, QStringLiteral("r2"));
    QCOMPARE(BookshelfScreenLists::sortedRecentRead(recent, true).first().comicId, QStringLiteral("r2"));
}

void TestShelfLists::placeScreens()
{
    VORADatabaseManager &db = *VORAPersistenceManager::getPersistenceManager()->databaseManager();
    for (const auto &bookmark : db.getBookmark())
        db.deleteBookmark(bookmark);
    const QDateTime marked(QDate(2024, 5, 1), QTime(9, 5), Qt::LocalTime);
    db.addBookmarkWithComic(comic("7"), chapter("70", 2), page("p3", 2))->setAddBookmarkTime(marked);
    db.addBookmarkWithComic(comic("8"), chapter("80", 0), page("p1", 0))->setAddBookmarkTime(marked.addDays(1));
    db.save();

    VORABookMarkView marks; // the rows as QML reads them, in both orders
    QAbstractItemModelTester marksTester(marks.rows(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    marks.updateView();
    QCOMPARE(marks.rows()->index(0).data(ReadingPlaceListModel::ComicIdRole).toString(), QStringLiteral("8"));
    marks.toggleOrder();
    const QModelIndex oldest = marks.rows()->index(0);
    QCOMPARE(oldest.data(ReadingPlaceListModel::ComicIdRole).toString(), QStringLiteral("7"));
    QCOMPARE(oldest.data(ReadingPlaceListModel::ChapterNameRole).toString(), QStringLiteral("第3话"));
    QCOMPARE(oldest.data(ReadingPlaceListModel::PageNumberRole).toInt(), 3);
    QCOMPARE(oldest.data(ReadingPlaceListModel::TimeTextRole).toString(), QStringLiteral("2024-05-01 09:05"));

    // Outside edit mode nothing is deleted; the last row gone ends the edit mode.
    marks.deleteRow(0);
    QCOMPARE(marks.rows()->count(), 2);
    marks.setEditing(true);
    marks.deleteRow(1);
    marks.deleteRow(0);
    QVERIFY(!marks.isEditing());
    QVERIFY(BookshelfScreenLists::bookmarkRows(db).isEmpty());

    // Deleting a recent-reading row deletes that comic's entry only.
    ReadingPositionRecorder::saveReadingPosition(db, comic("s1"), chapter("c", 0), page("p", 0));
    ReadingPositionRecorder::saveReadingPosition(db, comic("s2"), chapter("c", 0), page("p", 0));
    VORARecendRead recent;
    QAbstractItemModelTester recentTester(recent.rows(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    recent.updateView();
    recent.setEditing(true);
    recent.deleteRow(0);
    QVERIFY(!db.getRecentReadInfoWithComic("s2"));
    QVERIFY(db.getRecentReadInfoWithComic("s1"));
}

QTEST_GUILESS_MAIN(TestShelfLists)
#include "tst_shelflists.moc"
