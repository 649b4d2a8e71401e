// The store's operations against real SQLite files in a temporary app home:
// save behaviour of every operation, live records, named-query edge cases,
// damaged files and schema migration. The orders of the bookmark and
// recent-reading lists are tst_shelflists'.

#include "StoreTestData.h"
#include "TestHome.h"

#include "store/SqliteDatabase.h"
#include "store/SqliteStatement.h"
#include "store/StoreCoordinator.h"
#include "store/StoreModel.h"
#include "store/VORADatabaseManager.h"
#include "store/VORAPersistenceManager.h"

#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QTest>

#include <memory>

using namespace StoreTestData;

namespace {

QMutex g_logMutex;
QStringList g_storeWarnings;
QtMessageHandler g_previousHandler = nullptr;

void captureStoreLog(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (context.category && QByteArray(context.category) == "quorin.store" && type == QtWarningMsg) {
        QMutexLocker locker(&g_logMutex);
        g_storeWarnings.append(message);
    }
    if (g_previousHandler)
        g_previousHandler(type, context, message);
}

qint64 rowCount(const QString &path, const QString &table)
{
    SqliteDatabase db;
    if (!db.open(path))
        return -1;
    SqliteStatement count = db.prepare(QStringLiteral("SELECT count(*) FROM ") + table);
    if (count.step() != SqliteStatement::Row)
        return -1;
    return count.columnInt64(0);
}

} // namespace

class TestDatabaseManager : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        g_previousHandler = qInstallMessageHandler(captureStoreLog);
        useTickingStoreClock();
    }
    void init()
    {
        m_home = std::make_unique<TestHome>();
        QMutexLocker locker(&g_logMutex);
        g_storeWarnings.clear();
    }
    void cleanup() { m_home.reset(); }

    void bookshelfSaveRules();
    void liveRecordsAndPendingChanges();
    void bookmarksAndReadingPosition();
    void downloadComicCopies();
    void downloadChapters();
    void chapterProgress_data();
    void chapterProgress();
    void hostileIdentifiers_data();
    void hostileIdentifiers();
    void damagedStoreFile_data();
    void damagedStoreFile();
    void olderSchemaIsMigrated();
    void failedMigrationRollsBackAndSetsFileAside();

private:
    std::unique_ptr<TestHome> m_home;
};

void TestDatabaseManager::bookshelfSaveRules()
{
    VORADatabaseManager db;
    db.addBookshelfWithBookshelfList({});
    QVERIFY(db.getAllBookshelf().isEmpty());

    // No duplicate check: the same comic twice gives two records.
    db.addBookshelfWithBookshelfList({shelf("7", 100), shelf("7", 200), shelf("8", 300)});
    QCOMPARE(db.getAllBookshelf().size(), 3);
    QCOMPARE(db.getBookshelfWithComicIdList({"7"}).size(), 2);
    QVERIFY(!db.getBookshelfWithComicId("nope"));

    // Newest updateTime first.
    QStringList order;
    for (const auto &record : db.getAllBookshelf())
        order << QString::number(record->updateTime().toSecsSinceEpoch());
    QCOMPARE(order, (QStringList{"300", "200", "100"}));

    // Updating a comic that is not on the shelf inserts nothing; a known one
    // is changed, visible to another instance.
    VORABookShelf changed = shelf("8", 999, true, true);
    changed.comicName = QStringLiteral("改名");
    db.updateBookshelfWithBookshelfList({shelf("absent", 5), changed});
    VORADatabaseManager other;
    QCOMPARE(other.getAllBookshelf().size(), 3);
    QVERIFY(!other.getBookshelfWithComicId("absent"));
    const BookshelfPtr stored = other.getBookshelfWithComicId("8");
    QVERIFY(stored);
    QCOMPARE(stored->comicName(), QStringLiteral("改名"));
    QVERIFY(stored->isHasUpdate());

    // deleteBookshelf removes one record of the comic per call.
    other.deleteBookshelf(QStringLiteral("7"));
    QCOMPARE(db.getBookshelfWithComicIdList({"7"}).size(), 1);
    other.deleteBookshelf(QStringLiteral("not-there"));
    QCOMPARE(db.getAllBookshelf().size(), 2);
}

