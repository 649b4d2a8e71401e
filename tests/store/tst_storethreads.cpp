// Store instances on several threads: read-modify-write under the coordinator
// lock loses no update, and saves made on workers are merged into the
// main-thread instance of VORAPersistenceManager.

#include "StoreTestData.h"
#include "TestHome.h"

#include "store/StoreCoordinator.h"
#include "store/VORADatabaseManager.h"
#include "store/VORAPersistenceManager.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>

using namespace StoreTestData;

class TestStoreThreads : public QObject
{
    Q_OBJECT

private slots:
    void counterUpdatesUnderTheLock();
    void workerSavesMergeIntoMainInstance();

private:
    TestHome m_home; // one home for the whole run: the main instance is process-wide
};

void TestStoreThreads::counterUpdatesUnderTheLock()
{
    VORADatabaseManager *main = VORAPersistenceManager::getPersistenceManager()->databaseManager();
    main->addDownlaodComicWithComic(downloadComic("77"));
    QCOMPARE(main->getDownloadComicWithComic("77")->downloadingCompletePageCount, 0);
    QSignalSpy merged(main, &VORADatabaseManager::objectsDidChange);

    constexpr int perThread = 1000;
    auto work = [] {
        VORADatabaseManager db; // each worker its own instance and connection
        for (int i = 0; i < perThread; ++i) {
            StoreCoordinator &coordinator = VORADatabaseManager::persistentStoreCoordinator();
            coordinator.lock();
            auto comic = db.getDownloadComicWithComic("77");
            comic->downloadingCompletePageCount += 1;
            db.updateDownlaodComicWithComic(*comic);
            coordinator.unlock();
        }
    };
    std::unique_ptr<QThread> a(QThread::create(work));
    std::unique_ptr<QThread> b(QThread::create(work));
    a->start();
    b->start();
    QVERIFY(a->wait(120000));
    QVERIFY(b->wait(120000));

    const auto stored = VORADatabaseManager().getDownloadComicWithComic("77");
    QCOMPARE(stored->downloadingCompletePageCount, 2 * perThread);

    // The main instance's record reaches the final values through the merge,
    // without a query of its own.
    QTRY_VERIFY(!main->registeredDownloadComics().isEmpty()
                && main->registeredDownloadComics().first().downloadingCompletePageCount == 2 * perThread);
    QVERIFY(merged.count() > 0);
}

void TestStoreThreads::workerSavesMergeIntoMainInstance()
{
    VORADatabaseManager *main = VORAPersistenceManager::getPersistenceManager()->databaseManager();
    main->addBookshelfWithBookshelfList({shelf("1", 10), shelf("2", 20)});
    const BookshelfPtr held = main->getBookshelfWithComicId("1");
    const BookshelfPtr doomed = main->getBookshelfWithComicId("2");
    QVERIFY(held && doomed);

    std::unique_ptr<QThread> worker(QThread::create([] {
        VORADatabaseManager db;
        db.getBookshelfWithComicId("1")->setLatestUpdateChapterName(QStringLiteral("第100话"));
        db.save();
        db.deleteBookshelf(QStringLiteral("2"));
    }));
    worker->start();
    QVERIFY(worker->wait(30000));

    QTRY_COMPARE(held->latestUpdateChapterName(), QStringLiteral("第100话"));
    QTRY_VERIFY(doomed->isDeleted());
    QCOMPARE(main->getAllBookshelf().size(), 1);

    // A record with unsaved changes in the main instance keeps them.
    // Saves merge in order: once the worker's later save of comic 3 has
    // arrived, its save of comic 1 has been handled too.
    main->addBookshelfWithBookshelfList({shelf("3", 30)});
    const BookshelfPtr sentinel = main->getBookshelfWithComicId("3");
    held->setComicName(QStringLiteral("本地修改"));
    std::unique_ptr<QThread> second(QThread::create([] {
        VORADatabaseManager db;
        db.getBookshelfWithComicId("1")->setCoverUrl(QStringLiteral("http://worker/cover"));
        db.save();
        db.getBookshelfWithComicId("3")->setComicName(QStringLiteral("后来"));
        db.save();
    }));
    second->start();
    QVERIFY(second->wait(30000));
    QTRY_COMPARE(sentinel->comicName(), QStringLiteral("后来"));
    QCOMPARE(held->comicName(), QStringLiteral("本地修改"));
    main->save();
    QCOMPARE(VORADatabaseManager().getBookshelfWithComicId("1")->comicName(), QStringLiteral("本地修改"));
}

QTEST_GUILESS_MAIN(TestStoreThreads)
#include "tst_storethreads.moc"
