#include "download/VORADownloadFileTask.h"

#include "download/DownloadLog.h"
#include "download/VORADownloadManager.h"

#include "core/VORAUtility.h"
#include "store/StoreCoordinator.h"
#include "store/VORADatabaseManager.h"

#include <exception>
#include <mutex>

VORADownloadFileTask::VORADownloadFileTask(const VORADownloadChapterInfoDTO &chapter, const VORAPageInfoDTO &page)
    : downloadChapter(chapter)
    , page(page)
    , operataionName(VORAUtility::generateUUID())
{
}

void VORADownloadFileTask::main()
{
    if (isCancelled())
        return;
    const VORADownloadChapterInfoDTO chapter = downloadChapter;
    const FileKind fileKind = kind();
    bool stored = false;
    bool finished = false;
    try {
        stored = storeFile();
        if (stored)
            finished = recordFile(chapter, page.pageId, fileKind);
    } catch (const std::exception &e) {
        qCWarning(lcDownload) << "file of page" << page.pageId << "failed:" << e.what();
        stored = false;
    }
    if (!stored) {
        reportToTarget([chapter, fileKind](VORADownloadManager *m) {
            if (fileKind == FileKind::Page)
                m->downloadPageTaskFail(chapter);
            else
                m->downloadTucaoTaskFail(chapter);
        });
        return;
    }
    reportToTarget([chapter, fileKind, finished](VORADownloadManager *m) {
        if (fileKind == FileKind::Page)
            m->downloadPageTaskFinish(chapter);
        else
            m->downloadTucaoTaskFinish(chapter);
        if (finished)
            m->downloadChapterTaskFinish(chapter);
    });
}

bool VORADownloadFileTask::recordFile(const VORADownloadChapterInfoDTO &chapter, const QString &pageId, FileKind kind)
{
    // The main-thread store instance merges this instance's saves on its own
    // (VORAPersistenceManager routes every save to the manager's dataUpdate).
    VORADatabaseManager store;
    std::lock_guard<StoreCoordinator> locker(VORADatabaseManager::persistentStoreCoordinator());

    std::optional<VORADownloadChapterInfoDTO> stored = store.getDownloadChapterWithChapterId(chapter.chapterId);
    std::optional<VORADownloadComicInfoDTO> comic = store.getDownloadComicWithComic(chapter.comicId);
    if (!stored)
        return false;
    QString &ids = kind == FileKind::Page ? stored->pageCompleteIds : stored->tucaoCompleteIds;
    if (!ids.isEmpty() && ids.split(QLatin1Char(',')).contains(pageId))
        return false;
    ids = ids.isEmpty() ? pageId : ids + QLatin1Char(',') + pageId;

    const bool finished = stored->downloadPercent() == 100;
    if (finished) {
        stored->isFinishDownload = true;
        if (comic) {
            comic->downloadChapterCount += 1;
            comic->downloadPageCount += chapter.imageCount;
            comic->downloadPageSize += chapter.imageSize;
            comic->downloadingChapterCount -= 1;
            comic->downloadingPageCount -= chapter.imageCount;
            comic->downloadingPageSize -= chapter.imageSize;
            comic->downloadingCompletePageCount += (kind == FileKind::Page ? 1 : 0) - chapter.imageCount;
            comic->downloadingCompleteTucaoCount += (kind == FileKind::Tucao ? 1 : 0) - chapter.imageCount;
        }
    } else if (comic) {
        if (kind == FileKind::Page)
            comic->downloadingCompletePageCount += 1;
        else
            comic->downloadingCompleteTucaoCount += 1;
    }
    store.updateDownloadChapter(*stored);
    if (comic)
        store.updateDownlaodComicWithComic(*comic);
    return finished;
}
