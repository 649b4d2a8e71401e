#include "download/VORADownloadManager.h"

#include "download/DownloadLog.h"
#include "core/VORANotificationNames.h"
#include "download/VORADownloadPageTask.h"
#include "download/VORADownloadTucaoTask.h"
#include "download/VORAGetDownloadTask.h"

#include "core/VORAUtility.h"
#include "platform/NotificationCenter.h"
#include "store/VORADatabaseManager.h"
#include "store/VORAPersistenceManager.h"

#include <QCoreApplication>
#include <QSet>

namespace names = VORANotificationNames;

namespace {
QVariantMap chapterInfo(const VORADownloadChapterInfoDTO &chapter)
{
    return {{QString::fromLatin1(names::downloadUpdateComicId), chapter.comicId},
            {QString::fromLatin1(names::downloadUpdateChapterId), chapter.chapterId}};
}

QVariantMap chapterInfo(const VORADownloadChapterInfoDTO &chapter, const char *type)
{
    QVariantMap info = chapterInfo(chapter);
    info.insert(QString::fromLatin1(names::downloadUpdateType), QString::fromLatin1(type));
    return info;
}
} // namespace

VORADownloadManager::VORADownloadManager()
    : m_taskQueue(std::make_unique<VORADownloadOperationQueue>(2))
{
}

VORADownloadManager *VORADownloadManager::shareDownloadManagerObj()
{
    // Made once and never released; it belongs to the application's thread.
    static VORADownloadManager *const instance = [] {
        auto *manager = new VORADownloadManager;
        if (QCoreApplication *app = QCoreApplication::instance(); app && manager->thread() != app->thread())
            manager->moveToThread(app->thread());
        return manager;
    }();
    return instance;
}

void VORADownloadManager::setShownScreensQuery(std::function<ShownScreens()> query)
{
    m_shownScreensQuery = std::move(query);
}

VORADownloadManager::ShownScreens VORADownloadManager::shownScreens() const
{
    return m_shownScreensQuery ? m_shownScreensQuery() : ShownScreens{};
}

// --- The queue ---

void VORADownloadManager::beginDownloadChapter(const VORADownloadChapterInfoDTO &chapter)
{
    beginDownloadChapterList({chapter});
}

void VORADownloadManager::beginDownloadChapterList(const QList<VORADownloadChapterInfoDTO> &list)
{
    const bool wasEmpty = m_downloadChaperList.isEmpty();
    m_downloadChaperList.append(list);
    if (wasEmpty && !m_downloadChaperList.isEmpty())
        startHeadChapter();
    postDownloadCountChangeNotification();
}

void VORADownloadManager::stopDownloadChapter(const VORADownloadChapterInfoDTO &chapter)
{
    stopDownloadChapterList({chapter});
}

void VORADownloadManager::stopDownloadChapterList(const QList<VORADownloadChapterInfoDTO> &list)
{
    QSet<QString> ids;
    for (const auto &chapter : list)
        ids.insert(chapter.chapterId);
    const bool headStopped = !m_downloadChaperList.isEmpty() && ids.contains(m_downloadChaperList.first().chapterId);
    m_downloadChaperList.removeIf([&ids](const VORADownloadChapterInfoDTO &c) { return ids.contains(c.chapterId); });
    if (headStopped) {
        m_taskQueue->cancelAllOperations();
        m_getDownloadTask.reset();
        if (!m_downloadChaperList.isEmpty())
            startHeadChapter();
    }
    postDownloadCountChangeNotification();
}

void VORADownloadManager::cancelAllDownload()
{
    m_taskQueue->cancelAllOperations();
    m_getDownloadTask.reset();
    m_downloadChaperList.clear();
    postDownloadCountChangeNotification();
}

int VORADownloadManager::getDownloadStatusWithDownloadChapter(const VORADownloadChapterInfoDTO &chapter) const
{
    if (chapter.isFinishDownload)
        return Finished;
    const auto sameChapter = [&chapter](const VORADownloadChapterInfoDTO &c) { return c.chapterId == chapter.chapterId; };
    if (std::none_of(m_downloadChaperList.cbegin(), m_downloadChaperList.cend(), sameChapter))
        return Stopped;
    return isHead(chapter) ? Downloading : Waiting;
}

void VORADownloadManager::postDownloadCountChangeNotification()
{
    post(names::downloadCountChange,
         {{QString::fromLatin1(names::downloadCount), QString::number(m_downloadChaperList.size())}});
}

void VORADownloadManager::dataUpdate(const StoreSaveNotice &notice)
{
    if (VORADatabaseManager *main = VORAPersistenceManager::getPersistenceManager()->databaseManager())
        main->mergeChangesFromContextDidSave(notice);
}

bool VORADownloadManager::isHead(const VORADownloadChapterInfoDTO &chapter) const
{
    return !m_downloadChaperList.isEmpty() && m_downloadChaperList.first().chapterId == chapter.chapterId;
}

