// The download manager and its tasks against the reference site over loopback,
// with the real store and downloaded-comics tree in a temporary app home.

#include "TestHome.h"
#include "QuorinSite.h"
#include "QuorinSiteFaults.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORAAppStatus.h"
#include "core/VORANotificationNames.h"
#include "download/VORADownloadChapterDeletion.h"
#include "download/VORADownloadManager.h"
#include "net/ASIHTTPRequest.h"
#include "net/VORAGetChapterInfoService.h"
#include "platform/NotificationCenter.h"
#include "store/StoreCoordinator.h"
#include "store/VORADatabaseManager.h"
#include "store/VORAPersistenceManager.h"
#include "core/VORAUtility.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <memory>

namespace {
const QString comicId = QStringLiteral("10001");
const QString chapterPath = QStringLiteral("ios/pad/chapter_127.php");
} // namespace

class TestDownloadManager : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();
    void queueRunsHeadOnly();
    void cancelAllThenStartFetchesOnlyUnrecorded();
    void chapterFailures_data();
    void chapterFailures();
    void deletingQueuedChapters();

private:
    // What the comic detail page does before it queues: the comic's record when
    // missing, the chapter's record, the in-progress counters.
    VORADownloadChapterInfoDTO queueRecord(const QString &chapterId);
    QList<VORAPageInfoDTO> sitePages(const QString &chapterId);
    static QByteArray answer(const QJsonArray &data)
    {
        return QJsonDocument(QJsonObject{{"code", 1}, {"data", data}}).toJson(QJsonDocument::Compact);
    }
    QJsonObject sitePage(const QString &imageId, const VORAPageInfoDTO &real) const
    {
        return QJsonObject{{"image_id", imageId}, {"location", real.url}, {"width", 800}, {"height", 1130}};
    }

    TestHome m_home;
    std::unique_ptr<QuorinSite> m_site;
    VORADownloadManager *m_manager = nullptr;
    QObject m_observer;
    QStringList m_notices;
    QStringList m_posted; // download notifications, in order
};

void TestDownloadManager::initTestCase()
{
    QuorinSiteOptions options{m_home.filePath("site"), 1, false};
    options.longChapterPages = 3; // chapter 40001 of comic 10001
    m_site = std::make_unique<QuorinSite>(options);
    QVERIFY(m_site->listen() != 0);
    qputenv("QUORIN_API_BASE", m_site->baseUrl().toString().toUtf8());
    ASIHTTPRequest::setDefaultTimeOutSeconds(2);
    VORADatabaseManager::initializeDB();
    VORAPersistenceManager::getPersistenceManager();
    m_manager = VORADownloadManager::shareDownloadManagerObj();
    VORAAppGlobalData::shareAppGlobalData()->appStatus()->setFromAppStore(0); // status-bar notices shown

    NotificationCenter &center = NotificationCenter::defaultCenter();
    center.addObserver(&m_observer, VORANotificationNames::uiNoticeRequest,
                       [this](const Notification &n) { m_notices.append(n.userInfo.value("text").toString()); });
    for (const char *name : {"DownloadFinishNotification", "DownloadFailNotification", "DownloadCountChangeNotification"})
        center.addObserver(&m_observer, name, [this](const Notification &n) { m_posted.append(n.name); });
}

void TestDownloadManager::cleanup()
{
    m_manager->cancelAllDownload();
    QTRY_COMPARE(m_manager->taskQueue().operationCount(), 0);
    m_site->faults().clear();
    m_notices.clear();
    m_posted.clear();
}

QList<VORAPageInfoDTO> TestDownloadManager::sitePages(const QString &chapterId)
{
    VORAGetChapterInfoService service;
    service.chapterId = chapterId;
    service.synchronousRequest();
    return service.pageList().value_or(QList<VORAPageInfoDTO>());
}