void TestDatabaseManager::liveRecordsAndPendingChanges()
{
    VORADatabaseManager db;
    db.addBookshelfWithBookshelfList({shelf("1", 100)});
    const BookshelfPtr first = db.getBookshelfWithComicId("1");
    QVERIFY(first);
    // One object per row within an instance.
    QCOMPARE(db.getAllBookshelf().first().get(), first.get());

    // A changed field is written by the next save of the instance, whatever
    // operation makes it: here the save of an empty chapter list.
    first->setComicName(QStringLiteral("新名字"));
    QVERIFY(db.hasChanges());
    QCOMPARE(VORADatabaseManager().getBookshelfWithComicId("1")->comicName(), QStringLiteral("书1"));
    db.addDownlaodChapterList({});
    QVERIFY(!db.hasChanges());
    QCOMPARE(VORADatabaseManager().getBookshelfWithComicId("1")->comicName(), QStringLiteral("新名字"));

    // faultWithObject drops unsaved values and reads what another instance saved.
    {
        VORADatabaseManager other;
        other.getBookshelfWithComicId("1")->setCoverUrl(QStringLiteral("http://other/cover"));
        other.save();
    }
    first->setComicName(QStringLiteral("不会保存"));
    QCOMPARE(first->coverUrl(), QStringLiteral("http://img.example/c1"));
    db.faultWithObject(first);
    QCOMPARE(first->comicName(), QStringLiteral("新名字"));
    QCOMPARE(first->coverUrl(), QStringLiteral("http://other/cover"));
    QVERIFY(!db.hasChanges());

    // A record changed after its instance is gone is simply not written.
    BookshelfPtr orphan;
    {
        VORADatabaseManager shortLived;
        orphan = shortLived.getBookshelfWithComicId("1");
    }
    orphan->setComicName(QStringLiteral("孤儿"));
    QCOMPARE(VORADatabaseManager().getBookshelfWithComicId("1")->comicName(), QStringLiteral("新名字"));
}

void TestDatabaseManager::bookmarksAndReadingPosition()
{
    {
        VORADatabaseManager db;
        db.addBookmarkWithComic(comic("5"), chapter("50", 2), page("500", 7));
        // Visible in its own instance before any save, not in another one.
        QCOMPARE(db.getBookmarkWithComic("5").size(), 1);
        QVERIFY(VORADatabaseManager().getBookmark().isEmpty());
    }
    // Never saved: gone at the next start.
    VORADatabaseManager db;
    QVERIFY(db.getBookmark().isEmpty());

    db.addBookmarkWithComic(comic("5"), chapter("50", 0), page("501", 0));
    db.addBookmarkWithComic(comic("6"), chapter("60", 0), page("601", 0));
    const BookmarkPtr newest = db.addBookmarkWithComic(comic("5"), chapter("51", 1), page("511", 3));
    db.save();
    VORADatabaseManager other;
    QCOMPARE(other.getBookmark().size(), 3);
    QCOMPARE(other.getBookmarkWithComic("5").size(), 2);
    // Deleting through another instance's record deletes the same row.
    db.deleteBookmark(other.getBookmarkWithComic("5").first());
    QCOMPARE(VORADatabaseManager().getBookmarkWithComic("5").size(), 1);
    QVERIFY(newest->isDeleted());

    // Reading position: added, then updated in place.
    QVERIFY(!db.getReadHistoryWithComic("5"));
    const ReadHistoryPtr history = db.addReadHistoryWithComic(comic("5"), chapter("50", 0), page("501", 0));
    db.updateReadHistory(history, chapter("52", 2), page("520", 4));
    const ReadHistoryPtr reread = VORADatabaseManager().getReadHistoryWithComic("5");
    QVERIFY(reread);
    QCOMPARE(reread->chapterId(), QStringLiteral("52"));
    QCOMPARE(reread->pageId(), QStringLiteral("520"));
    QCOMPARE(rowCount(VORAPersistenceManager::dbFile(), "ReadHistory"), 1);
}

