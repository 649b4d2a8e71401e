// Page loaders against the reference site: a page from the page cache while
// the site is down, a download that fills the cache, the page's tucao as the
// site sends them (and odd answers), a loader cancelled between download and
// cache write, failures and hostile page ids, the files of a downloaded comic
// and the bound of the comic information cache.

#include "ReaderSessionTestSupport.h"
#include "core/VORAUtility.h"
#include "net/ASIHTTPRequest.h"
#include "net/VORAGetChapterInfoService.h"
#include "reader/VORAPageDownloadManager.h"
#include "store/VORAComicCache.h"
#include "store/VORAPersistenceManager.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QUrlQuery>

using namespace readertest;

namespace {
QString imagePathOf(const VORAPageInfoDTO &page)
{
    return QUrl(page.url).path().mid(1);
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

// True once the loader's thread has ended and been disposed of.
bool threadGone(const VORAPageDownloadManager &loader)
{
    return QTest::qWaitFor([&]() { return loader.findChildren<QThread *>().isEmpty(); }, 20000);
}

// One loader of chapter 40001 under a session that only forwards what it reports.
struct PageRun
{
    explicit PageRun(const VORAPageInfoDTO &info, const std::optional<QString> &localFile = std::nullopt)
        : session(std::make_unique<VORAReadComicManager>("10001", "40001", "kFirstPage"))
    {
        session->setDelegate(&recorder);
        loader = std::make_unique<VORAPageDownloadManager>("10001", "40001", info, localFile, session.get());
    }
    // Starts the loader and waits until `pages` pages have been reported in all.
    bool run(int pages = 1)
    {
        loader->startLoadPage();
        return QTest::qWaitFor([&]() { return recorder.pages.size() == pages; }, 20000);
    }
    SessionRecorder recorder;
    std::unique_ptr<VORAReadComicManager> session;
    std::unique_ptr<VORAPageDownloadManager> loader;
};
} // namespace

class TestPageLoader : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void cachedPage_data();
    void cachedPage();
    void downloadFillsCacheAndBringsTucao();
    void cancelledBetweenDownloadAndWrite();
    void sessionLeftWhilePagesStall();
    void failuresAndHostileIds_data();
    void failuresAndHostileIds();
    void downloadedComicFiles();
    void comicCacheBound();

private:
    CatalogueTestEnvironment m_env;
    QList<VORAPageInfoDTO> m_pages; // chapter 40001 of comic 10001, from the site
};

void TestPageLoader::initTestCase()
{
    QVERIFY(m_env.start());
    VORAGetChapterInfoService chapter;
    chapter.chapterId = QStringLiteral("40001");
    ServiceWaiter waiter;
    chapter.asynchronousRequestWithDelegate(&waiter);
    QTRY_VERIFY(waiter.done);
    QVERIFY(chapter.pageList());
    m_pages = *chapter.pageList();
    QVERIFY(m_pages.size() >= 10);
}

void TestPageLoader::cleanup()
{
    VORAPageDownloadManager::setBeforeCacheWriteHookForTesting({});
    m_env.site->faults().clear();
    m_env.pointAtSite();
}

// A page in the page cache is passed on as it is, whatever the site does; the
// tucao answer that arrived is a list, even an empty one (the records suite
// owns how a tucao is read).
void TestPageLoader::cachedPage_data()
{
    QTest::addColumn<QByteArray>("tucaoBody"); // "cut": cut off; "none": no site at all
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("tucao"); // -1: none
    QTest::newRow("tucao answers cut off") << QByteArray("cut") << 1 << -1;
    QTest::newRow("no site at all") << QByteArray("none") << 2 << -1;
    QTest::newRow("one tucao") << QByteArray(R"({"list":[{"tucao_id":"77","content":"嗯","user_id":"90002"}]})") << 3 << 1;
    QTest::newRow("no list") << QByteArray(R"({"code":1})") << 3 << 0;
    QTest::newRow("tucao not JSON") << QByteArray("<html>busy</html>") << 3 << 0;
}