VORADownloadChapterInfoDTO TestDownloadManager::queueRecord(const QString &chapterId)
{
    VORADownloadChapterInfoDTO chapter;
    chapter.chapterId = chapterId;
    chapter.chapterName = QStringLiteral("第") + chapterId;
    chapter.comicId = comicId;
    chapter.imageCount = qMax<qsizetype>(1, sitePages(chapterId).size());
    chapter.imageSize = 100 * chapter.imageCount;
    VORADatabaseManager store;
    if (!store.getDownloadComicWithComic(comicId)) {
        VORADownloadComicInfoDTO comic;
        comic.comicId = comicId;
        store.addDownlaodComicWithComic(comic);
    }
    store.addDownlaodChapter(chapter);
    StoreCoordinator &lock = VORADatabaseManager::persistentStoreCoordinator();
    lock.lock();
    VORADownloadComicInfoDTO comic = *store.getDownloadComicWithComic(comicId);
    comic.downloadingChapterCount += 1;
    comic.downloadingPageCount += chapter.imageCount;
    comic.downloadingPageSize += chapter.imageSize;
    store.updateDownlaodComicWithComic(comic);
    lock.unlock();
    return chapter;
}

// Three chapters queued on an idle manager: only the head runs, never more
// than two tasks at once; stopping the running chapter starts the next, and
// the finished chapter leaves every file on disk and the counters moved.
void TestDownloadManager::queueRunsHeadOnly()
{
    const auto a = queueRecord("40001");
    const auto b = queueRecord("40002");
    const auto c = queueRecord("40003");
    m_manager->beginDownloadChapterList({a, b, c});
    QCOMPARE(m_manager->getDownloadStatusWithDownloadChapter(a), 1);
    QCOMPARE(m_manager->getDownloadStatusWithDownloadChapter(b), 2);
    QCOMPARE(m_manager->getDownloadStatusWithDownloadChapter(c), 2);

    QTRY_COMPARE_WITH_TIMEOUT(m_manager->getDownloadStatusWithDownloadChapter(b), 1, 20000);
    QCOMPARE(m_notices.value(0), QStringLiteral("'第40001'下载完成!"));
    VORADatabaseManager store;
    const auto done = store.getDownloadChapterWithChapterId("40001");
    QVERIFY(done && done->isFinishDownload);
    QCOMPARE(done->downloadPercent(), 100);
    for (const VORAPageInfoDTO &page : sitePages("40001")) {
        QVERIFY(QFile::exists(VORAPersistenceManager::pageFileWithComicId(comicId, "40001", page.pageId)));
        QVERIFY(VORAPersistenceManager::loadTucaoWithFile(
            VORAPersistenceManager::tucaoFileWithComicId(comicId, "40001", page.pageId)));
    }
    const auto comic = store.getDownloadComicWithComic(comicId);
    QCOMPARE(comic->downloadChapterCount, 1);
    QCOMPARE(comic->downloadPageCount, a.imageCount);
    QCOMPARE(comic->downloadingChapterCount, 2);
    QCOMPARE(comic->downloadingPageCount, b.imageCount + c.imageCount);

    m_manager->stopDownloadChapter(b);
    QCOMPARE(m_manager->getDownloadStatusWithDownloadChapter(b), 3);
    QCOMPARE(m_manager->getDownloadStatusWithDownloadChapter(c), 1);
    QCOMPARE(m_manager->downloadChaperList().size(), 1);
    QVERIFY(m_manager->taskQueue().peakRunningCount() <= 2);
}