void TestDatabaseManager::downloadComicCopies()
{
    VORADatabaseManager db;
    QVERIFY(!db.getDownloadComicWithComic("1"));
    db.addDownlaodComicWithComic(downloadComic("3", 2)); // a serial state the site does not send
    db.addDownlaodComicWithComic(downloadComic("1", 1));
    db.addDownlaodComicWithComic(downloadComic("2", 0));

    QCOMPARE(db.getDownloadComicWithComic("3")->comicSerial, 0);
    QCOMPARE(db.getDownloadComicWithComic("1")->comicSerial, 1);

    // First queued first; theme and comicSerial left at their defaults.
    const auto all = VORADatabaseManager().getAllDownloadComic();
    QStringList order;
    for (const auto &copy : all)
        order << copy.comicId + copy.theme + QString::number(copy.comicSerial);
    QCOMPARE(order, (QStringList{"30", "10", "20"}));

    // Counters are written, descriptive fields never.
    VORADownloadComicInfoDTO change = *db.getDownloadComicWithComic("1");
    change.comicName = QStringLiteral("不写");
    change.downloadingChapterCount = 2;
    change.downloadingPageCount = 40;
    change.downloadingCompleteTucaoCount = 9;
    change.downloadPageSize = 123456789012;
    db.updateDownlaodComicWithComic(change);
    const auto after = VORADatabaseManager().getDownloadComicWithComic("1");
    QCOMPARE(after->comicName, QStringLiteral("下载1"));
    QCOMPARE(after->downloadingCompleteTucaoCount, 9);
    QCOMPARE(after->downloadPageSize, 123456789012);

    // Unknown comics: nothing inserted, nothing changed.
    VORADownloadComicInfoDTO ghost = downloadComic("ghost");
    ghost.downloadChapterCount = 5;
    db.updateDownlaodComicWithComic(ghost);
    db.updateDownlaodComicWithCreateDate(ghost);
    QVERIFY(!db.getDownloadComicWithComic("ghost"));
    QCOMPARE(db.getAllDownloadComic().size(), 3);
}

void TestDatabaseManager::downloadChapters()
{
    VORADatabaseManager db;
    VORADownloadChapterInfoDTO dirty = downloadChapter("1", "11", 1);
    dirty.pageCompleteIds = QStringLiteral("1,2");
    dirty.isFinishDownload = true;
    db.addDownlaodChapterList({dirty, downloadChapter("1", "12", 2), downloadChapter("2", "21", 0)});
    db.addDownlaodChapter(downloadChapter("1", "11", 1)); // the same chapter again

    // New records start with empty completion lists whatever the copy said.
    const auto first = db.getDownloadChapterWithChapterId("11");
    QVERIFY(first);
    QCOMPARE(first->pageCompleteIds, QString());
    QVERIFY(!first->isFinishDownload);
    QCOMPARE(db.getDownloadChapterWithComicId("1").size(), 3);
    QCOMPARE(db.getAllDownloadChapter().size(), 4);
    QCOMPARE(db.getDownloadChapterWithChapterIdList({"12", "21", "none"}).size(), 2);

    VORADownloadChapterInfoDTO progress = *first;
    progress.pageCompleteIds = QStringLiteral("p1,p2,p3");
    progress.tucaoCompleteIds = QStringLiteral("p1");
    progress.chapterName = QStringLiteral("不写");
    db.updateDownloadChapter(progress);
    const auto reread = VORADatabaseManager().getDownloadChapterWithChapterId("11");
    QCOMPARE(reread->pageCompleteIds, QStringLiteral("p1,p2,p3"));
    QCOMPARE(reread->chapterName, QStringLiteral("章11"));
    db.updateDownloadChapter(downloadChapter("1", "missing", 0));
    QCOMPARE(db.getAllDownloadChapter().size(), 4);

    // Deleting removes every record of the chapter, duplicates included;
    // an empty list changes nothing.
    db.deleteDownloadChapterList({});
    QCOMPARE(db.getAllDownloadChapter().size(), 4);
    db.deleteDownloadChapter(*first);
    QVERIFY(!VORADatabaseManager().getDownloadChapterWithChapterId("11"));
    db.deleteDownloadChapterList({downloadChapter("1", "12", 2), downloadChapter("2", "21", 0)});
    QVERIFY(VORADatabaseManager().getAllDownloadChapter().isEmpty());
}

void TestDatabaseManager::chapterProgress_data()
{
    QTest::addColumn<QString>("pages");
    QTest::addColumn<QString>("tucao");
    QTest::addColumn<qint64>("imageCount");
    QTest::addColumn<qint64>("percent");
    QTest::newRow("new") << "" << "" << qint64(4) << qint64(0);
    QTest::newRow("half of the pages") << "1,2" << "" << qint64(4) << qint64(25);
    QTest::newRow("rounds down") << "1" << "" << qint64(3) << qint64(16);
    QTest::newRow("complete") << "1,2,3" << "1,2,3" << qint64(3) << qint64(100);
    QTest::newRow("no pages") << "1" << "1" << qint64(0) << qint64(0);
}