void TestPageLoader::cachedPage()
{
    QFETCH(QByteArray, tucaoBody);
    QFETCH(int, page);
    QFETCH(int, tucao);
    const VORAPageInfoDTO &info = m_pages.at(page);
    const QByteArray cached = "cached bytes, not even an image";
    writeFile(VORAPersistenceManager::pageCacheFileWithPageId(info.pageId), cached);
    const int images = m_env.site->requestCount(imagePathOf(info));
    const int tucaoRequests = m_env.site->requestCount(tucaoPath);
    if (tucaoBody == "cut")
        m_env.site->faults().setDropMidBody(tucaoPath);
    else if (tucaoBody == "none")
        qputenv("QUORIN_API_BASE", "http://127.0.0.1:1/");
    else
        m_env.site->faults().setMalformed(tucaoPath, tucaoBody);

    PageRun load(info);
    QVERIFY(load.run());
    QVERIFY(load.loader->isLoadFinish());
    const SessionRecorder::Page &got = load.recorder.pages.first();
    QCOMPARE(got.index, page);
    QCOMPARE(*got.image, cached);
    QCOMPARE(got.tucao ? int(got.tucao->size()) : -1, tucao);
    QCOMPARE(m_env.site->requestCount(imagePathOf(info)), images);
    if (tucaoBody == "cut")
        QCOMPARE(m_env.site->requestCount(tucaoPath), tucaoRequests + VORAPageDownloadManager::tucaoAttempts);
}

void TestPageLoader::downloadFillsCacheAndBringsTucao()
{
    // Page 0 of the chapter carries more than 200 tucao.
    const VORAPageInfoDTO &info = m_pages.at(0);
    const QString cacheFile = VORAPersistenceManager::pageCacheFileWithPageId(info.pageId);
    QVERIFY(!QFile::exists(cacheFile));
    const int images = m_env.site->requestCount(imagePathOf(info));

    PageRun load(info);
    QVERIFY(load.run());
    const SessionRecorder::Page page = load.recorder.pages.first();
    QVERIFY(page.image);
    QVERIFY(!QImage::fromData(*page.image).isNull());
    QCOMPARE(readFile(cacheFile), *page.image);
    QCOMPARE(m_env.site->requestCount(imagePathOf(info)), images + 1);

    // The first page of them (how a tucao is read is the records suite's).
    QVERIFY(page.tucao);
    QCOMPARE(page.tucao->size(), VORAPageDownloadManager::tucaoPageSize);
    const QUrlQuery query(QString::fromLatin1(m_env.site->lastRequest(tucaoPath).query));
    QCOMPARE(query.queryItemValue("image_id"), info.pageId);
    QCOMPARE(query.queryItemValue("last_id"), QStringLiteral("100000000"));
    QCOMPARE(query.queryItemValue("type"), QStringLiteral("next_page"));
    QVERIFY(!query.hasQueryItem("first_id"));
}

// --- Cancelling ---

void TestPageLoader::cancelledBetweenDownloadAndWrite()
{
    const VORAPageInfoDTO &info = m_pages.at(5);
    const QString cacheFile = VORAPersistenceManager::pageCacheFileWithPageId(info.pageId);
    QVERIFY(!QFile::exists(cacheFile));
    const int images = m_env.site->requestCount(imagePathOf(info));
    const int tucao = m_env.site->requestCount(tucaoPath);

    PageRun load(info);
    VORAPageDownloadManager &loader = *load.loader;
    QSignalSpy ended(&loader, &VORAPageDownloadManager::loadEnded);
    bool hookRan = false;
    VORAPageDownloadManager::setBeforeCacheWriteHookForTesting([&](VORAPageDownloadManager *l) {
        hookRan = !l->imageData().isEmpty();
        l->cancelLoadPage(); // as the main thread would, when the page leaves the set
    });
    loader.startLoadPage();
    QVERIFY(threadGone(loader));
    QCoreApplication::processEvents();
    QVERIFY(hookRan);
    QCOMPARE(m_env.site->requestCount(imagePathOf(info)), images + 1);
    QVERIFY(!QFile::exists(cacheFile));
    QCOMPARE(m_env.site->requestCount(tucaoPath), tucao);
    QVERIFY(load.recorder.pages.isEmpty());
    QVERIFY(ended.isEmpty());
    QVERIFY(!loader.isLoading());
    QVERIFY(!loader.isLoadFinish());

    // Cancelled before it starts working: nothing at all.
    VORAPageDownloadManager early("10001", "40001", info, std::nullopt, load.session.get());
    early.cancelLoadPage();
    early.startLoadPage(); // starting clears the flag: this one loads
    early.cancelLoadPage();
    QVERIFY(threadGone(early));
    QCoreApplication::processEvents();
    QVERIFY(load.recorder.pages.isEmpty());
}