void VORADownloadManager::startHeadChapter()
{
    const VORADownloadChapterInfoDTO &head = m_downloadChaperList.first();
    qCInfo(lcDownload) << "downloading chapter" << head.chapterId << "of comic" << head.comicId;
    m_getDownloadTask = VORAGetDownloadTask::initWithDownloadChapter(head);
    m_getDownloadTask->setTarget(this);
    m_taskQueue->addOperation(m_getDownloadTask);
}

// --- Callbacks ---

void VORADownloadManager::getDownloadTaskFinish(const std::shared_ptr<VORAGetDownloadTask> &task)
{
    const VORADownloadChapterInfoDTO &chapter = task->downloadChapterInfoDTO;
    if (!isHead(chapter))
        return;
    if (m_getDownloadTask == task)
        m_getDownloadTask.reset();
    for (const VORAPageInfoDTO &page : std::as_const(task->pageTaskList)) {
        auto pageTask = VORADownloadPageTask::initWithDownloadChapter(chapter, page);
        pageTask->setTarget(this);
        m_taskQueue->addOperation(pageTask);
    }
    for (const VORAPageInfoDTO &page : std::as_const(task->tucaoTaskList)) {
        auto tucaoTask = VORADownloadTucaoTask::initWithDownloadChapter(chapter, page);
        tucaoTask->setTarget(this);
        m_taskQueue->addOperation(tucaoTask);
    }
}

void VORADownloadManager::getDownloadTaskFail(const VORADownloadChapterInfoDTO &chapter)
{
    endChapter(chapter, Ending::PreparationFailed);
}

void VORADownloadManager::downloadPageTaskFinish(const VORADownloadChapterInfoDTO &chapter)
{
    postFileUpdate(chapter, names::downloadTypePage);
}

void VORADownloadManager::downloadPageTaskFail(const VORADownloadChapterInfoDTO &chapter)
{
    endChapter(chapter, Ending::PageFailed);
}

void VORADownloadManager::downloadTucaoTaskFinish(const VORADownloadChapterInfoDTO &chapter)
{
    postFileUpdate(chapter, names::downloadTypeTucao);
}

void VORADownloadManager::downloadTucaoTaskFail(const VORADownloadChapterInfoDTO &chapter)
{
    endChapter(chapter, Ending::TucaoFailed);
}

void VORADownloadManager::downloadChapterTaskFinish(const VORADownloadChapterInfoDTO &chapter)
{
    endChapter(chapter, Ending::Finished);
}

void VORADownloadManager::postFileUpdate(const VORADownloadChapterInfoDTO &chapter, const char *type)
{
    const QVariantMap info = chapterInfo(chapter, type);
    post(names::downloadUpdate, info);
    const ShownScreens shown = shownScreens();
    if (shown.comicHomePage)
        post(names::comicHomePageViewUpdate, info);
    if (shown.downloadDetailDownloading)
        post(names::downloadDetailUpdate, info);
}

// A chapter leaves the head: finished, or failed in one of three ways. A
// chapter no longer at the head (stopped meanwhile) changes nothing.
void VORADownloadManager::endChapter(const VORADownloadChapterInfoDTO &chapter, Ending ending)
{
    if (!isHead(chapter))
        return;
    m_downloadChaperList.removeFirst();
    m_getDownloadTask.reset();
    if (ending == Ending::PageFailed || ending == Ending::TucaoFailed)
        m_taskQueue->cancelAllOperations();
    if (!m_downloadChaperList.isEmpty())
        startHeadChapter();

    static const char *const messages[] = {
        "'%1'下载完成!",
        "'%1'下载失败，取得章节信息失败!",
        "'%1'下载失败，下载漫画失败!",
        "'%1'下载失败，下载吐槽信息失败!",
    };
    VORAUtility::noticeWithStatusBarWithString(QString::fromUtf8(messages[int(ending)]).arg(chapter.chapterName));

    const ShownScreens shown = shownScreens();
    switch (ending) {
    case Ending::Finished:
        post(names::downloadFinish, chapterInfo(chapter));
        // The detail page is told through its "Fail" notification here too.
        if (shown.comicHomePage)
            post(names::comicHomePageViewFail, chapterInfo(chapter));
        if (shown.downloadDetailDownloading)
            post(names::downloadDetailFinish, chapterInfo(chapter));
        break;
    case Ending::PreparationFailed:
    case Ending::PageFailed: {
        const QVariantMap info =
            ending == Ending::PageFailed ? chapterInfo(chapter, names::downloadTypePage) : chapterInfo(chapter);
        post(names::downloadFail, info);
        if (shown.comicHomePage)
            post(names::comicHomePageViewFail, info);
        if (shown.downloadDetailDownloading)
            post(names::downloadDetailFail, info);
        break;
    }
    case Ending::TucaoFailed:
        post(names::downloadFail, chapterInfo(chapter, names::downloadTypeTucao));
        break;
    }
    postDownloadCountChangeNotification();
}

void VORADownloadManager::post(const char *name, const QVariantMap &userInfo)
{
    NotificationCenter::defaultCenter().post(QString::fromLatin1(name), this, userInfo);
}