void TestDatabaseManager::chapterProgress()
{
    QFETCH(QString, pages);
    QFETCH(QString, tucao);
    QFETCH(qint64, imageCount);
    QFETCH(qint64, percent);
    VORADownloadChapterInfoDTO chapter = downloadChapter("1", "1", 0);
    chapter.imageCount = imageCount;
    chapter.pageCompleteIds = pages;
    chapter.tucaoCompleteIds = tucao;
    QCOMPARE(chapter.downloadPercent(), percent);
}

void TestDatabaseManager::hostileIdentifiers_data()
{
    QTest::addColumn<QString>("id");
    QTest::newRow("quote") << QStringLiteral("1' OR '1'='1");
    QTest::newRow("sql") << QStringLiteral("1); DROP TABLE Bookshelf; --");
    QTest::newRow("json") << QStringLiteral("\"]},[{\"");
    QTest::newRow("long") << QString(100000, QLatin1Char('9'));
    QTest::newRow("empty") << QString();
}

void TestDatabaseManager::hostileIdentifiers()
{
    QFETCH(QString, id);
    VORADatabaseManager db;
    db.addBookshelfWithBookshelfList({shelf("plain", 1), shelf(id, 2)});
    db.addDownlaodChapterList({downloadChapter(id, id, 0)});
    QCOMPARE(db.getBookshelfWithComicIdList({id}).size(), 1);
    QCOMPARE(db.getBookshelfWithComicIdList({id}).first()->comicId(), id);
    QCOMPARE(VORADatabaseManager().getDownloadChapterWithChapterId(id)->chapterId, id);
    QCOMPARE(VORADatabaseManager().getAllBookshelf().size(), 2);
    db.deleteBookshelf(id);
    QVERIFY(db.getBookshelfWithComicId("plain"));
    QCOMPARE(db.getAllBookshelf().size(), 1);
}

void TestDatabaseManager::damagedStoreFile_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("setAside");
    QTest::newRow("missing") << "missing" << false;
    QTest::newRow("empty") << "empty" << false;
    QTest::newRow("truncated") << "truncated" << true;
    QTest::newRow("garbage") << "garbage" << true;
    QTest::newRow("newer schema") << "newer" << true;
}

void TestDatabaseManager::damagedStoreFile()
{
    QFETCH(QString, kind);
    QFETCH(bool, setAside);
    const QString path = VORAPersistenceManager::dbFile();

    if (kind == QLatin1String("empty")) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    } else if (kind == QLatin1String("garbage")) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QByteArray junk;
        for (int i = 0; i < 64 * 1024; ++i)
            junk.append(char((i * 131 + 7) & 0xff));
        file.write(junk);
    } else if (kind == QLatin1String("truncated") || kind == QLatin1String("newer")) {
        {
            SqliteDatabase raw;
            QVERIFY(raw.open(path));
            QString error;
            QVERIFY(StoreModel::migrate(raw, &error) == StoreModel::MigrationResult::Migrated);
            QVERIFY(raw.exec("BEGIN"));
            SqliteStatement insert = raw.prepare(StoreModel::insertSql(StoreEntityKind::Bookshelf));
            for (int i = 0; i < 3000; ++i) {
                insert.reset();
                for (int c = 1; c <= 12; ++c)
                    insert.bind(c, QStringLiteral("value %1 of row %2, padded to fill pages").arg(c).arg(i));
                QVERIFY(insert.run());
            }
            QVERIFY(raw.exec("COMMIT"));
            if (kind == QLatin1String("newer"))
                QVERIFY(raw.setUserVersion(StoreModel::schemaVersion() + 1));
        }
        if (kind == QLatin1String("truncated")) {
            QFile file(path);
            QVERIFY(file.size() > 100000);
            QVERIFY(file.resize(file.size() / 2));
        }
    }
    const QByteArray original = QFileInfo::exists(path) ? [&] {
        QFile f(path);
        f.open(QIODevice::ReadOnly);
        return f.readAll();
    }() : QByteArray();

    {
        VORADatabaseManager db;
        QVERIFY(db.getAllBookshelf().isEmpty());
        QVERIFY(db.getRecentReadInfo().isEmpty());
        db.addBookshelfWithBookshelfList({shelf("42", 10)});
        db.addDownlaodComicWithComic(downloadComic("42"));
    }
    VORADatabaseManager reopened;
    QCOMPARE(reopened.getAllBookshelf().size(), 1);
    QCOMPARE(reopened.getAllDownloadComic().size(), 1);

    const QString aside = StoreCoordinator::instance().setAsidePath(path);
    QMutexLocker locker(&g_logMutex);
    if (!setAside) {
        QVERIFY(aside.isEmpty());
        QVERIFY(g_storeWarnings.isEmpty());
        return;
    }
    QVERIFY(!aside.isEmpty());
    QFile kept(aside);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), original); // moved, not overwritten
    bool logged = false;
    for (const QString &line : std::as_const(g_storeWarnings))
        logged = logged || line.contains(aside);
    QVERIFY2(logged, qPrintable(g_storeWarnings.join('\n')));
}