// After cancelAllDownload the same chapter started again fetches only the
// files the store has not recorded.
void TestDownloadManager::cancelAllThenStartFetchesOnlyUnrecorded()
{
    const auto chapter = queueRecord("40004");
    m_site->faults().setLatencyMs(30);
    m_manager->beginDownloadChapter(chapter);
    VORADatabaseManager store;
    QTRY_VERIFY_WITH_TIMEOUT(store.getDownloadChapterWithChapterId("40004")->pageCompleteCount() >= 2, 20000);
    m_manager->cancelAllDownload();
    QTRY_COMPARE(m_manager->taskQueue().operationCount(), 0);
    m_site->faults().setLatencyMs(0);

    const auto recorded = *store.getDownloadChapterWithChapterId("40004");
    const QStringList recordedPages = recorded.pageCompleteIds.split(',');
    const int imagesBefore = m_site->requestCount(QUrl(sitePages("40004").first().url).path().mid(1));
    m_manager->beginDownloadChapter(chapter);
    QTRY_VERIFY_WITH_TIMEOUT(store.getDownloadChapterWithChapterId("40004")->isFinishDownload, 20000);
    // Each recorded page was fetched once, before the cancel.
    QCOMPARE(m_site->requestCount(QUrl(sitePages("40004").first().url).path().mid(1)), imagesBefore);
    QVERIFY(recordedPages.contains(sitePages("40004").first().pageId));
    const auto finished = *store.getDownloadChapterWithChapterId("40004");
    QCOMPARE(finished.pageCompleteCount(), chapter.imageCount);
    QCOMPARE(finished.tucaoCompleteCount(), chapter.imageCount);
}

// A chapter that fails leaves the queue with what it stored, shows stopped
// and says why; nothing is ever written outside its chapter directory.
void TestDownloadManager::chapterFailures_data()
{
    QTest::addColumn<QString>("chapterId");
    QTest::addColumn<QStringList>("imageIds"); // the answer's pages; "" = the site's own answer
    QTest::addColumn<int>("failingPage");      // its image answers 500; -1: none
    QTest::addColumn<QString>("message");      // the status-bar notice begins so
    QTest::addColumn<int>("pagesKept");

    const QString prep = QStringLiteral("'第%1'下载失败，取得章节信息失败!");
    const QString page = QStringLiteral("'第%1'下载失败，下载漫画失败!");
    QTest::newRow("no pages") << "90001" << QStringList() << -1 << prep.arg("90001") << 0;
    QTest::newRow("page fails after two") << "90002" << QStringList{"a1", "a2", "a3"} << 2 << page.arg("90002") << 2;
    // The page's image and tucao tasks fail together: either message may come first.
    const QString any = QStringLiteral("'第%1'下载失败，下载");
    QTest::newRow("parent in image id") << "90003" << QStringList{"../x"} << -1 << any.arg("90003") << 0;
    QTest::newRow("slash in image id") << "90004" << QStringList{"a/b"} << -1 << any.arg("90004") << 0;
}