// Leaving the reader while its loaders hang on the site: the session goes at
// once, the loaders stay until their requests give up, then remove themselves
// without a word to anybody.
void TestPageLoader::sessionLeftWhilePagesStall()
{
    const int timeout = ASIHTTPRequest::defaultTimeOutSeconds();
    ASIHTTPRequest::setDefaultTimeOutSeconds(2);
    for (int k = 10; k < 13; ++k)
        m_env.site->faults().setStall(imagePathOf(m_pages.at(k)));

    SessionRecorder recorder;
    auto session = std::make_unique<VORAReadComicManager>("10001", "40001", "kFirstPage");
    session->setDelegate(&recorder);
    session->load();
    QTRY_COMPARE_WITH_TIMEOUT(recorder.infoCalls, 1, 10000);
    QVERIFY(!recorder.lastInfoFailed);
    session->getPageWithIndex(10);
    session->getPageWithIndex(11); // page 9 leaves the set, cancelled
    QList<QPointer<VORAPageDownloadManager>> loaders;
    for (VORAPageDownloadManager *loader : session->pageCache())
        loaders << loader;
    QCOMPARE(loaders.size(), 5);
    QTRY_VERIFY(m_env.site->requestCount(imagePathOf(m_pages.at(12))) > 0);

    session.reset();
    for (const auto &loader : std::as_const(loaders)) {
        QVERIFY(loader); // still running: not deleted (and not waited for) with the session
        QVERIFY(!loader->delegate());
    }
    QTRY_VERIFY_WITH_TIMEOUT(std::all_of(loaders.cbegin(), loaders.cend(), [](const auto &l) { return l.isNull(); }),
                             20000);
    for (const SessionRecorder::Page &page : std::as_const(recorder.pages))
        QVERIFY(page.index != 10 && page.index != 11 && page.index != 12);
    ASIHTTPRequest::setDefaultTimeOutSeconds(timeout);
}

// --- Failures and hostile ids ---

void TestPageLoader::failuresAndHostileIds_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("success");
    QTest::newRow("image answered 404") << "404" << false;
    QTest::newRow("image with an empty body") << "empty" << false;
    QTest::newRow("image host refuses") << "refused" << false;
    QTest::newRow("no url") << "nourl" << false;
    QTest::newRow("page id ../x: loaded, never a path") << "hostile" << true;
    QTest::newRow("downloaded page, unsafe id") << "unsafeLocal" << false;
}

void TestPageLoader::failuresAndHostileIds()
{
    QFETCH(QString, kind);
    QFETCH(bool, success);

    VORAPageInfoDTO info = m_pages.at(kind == QLatin1String("hostile") ? 7 : 8);
    std::optional<QString> localFile;
    if (kind == QLatin1String("404"))
        m_env.site->faults().setErrorStatus(imagePathOf(info), 404, R"({"code":0,"message":"no such image"})");
    else if (kind == QLatin1String("empty"))
        m_env.site->faults().setMalformed(imagePathOf(info), QByteArray());
    else if (kind == QLatin1String("refused"))
        info.url = QStringLiteral("http://127.0.0.1:1/x.jpg");
    else if (kind == QLatin1String("nourl"))
        info.url.clear();
    else if (kind == QLatin1String("hostile"))
        info.pageId = QStringLiteral("../x");
    else if (kind == QLatin1String("unsafeLocal"))
        localFile = VORAPersistenceManager::pageFileWithComicId("10001", "40001", "../../secret");
    const QString cacheDir = VORAUtility::pageCacheDirectory();
    const QStringList before = QDir(cacheDir).entryList(QDir::Files);
    const QStringList appCacheBefore = QDir(VORAUtility::appCacheDirectory()).entryList(QDir::Files);

    PageRun load(info, localFile);
    QVERIFY(load.run());
    QVERIFY(load.loader->isLoadFinish());
    QCOMPARE(load.recorder.pages.first().image.has_value(), success);
    if (!success)
        QVERIFY(!load.recorder.pages.first().tucao);
    // Nothing new in the cache, nothing beside it.
    QCOMPARE(QDir(cacheDir).entryList(QDir::Files), before);
    QCOMPARE(QDir(VORAUtility::appCacheDirectory()).entryList(QDir::Files), appCacheBefore);
}