void TestDatabaseManager::olderSchemaIsMigrated()
{
    const QString path = VORAPersistenceManager::dbFile();
    {
        // A file of version 1: the tables without the lookup indexes.
        SqliteDatabase raw;
        QVERIFY(raw.open(path));
        QString error;
        QVERIFY(StoreModel::migrate(raw, &error) == StoreModel::MigrationResult::Migrated);
        SqliteStatement indexes = raw.prepare("SELECT name FROM sqlite_master WHERE type = 'index'");
        QStringList names;
        while (indexes.step() == SqliteStatement::Row)
            names << indexes.columnText(0);
        indexes = SqliteStatement();
        for (const QString &name : names)
            QVERIFY(raw.exec("DROP INDEX " + name));
        QVERIFY(raw.exec("INSERT INTO Bookshelf (comicId, comicName) VALUES ('9', 'old')"));
        QVERIFY(raw.setUserVersion(1));
    }
    VORADatabaseManager db;
    QCOMPARE(db.getBookshelfWithComicId("9")->comicName(), QStringLiteral("old"));
    SqliteDatabase raw;
    QVERIFY(raw.open(path));
    QCOMPARE(raw.userVersion(), StoreModel::schemaVersion());
    SqliteStatement count = raw.prepare("SELECT count(*) FROM sqlite_master WHERE type = 'index'");
    QCOMPARE(count.step(), SqliteStatement::Row);
    QCOMPARE(count.columnInt64(0), 7);
    QVERIFY(StoreCoordinator::instance().setAsidePath(path).isEmpty());
}

void TestDatabaseManager::failedMigrationRollsBackAndSetsFileAside()
{
    const QString path = VORAPersistenceManager::dbFile();
    {
        SqliteDatabase raw;
        QVERIFY(raw.open(path));
        QString error;
        QVERIFY(StoreModel::migrate(raw, &error) == StoreModel::MigrationResult::Migrated);
        // Version 1 plus a table in the way of the last index of step 2.
        QVERIFY(raw.exec("DROP INDEX Bookshelf_comicId; DROP INDEX Bookmark_comicId;"
                         "DROP INDEX RecentReadInfo_comicId; DROP INDEX ReadHistory_comicId;"
                         "DROP INDEX DownloadComic_comicId; DROP INDEX DownloadChapter_chapterId;"
                         "DROP INDEX DownloadChapter_comicId; CREATE TABLE DownloadChapter_comicId (x)"));
        QVERIFY(raw.setUserVersion(1));
    }
    VORADatabaseManager db;
    db.addBookshelfWithBookshelfList({shelf("1", 1)});
    QCOMPARE(VORADatabaseManager().getAllBookshelf().size(), 1);

    // The failed step left the old file exactly at version 1: the indexes the
    // step made before failing were rolled back with it.
    const QString aside = StoreCoordinator::instance().setAsidePath(path);
    QVERIFY(!aside.isEmpty());
    SqliteDatabase old;
    QVERIFY(old.open(aside));
    QCOMPARE(old.userVersion(), 1);
    SqliteStatement bookmarkIndex =
        old.prepare("SELECT count(*) FROM sqlite_master WHERE name = 'Bookmark_comicId'");
    QCOMPARE(bookmarkIndex.step(), SqliteStatement::Row);
    QCOMPARE(bookmarkIndex.columnInt64(0), 0);
}

QTEST_GUILESS_MAIN(TestDatabaseManager)
#include "tst_databasemanager.moc"
