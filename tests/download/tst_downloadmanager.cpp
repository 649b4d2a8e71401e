// The download manager and its tasks against the reference site over loopback,
// with the real store and downloaded-comics tree in a temporary app home.

#include "TestHome.h"
#include "QuorinSite.h"
#include "QuorinSiteFaults.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORAAppStatus.h"
#include "core/VORANotificationNames.h"
#include "core/VORAUtility.h"
#include "download/VORADownloadManager.h"
#include "download/VORADownloadRecords.h"
#include "net/ASIHTTPRequest.h"
#include "net/VORAGetChapterInfoService.h"
#include "platform/NotificationCenter.h"
#include "store/VORADatabaseManager.h"
#include "store/VORAPersistenceManager.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <memory>

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
    // A chapter of comic 10001 as the detail page queues it; imageCount from the site
    // unless given.
    VORADownloadChapterInfoDTO chapter(const QString &id, qint64 imageCount = -1)
    {
        VORADownloadChapterInfoDTO c;
        c.chapterId = id;
        c.chapterName = QStringLiteral("第") + id;
        c.comicId = comicId;
        c.imageCount = imageCount < 0 ? sitePages(id).size() : imageCount;
        c.imageSize = 10 * c.imageCount;
        return c;
    }
    void queue(const QList<VORADownloadChapterInfoDTO> &chapters) const
    {
        VORADownloadComicInfoDTO comic;
        comic.comicId = comicId;
        VORADownloadRecords::queueChapters(comic, chapters);
    }
    static QList<VORAPageInfoDTO> sitePages(const QString &chapterId)
    {
        VORAGetChapterInfoService service;
        service.chapterId = chapterId;
        service.synchronousRequest();
        return service.pageList().value_or(QList<VORAPageInfoDTO>());
    }
    int imageRequests(const VORAPageInfoDTO &page) const { return m_site->requestCount(QUrl(page.url).path().mid(1)); }
    static QStringList filesUnder(const QString &dir)
    {
        QStringList files;
        for (QDirIterator it(dir, QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
            files.append(it.next());
        return files;
    }

    const QString comicId = QStringLiteral("10001");
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

// Three chapters queued on an idle manager: only the head runs, never more
// than two tasks at once; the finished chapter leaves every file on disk and
// the counters moved; stopping the running chapter starts the next.
void TestDownloadManager::queueRunsHeadOnly()
{
    const auto a = chapter("40001"), b = chapter("40002"), c = chapter("40003");
    queue({a, b, c});
    QCOMPARE(m_manager->getDownloadStatusWithDownloadChapter(a), 1);
    QCOMPARE(m_manager->getDownloadStatusWithDownloadChapter(b), 2);
    QCOMPARE(m_manager->getDownloadStatusWithDownloadChapter(c), 2);

    QTRY_COMPARE_WITH_TIMEOUT(m_manager->getDownloadStatusWithDownloadChapter(b), 1, 20000);
    QCOMPARE(m_notices, QStringList{"'第40001'下载完成!"});
    VORADatabaseManager store;
    QVERIFY(store.getDownloadChapterWithChapterId("40001")->isFinishDownload);
    for (const VORAPageInfoDTO &page : sitePages("40001")) {
        QVERIFY(QFile::exists(VORAPersistenceManager::pageFileWithComicId(comicId, "40001", page.pageId)));
        QVERIFY(VORAPersistenceManager::loadTucaoWithFile(
            VORAPersistenceManager::tucaoFileWithComicId(comicId, "40001", page.pageId)));
    }
    const auto comic = *store.getDownloadComicWithComic(comicId);
    QCOMPARE(comic.downloadChapterCount, 1);
    QCOMPARE(comic.downloadPageCount, a.imageCount);
    QCOMPARE(comic.downloadingChapterCount, 2);
    QCOMPARE(comic.downloadingPageCount, b.imageCount + c.imageCount);

    m_manager->stopDownloadChapter(b);
    QCOMPARE(m_manager->getDownloadStatusWithDownloadChapter(b), 3);
    QCOMPARE(m_manager->getDownloadStatusWithDownloadChapter(c), 1);
    QVERIFY(m_manager->taskQueue().peakRunningCount() <= 2);
}

// After cancelAllDownload the same chapter started again fetches only the
// files the store has not recorded.
void TestDownloadManager::cancelAllThenStartFetchesOnlyUnrecorded()
{
    const auto c = chapter("40004");
    const QList<VORAPageInfoDTO> pages = sitePages("40004");
    m_site->faults().setLatencyMs(30);
    queue({c});
    VORADatabaseManager store;
    QTRY_VERIFY_WITH_TIMEOUT(store.getDownloadChapterWithChapterId("40004")->pageCompleteCount() >= 2, 20000);
    m_manager->cancelAllDownload();
    QTRY_COMPARE(m_manager->taskQueue().operationCount(), 0);
    m_site->faults().setLatencyMs(0);
    const QString recorded = store.getDownloadChapterWithChapterId("40004")->pageCompleteIds.section(',', 0, 0);
    const VORAPageInfoDTO first = *std::find_if(pages.cbegin(), pages.cend(), [&](const auto &p) { return p.pageId == recorded; });
    const int before = imageRequests(first);

    m_manager->beginDownloadChapter(c);
    QTRY_VERIFY_WITH_TIMEOUT(store.getDownloadChapterWithChapterId("40004")->isFinishDownload, 20000);
    QCOMPARE(imageRequests(first), before);
    const auto finished = *store.getDownloadChapterWithChapterId("40004");
    QCOMPARE(finished.pageCompleteCount(), c.imageCount);
    QCOMPARE(finished.tucaoCompleteCount(), c.imageCount);
}

// A chapter that fails leaves the queue with what it stored, shows stopped
// and says why; nothing is ever written outside its chapter directory.
void TestDownloadManager::chapterFailures_data()
{
    QTest::addColumn<QString>("chapterId");
    QTest::addColumn<QStringList>("imageIds"); // the pages of the site's answer
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
        data.append(QJsonObject{{"image_id", imageIds.at(i)}, {"location", real.at(i % real.size()).url}});
    m_site->faults().setMalformed("ios/pad/chapter_127.php",
                                  QJsonDocument(QJsonObject{{"code", 1}, {"data", data}}).toJson());
    if (failingPage >= 0)
        m_site->faults().setErrorStatus(QUrl(real.at(failingPage).url).path().mid(1), 500, "busy");
    const QString root = VORAUtility::comicBookDirectory();
    const QStringList filesBefore = filesUnder(root);

    const auto c = chapter(chapterId, imageIds.size());
    queue({c});
    QTRY_VERIFY_WITH_TIMEOUT(!m_notices.isEmpty(), 20000);
    QVERIFY2(m_notices.first().startsWith(message), qPrintable(m_notices.first()));
    QCOMPARE(m_manager->getDownloadStatusWithDownloadChapter(c), 3);
    QCOMPARE(m_posted.mid(m_posted.size() - 2),
             QStringList({"DownloadFailNotification", "DownloadCountChangeNotification"}));
    QTRY_COMPARE(m_manager->taskQueue().operationCount(), 0);
    const auto stored = *VORADatabaseManager().getDownloadChapterWithChapterId(chapterId);
    QCOMPARE(stored.pageCompleteCount(), pagesKept);
    QCOMPARE(stored.downloadPercent() > 0, pagesKept > 0);

    // New files: only in this chapter's directory, one image per recorded page.
    QStringList added = filesUnder(root);
    added.removeIf([&filesBefore](const QString &f) { return filesBefore.contains(f); });
    for (const QString &file : std::as_const(added))
        QVERIFY2(file.startsWith(VORAPersistenceManager::chapterDirWithComicId(comicId, chapterId)), qPrintable(file));
    QCOMPARE(added.filter(".png").size(), pagesKept);
}

// Deleting two queued chapters of 10 and 12 pages stops them, removes their
// records and directories, and sets the comic's in-progress page count to 22
// (the sum over the deleted chapters, whatever else is in progress).
void TestDownloadManager::deletingQueuedChapters()
{
    const QList<VORADownloadChapterInfoDTO> chapters{chapter("92001", 10), chapter("92002", 12), chapter("92003", 5)};
    for (const auto &c : chapters)
        QVERIFY(QDir().mkpath(VORAPersistenceManager::chapterDirWithComicId(comicId, c.chapterId)));
    VORADatabaseManager store;
    const auto before = *store.getDownloadComicWithComic(comicId);
    m_site->faults().setLatencyMs(200); // the head is still preparing when it is deleted
    queue(chapters.mid(0, 2));
    queue(chapters.mid(2));
    m_manager->stopDownloadChapter(chapters.at(2));
    VORADownloadRecords::deleteChapters(comicId, chapters.mid(0, 2), VORADownloadRecords::Section::Downloading);

    QVERIFY(m_manager->downloadChaperList().isEmpty());
    const auto after = *store.getDownloadComicWithComic(comicId);
    QCOMPARE(after.downloadingChapterCount, before.downloadingChapterCount + 1);
    QCOMPARE(after.downloadingPageCount, 22);
    QCOMPARE(after.downloadingPageSize, 220);
    QVERIFY(!store.getDownloadChapterWithChapterId("92001") && store.getDownloadChapterWithChapterId("92003"));
    QTRY_VERIFY(!QFileInfo::exists(VORAPersistenceManager::chapterDirWithComicId(comicId, "92002")));
    QTRY_COMPARE(m_manager->taskQueue().operationCount(), 0); // the stopped preparation brings nothing back
    QVERIFY(!QFileInfo::exists(VORAPersistenceManager::chapterDirWithComicId(comicId, "92001")));
    QVERIFY(QFileInfo::exists(VORAPersistenceManager::chapterDirWithComicId(comicId, "92003")));
}

QTEST_MAIN(TestDownloadManager)
#include "tst_downloadmanager.moc"
