#include "download/VORADownloadRecords.h"

#include "download/VORADownloadManager.h"

#include "core/VORAUtility.h"
#include "store/StoreCoordinator.h"
#include "store/VORADatabaseManager.h"
#include "store/VORAPersistenceManager.h"

#include <QThreadPool>

#include <algorithm>
#include <mutex>

void VORADownloadRecords::queueChapters(const VORADownloadComicInfoDTO &comic,
                                        const QList<VORADownloadChapterInfoDTO> &chapters)
{
    VORADatabaseManager store;
    {
        std::lock_guard<StoreCoordinator> locker(VORADatabaseManager::persistentStoreCoordinator());
        if (!store.getDownloadComicWithComic(comic.comicId))
            store.addDownlaodComicWithComic(comic);
        QList<VORADownloadChapterInfoDTO> added;
        for (const auto &chapter : chapters) {
            const bool known = store.getDownloadChapterWithChapterId(chapter.chapterId)
                || std::any_of(added.cbegin(), added.cend(),
                               [&chapter](const auto &a) { return a.chapterId == chapter.chapterId; });
            if (!known)
                added.append(chapter);
        }
        if (!added.isEmpty())
            store.addDownlaodChapterList(added);
        std::optional<VORADownloadComicInfoDTO> counters = store.getDownloadComicWithComic(comic.comicId);
        if (counters && !added.isEmpty()) {
            for (const auto &chapter : std::as_const(added)) {
                counters->downloadingChapterCount += 1;
                counters->downloadingPageCount += chapter.imageCount;
                counters->downloadingPageSize += chapter.imageSize;
            }
            store.updateDownlaodComicWithComic(*counters);
        }
    }
    VORADownloadManager::shareDownloadManagerObj()->beginDownloadChapterList(chapters);
}

void VORADownloadRecords::deleteChapters(const QString &comicId,
                                                 const QList<VORADownloadChapterInfoDTO> &chapters, Section section)
{
    if (section == Section::Downloading) {
        VORADownloadManager *manager = VORADownloadManager::shareDownloadManagerObj();
        QList<VORADownloadChapterInfoDTO> queued;
        for (const auto &chapter : chapters) {
            const int status = manager->getDownloadStatusWithDownloadChapter(chapter);
            if (status == VORADownloadManager::Downloading || status == VORADownloadManager::Waiting)
                queued.append(chapter);
        }
        if (!queued.isEmpty())
            manager->stopDownloadChapterList(queued);
    }

    QStringList ids;
    for (const auto &chapter : chapters)
        ids.append(chapter.chapterId);
    VORADatabaseManager store;
    {
        std::lock_guard<StoreCoordinator> locker(VORADatabaseManager::persistentStoreCoordinator());
        const QList<VORADownloadChapterInfoDTO> stored = store.getDownloadChapterWithChapterIdList(ids);
        qint64 pages = 0;
        qint64 size = 0;
        for (const auto &chapter : stored) {
            pages += chapter.imageCount;
            size += chapter.imageSize;
        }
        std::optional<VORADownloadComicInfoDTO> comic = store.getDownloadComicWithComic(comicId);
        if (comic) {
            if (section == Section::Downloading) {
                comic->downloadingChapterCount -= stored.size();
                comic->downloadingPageCount = pages;
                comic->downloadingPageSize = size;
            } else {
                comic->downloadChapterCount -= stored.size();
                comic->downloadPageCount = pages;
                comic->downloadPageSize = size;
            }
        }
        store.deleteDownloadChapterList(stored);
        if (comic)
            store.updateDownlaodComicWithComic(*comic);
    }

    QStringList dirs;
    for (const auto &id : std::as_const(ids)) {
        const QString dir = VORAPersistenceManager::chapterDirWithComicId(comicId, id);
        if (!dir.isEmpty())
            dirs.append(dir);
    }
    QThreadPool::globalInstance()->start([dirs]() {
        for (const QString &dir : dirs)
            VORAUtility::deleteDir(dir);
    });
}
