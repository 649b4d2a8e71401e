#include "download/VORAGetDownloadTask.h"

#include "download/DownloadLog.h"
#include "download/VORADownloadManager.h"

#include "core/VORAUtility.h"
#include "net/VORAGetChapterInfoService.h"
#include "store/VORADatabaseManager.h"
#include "store/VORAPersistenceManager.h"

#include <QSet>

#include <exception>

namespace {
QSet<QString> completedIds(const QString &joined)
{
    if (joined.isEmpty())
        return {};
    const QStringList ids = joined.split(QLatin1Char(','));
    return QSet<QString>(ids.cbegin(), ids.cend());
}
} // namespace

VORAGetDownloadTask::VORAGetDownloadTask(const VORADownloadChapterInfoDTO &chapter)
    : downloadChapterInfoDTO(chapter)
{
}

std::shared_ptr<VORAGetDownloadTask> VORAGetDownloadTask::initWithDownloadChapter(const VORADownloadChapterInfoDTO &chapter)
{
    return std::make_shared<VORAGetDownloadTask>(chapter);
}

void VORAGetDownloadTask::main()
{
    if (isCancelled())
        return;
    try {
        prepare();
    } catch (const std::exception &e) {
        qCWarning(lcDownload) << "preparing chapter" << downloadChapterInfoDTO.chapterId << "failed:" << e.what();
        const VORADownloadChapterInfoDTO chapter = downloadChapterInfoDTO;
        reportToTarget([chapter](VORADownloadManager *m) { m->getDownloadTaskFail(chapter); });
    }
}

void VORAGetDownloadTask::prepare()
{
    const VORADownloadChapterInfoDTO chapter = downloadChapterInfoDTO;
    const std::optional<QList<VORAPageInfoDTO>> pages = getPageInfo();
    if (!pages || pages->isEmpty()) {
        qCInfo(lcDownload) << "no page list for chapter" << chapter.chapterId;
        reportToTarget([chapter](VORADownloadManager *m) { m->getDownloadTaskFail(chapter); });
        return;
    }

    VORADatabaseManager store;
    const std::optional<VORADownloadChapterInfoDTO> stored = store.getDownloadChapterWithChapterId(chapter.chapterId);
    if (stored && stored->downloadPercent() == 100) {
        reportToTarget([chapter](VORADownloadManager *m) { m->downloadChapterTaskFinish(chapter); });
        return;
    }
    // Without a record nothing could be recorded: no task is made and the
    // chapter stays at the head until it is stopped.
    if (stored) {
        const QSet<QString> pagesDone = completedIds(stored->pageCompleteIds);
        const QSet<QString> tucaoDone = completedIds(stored->tucaoCompleteIds);
        for (const VORAPageInfoDTO &page : *pages) {
            if (!pagesDone.contains(page.pageId))
                pageTaskList.append(page);
            if (!tucaoDone.contains(page.pageId))
                tucaoTaskList.append(page);
        }
    }
    // The queued call holds the task, so the lists outlive the queue's copy.
    auto self = std::static_pointer_cast<VORAGetDownloadTask>(shared_from_this());
    reportToTarget([self](VORADownloadManager *m) { m->getDownloadTaskFinish(self); });
}

std::optional<QList<VORAPageInfoDTO>> VORAGetDownloadTask::getPageInfo() const
{
    const VORADownloadChapterInfoDTO &chapter = downloadChapterInfoDTO;
    const QString infoFile = VORAPersistenceManager::chapterInfoFileWithComicId(chapter.comicId, chapter.chapterId);
    if (infoFile.isEmpty()) {
        qCWarning(lcDownload) << "chapter" << chapter.chapterId << "of comic" << chapter.comicId
                              << "names no safe directory";
        return std::nullopt;
    }
    const QList<VORAPageInfoDTO> kept = VORAPersistenceManager::loadChapterInfoWithFile(infoFile);
    if (!kept.isEmpty())
        return kept;

    VORAGetChapterInfoService service;
    service.chapterId = chapter.chapterId;
    service.synchronousRequest();
    if (service.error()) {
        qCInfo(lcDownload) << "chapter" << chapter.chapterId << "page list not fetched:"
                           << service.error()->localizedDescription;
        return std::nullopt;
    }
    const QList<VORAPageInfoDTO> pages = service.pageList().value_or(QList<VORAPageInfoDTO>());
    // Stopped while asking: the chapter may have been deleted meanwhile, and
    // its directory must not come back. The list is fetched again next time.
    if (isCancelled())
        return pages;
    VORAUtility::createDir(VORAPersistenceManager::chapterDirWithComicId(chapter.comicId, chapter.chapterId));
    VORAPersistenceManager::saveChapterInfo(pages, infoFile);
    return pages;
}
