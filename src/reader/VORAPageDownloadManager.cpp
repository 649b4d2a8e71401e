#include "reader/VORAPageDownloadManager.h"

#include "core/VORAUtility.h"
#include "net/ASIHTTPRequest.h"
#include "net/VORAGetTucaoService.h"
#include "reader/ReaderLog.h"
#include "reader/VORAReadComicManager.h"
#include "store/VORAPersistenceManager.h"

#include <QFile>
#include <QMutex>
#include <QMutexLocker>
#include <QThread>
#include <QUrl>

namespace {
QMutex &hookLock()
{
    static QMutex lock;
    return lock;
}

std::function<void(VORAPageDownloadManager *)> &beforeCacheWriteHook()
{
    static std::function<void(VORAPageDownloadManager *)> hook;
    return hook;
}

std::optional<QByteArray> readWholeFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

} // namespace

std::optional<QByteArray> VORAPageDownloadManager::downloadImage(const QString &url)
{
    const QUrl address(url);
    if (url.isEmpty() || !address.isValid())
        return std::nullopt;
    ASIHTTPRequest request(address);
    request.startSynchronous();
    const int status = request.responseStatusCode();
    if (request.error() || status < 200 || status > 299 || request.responseData().isEmpty())
        return std::nullopt;
    return request.responseData();
}

VORAPageDownloadManager::VORAPageDownloadManager(const QString &comicId, const QString &chapterId,
                                                 const VORAPageInfoDTO &page,
                                                 const std::optional<QString> &localFile,
                                                 VORAReadComicManager *delegate, QObject *parent)
    : QObject(parent)
    , m_comicId(comicId)
    , m_chapterId(chapterId)
    , m_pageInfoDTO(page)
    , m_localFile(localFile)
    , m_delegate(delegate)
{
}

VORAPageDownloadManager::~VORAPageDownloadManager()
{
    // The load thread writes into this object: it must be over before the
    // object goes. The session never gets here with a thread running (it uses
    // releaseWhenDone()); anybody else waits for the current step to end.
    const QList<QThread *> threads = findChildren<QThread *>(QString(), Qt::FindDirectChildrenOnly);
    for (QThread *thread : threads)
        thread->wait();
}

void VORAPageDownloadManager::setBeforeCacheWriteHookForTesting(std::function<void(VORAPageDownloadManager *)> hook)
{
    QMutexLocker locker(&hookLock());
    beforeCacheWriteHook() = std::move(hook);
}

void VORAPageDownloadManager::startLoadPage()
{
    QThread *thread = QThread::create([this]() { loadPage(); });
    thread->setParent(this);
    thread->setObjectName(QStringLiteral("page ") + m_pageInfoDTO.pageId);
    connect(thread, &QThread::finished, this, [this, thread]() { threadEnded(thread); });
    m_loadThread = thread;
    ++m_runningThreads;
    m_isCancel = false;
    m_isLoading = true;
    m_isLoadFinish = false;
    thread->start();
}

void VORAPageDownloadManager::cancelLoadPage()
{
    m_isCancel = true;
}

void VORAPageDownloadManager::releaseWhenDone()
{
    m_releaseRequested = true;
    if (m_runningThreads == 0)
        deleteLater();
}

void VORAPageDownloadManager::threadEnded(QThread *thread)
{
    if (m_loadThread == thread)
        m_loadThread = nullptr;
    thread->deleteLater();
    --m_runningThreads;
    if (m_releaseRequested && m_runningThreads == 0)
        deleteLater();
}

// --- On the loader's thread ---

void VORAPageDownloadManager::loadPage()
{
    if (m_isCancel) {
        m_isLoading = false;
        return;
    }

    if (m_localFile) {
        // A downloaded chapter: its files only, no network.
        const std::optional<QByteArray> bytes =
            m_localFile->isEmpty() ? std::nullopt : readWholeFile(*m_localFile);
        if (!bytes) {
            qCWarning(lcReader) << "downloaded page missing:" << m_pageInfoDTO.pageId << *m_localFile;
            report(false);
            return;
        }
        m_imageData = *bytes;
        m_tucao = VORAPersistenceManager::loadTucaoWithFile(
            VORAPersistenceManager::tucaoFileWithComicId(m_comicId, m_chapterId, m_pageInfoDTO.pageId));
        report(true);
        return;
    }

    // The page cache is keyed by page id alone; an id that is no safe file name
    // has no cache file. The directory comes back here after a cache clearing.
    VORAUtility::createDir(VORAUtility::pageCacheDirectory());
    const QString cacheFile = VORAPersistenceManager::pageCacheFileWithPageId(m_pageInfoDTO.pageId);
    std::optional<QByteArray> cached;
    if (!cacheFile.isEmpty() && QFile::exists(cacheFile))
        cached = readWholeFile(cacheFile);
    if (cached) {
        m_imageData = *cached;
    } else {
        const std::optional<QByteArray> body = downloadImage(m_pageInfoDTO.url);
        if (!body) {
            qCInfo(lcReader) << "page image not loaded:" << m_pageInfoDTO.pageId;
            report(false);
            return;
        }
        m_imageData = *body;
        std::function<void(VORAPageDownloadManager *)> hook;
        {
            QMutexLocker locker(&hookLock());
            hook = beforeCacheWriteHook();
        }
        if (hook)
            hook(this);
        if (!m_isCancel && !cacheFile.isEmpty()) {
            QFile file(cacheFile);
            // A failed cache write only costs a download next time.
            if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(m_imageData) != m_imageData.size())
                qCWarning(lcReader) << "page cache write failed:" << cacheFile;
        }
        if (m_isCancel) {
            m_isLoading = false;
            return;
        }
    }

    m_tucao = fetchTucao();
    report(true);
}

std::optional<QList<VORATucao>> VORAPageDownloadManager::fetchTucao() const
{
    for (int attempt = 1; attempt <= tucaoAttempts; ++attempt) {
        VORAGetTucaoService service;
        service.pageId = m_pageInfoDTO.pageId;
        service.lastId = tucaoLastId;
        service.pageSize = tucaoPageSize;
        service.isNext = true;
        service.synchronousRequest();
        if (!service.error())
            return VORATucao::listFromJson(service.jsonTucao);
        qCInfo(lcReader) << "tucao of page" << m_pageInfoDTO.pageId << "attempt" << attempt << "failed:"
                         << service.error()->localizedDescription;
    }
    return std::nullopt;
}

void VORAPageDownloadManager::report(bool success)
{
    QMetaObject::invokeMethod(this, success ? "loadPageDidFinished" : "loadPageDidFail", Qt::QueuedConnection);
}

// --- On the main thread ---

void VORAPageDownloadManager::loadPageDidFinished()
{
    m_isLoadFinish = true;
    m_isLoading = false;
    if (!m_isCancel && m_delegate)
        m_delegate->pageDownloadDidFinished(this, nullptr);
    emit loadEnded();
}

void VORAPageDownloadManager::loadPageDidFail()
{
    m_isLoadFinish = true;
    m_isLoading = false;
    if (!m_isCancel && m_delegate) {
        const NetError error;
        m_delegate->pageDownloadDidFinished(this, &error);
    }
    emit loadEnded();
}