void TestDownloadManager::chapterFailures()
{
    QFETCH(QString, chapterId);
    QFETCH(QStringList, imageIds);
    QFETCH(int, failingPage);
    QFETCH(QString, message);
    QFETCH(int, pagesKept);

    const QList<VORAPageInfoDTO> real = sitePages("40001");
    QJsonArray data;
    for (int i = 0; i < imageIds.size(); ++i)
        data.append(sitePage(imageIds.at(i), real.at(i % real.size())));
    m_site->faults().setMalformed(chapterPath, answer(data));
    if (failingPage >= 0)
        m_site->faults().setErrorStatus(QUrl(real.at(failingPage).url).path().mid(1), 500, "busy");

    VORADownloadChapterInfoDTO chapter;
    chapter.chapterId = chapterId;
    chapter.chapterName = QStringLiteral("第") + chapterId;
    chapter.comicId = comicId;
    chapter.imageCount = imageIds.size();
    VORADatabaseManager store;
    store.addDownlaodChapter(chapter);
    const QString comicDir = VORAPersistenceManager::comicDirWithComicId(comicId);
    const QStringList filesBefore = [&] {
        QStringList files;
        for (QDirIterator it(QFileInfo(comicDir).dir().path(), QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
            files.append(it.next());
        return files;
    }();

    m_manager->beginDownloadChapter(chapter);
    QTRY_VERIFY_WITH_TIMEOUT(!m_notices.isEmpty(), 20000);
    QVERIFY2(m_notices.first().startsWith(message), qPrintable(m_notices.first()));
    QCOMPARE(m_manager->getDownloadStatusWithDownloadChapter(chapter), 3);
    QCOMPARE(m_posted.mid(m_posted.size() - 2),
             QStringList({"DownloadFailNotification", "DownloadCountChangeNotification"}));
    QTRY_COMPARE(m_manager->taskQueue().operationCount(), 0);
    const auto stored = *store.getDownloadChapterWithChapterId(chapterId);
    QCOMPARE(stored.pageCompleteCount(), pagesKept);
    QCOMPARE(stored.isFinishDownload, false);
    if (pagesKept > 0)
        QVERIFY(stored.downloadPercent() > 0);

    // New files lie only in this chapter's directory, one per recorded page
    // (and the page list), and no tucao of a failed page.
    const QString chapterDir = VORAPersistenceManager::chapterDirWithComicId(comicId, chapterId);
    QStringList added;
    for (QDirIterator it(QFileInfo(comicDir).dir().path(), QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
        const QString file = it.next();
        if (!filesBefore.contains(file))
            added.append(file);
    }
    for (const QString &file : std::as_const(added))
        QVERIFY2(file.startsWith(chapterDir), qPrintable(file));
    QCOMPARE(added.filter(".png").size(), pagesKept);
}

// Deleting two queued chapters of 10 and 12 pages stops them, removes their
// records and directories, and sets the comic's in-progress page count to 22
// (the sum over the deleted chapters, whatever else is in progress).
void TestDownloadManager::deletingQueuedChapters()
{
    const QString comic = QStringLiteral("10003");
    VORADatabaseManager store;
    VORADownloadComicInfoDTO record;
    record.comicId = comic;
    store.addDownlaodComicWithComic(record);
    QList<VORADownloadChapterInfoDTO> chapters;
    for (const auto &[id, pages] : {std::pair{"92001", 10}, std::pair{"92002", 12}, std::pair{"92003", 5}}) {
        VORADownloadChapterInfoDTO chapter;
        chapter.chapterId = id;
        chapter.comicId = comic;
        chapter.imageCount = pages;
        chapter.imageSize = 10 * pages;
        store.addDownlaodChapter(chapter);
        chapters.append(chapter);
        QVERIFY(QDir().mkpath(VORAPersistenceManager::chapterDirWithComicId(comic, id)));
    }
    record.downloadingChapterCount = 3;
    record.downloadingPageCount = 27;
    record.downloadingPageSize = 270;
    store.updateDownlaodComicWithComic(record);

    m_site->faults().setLatencyMs(200); // the head is still preparing when it is deleted
    m_manager->beginDownloadChapterList(chapters.mid(0, 2));
    VORADownloadChapterDeletion::deleteChapters(comic, chapters.mid(0, 2), VORADownloadChapterDeletion::Section::Downloading);

    QVERIFY(m_manager->downloadChaperList().isEmpty());
    const auto after = *store.getDownloadComicWithComic(comic);
    QCOMPARE(after.downloadingChapterCount, 1);
    QCOMPARE(after.downloadingPageCount, 22);
    QCOMPARE(after.downloadingPageSize, 220);
    QCOMPARE(store.getDownloadChapterWithComicId(comic).size(), 1);
    QTRY_VERIFY(!QFileInfo::exists(VORAPersistenceManager::chapterDirWithComicId(comic, "92002")));
    QVERIFY(!QFileInfo::exists(VORAPersistenceManager::chapterDirWithComicId(comic, "92001")));
    QVERIFY(QFileInfo::exists(VORAPersistenceManager::chapterDirWithComicId(comic, "92003")));
}

QTEST_MAIN(TestDownloadManager)
#include "tst_downloadmanager.moc"