// --- Files of a downloaded comic ---

void TestPageLoader::downloadedComicFiles()
{
    const QString root = VORAUtility::comicBookDirectory();
    QCOMPARE(VORAPersistenceManager::comicInfoFileWithComicId("5302"), root + "5302/comicInfo.txt");
    QCOMPARE(VORAPersistenceManager::chapterInfoFileWithComicId("5302", "44120"), root + "5302/44120/chapterInfo.txt");
    QCOMPARE(VORAPersistenceManager::pageFileWithComicId("5302", "44120", "889123"), root + "5302/44120/889123.png");
    QCOMPARE(VORAPersistenceManager::tucaoFileWithComicId("5302", "44120", "889123"), root + "5302/44120/889123.txt");
    for (const QString &bad : {QStringLiteral("../5302"), QStringLiteral("a/b"), QStringLiteral(""), QStringLiteral("..")}) {
        QVERIFY(VORAPersistenceManager::comicInfoFileWithComicId(bad).isEmpty());
        QVERIFY(VORAPersistenceManager::chapterInfoFileWithComicId("5302", bad).isEmpty());
        QVERIFY(VORAPersistenceManager::pageFileWithComicId("5302", "44120", bad).isEmpty());
        QVERIFY(VORAPersistenceManager::tucaoFileWithComicId(bad, "44120", "1").isEmpty());
    }
    QVERIFY(!QFileInfo::exists(root + "5302")); // naming a file creates nothing

    // Damaged and foreign files read as nothing.
    const QString chapterFile = VORAPersistenceManager::chapterInfoFileWithComicId("5302", "44120");
    const QString tucaoFile = VORAPersistenceManager::tucaoFileWithComicId("5302", "44120", "889123");
    const QString comicFile = VORAPersistenceManager::comicInfoFileWithComicId("5302");
    QVERIFY(VORAPersistenceManager::loadChapterInfoWithFile(chapterFile).isEmpty());
    QVERIFY(!VORAPersistenceManager::loadTucaoWithFile(tucaoFile));
    writeFile(chapterFile, QByteArray("\xa1\x67\x63hapter", 9));
    QVERIFY(VORAPersistenceManager::loadChapterInfoWithFile(chapterFile).isEmpty());
    VORAComicInfoDTO comic;
    comic.comicId = QStringLiteral("5302");
    VORAPersistenceManager::saveComicInfo(comic, tucaoFile); // another key
    QVERIFY(!VORAPersistenceManager::loadTucaoWithFile(tucaoFile));
    writeFile(comicFile, QByteArray());
    QVERIFY(!VORAPersistenceManager::loadComicInfoWithFile(comicFile));
}

// --- The comic information cache ---

void TestPageLoader::comicCacheBound()
{
    const QString dir = VORAUtility::comicCacheDirectory();
    QDir(dir).removeRecursively();
    VORAComicCache *cache = VORAComicCache::shareComicCacheObj();
    for (int i = 0; i < 12; ++i) {
        VORAComicInfoDTO c;
        c.comicId = QStringLiteral("b%1").arg(i, 2, 10, QLatin1Char('0'));
        VORAPersistenceManager::saveObject(c.toArchive(), QStringLiteral("comic"), VORAComicCache::cacheFileWithComicId(c.comicId));
    }
    const QStringList listed = QDir(dir).entryList(QDir::Files | QDir::NoDotAndDotDot, QDir::Name);
    QCOMPARE(listed.size(), 12);

    VORAComicInfoDTO fresh;
    fresh.comicId = QStringLiteral("new");
    fresh.name = QStringLiteral("新漫画");
    cache->cacheComic(fresh);
    const QStringList after = QDir(dir).entryList(QDir::Files | QDir::NoDotAndDotDot, QDir::Name);
    QCOMPARE(after.size(), 12);
    QVERIFY(!after.contains(listed.first()));
    QCOMPARE(cache->getComicWithComicId("new")->name, fresh.name);
}

QTEST_MAIN(TestPageLoader)
#include "tst_pageloader.moc"
