#include "download/VORADownloadPageTask.h"

#include "download/DownloadLog.h"

#include "core/VORAUtility.h"
#include "reader/VORAPageDownloadManager.h"
#include "reader/VORAReadComicManager.h"
#include "store/VORAPersistenceManager.h"

#include <QFile>

std::shared_ptr<VORADownloadPageTask> VORADownloadPageTask::initWithDownloadChapter(const VORADownloadChapterInfoDTO &chapter,
                                                                                   const VORAPageInfoDTO &page)
{
    return std::make_shared<VORADownloadPageTask>(chapter, page);
}

bool VORADownloadPageTask::storeFile()
{
    const QString path = VORAPersistenceManager::pageFileWithComicId(downloadChapter.comicId, downloadChapter.chapterId,
                                                                     page.pageId);
    if (path.isEmpty()) {
        qCWarning(lcDownload) << "page" << page.pageId << "of chapter" << downloadChapter.chapterId
                              << "names no safe file; nothing written";
        return false;
    }
    std::optional<QByteArray> image;
    for (int attempt = 1; attempt <= attempts && !image; ++attempt)
        image = VORAPageDownloadManager::downloadImage(page.url);
    if (!image) {
        qCInfo(lcDownload) << "page" << page.pageId << "not fetched after" << attempts << "attempts";
        return false;
    }
    VORAUtility::createDir(VORAPersistenceManager::chapterDirWithComicId(downloadChapter.comicId, downloadChapter.chapterId));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(*image) != image->size()) {
        qCWarning(lcDownload) << "page file not written:" << path << file.errorString();
        return false;
    }
    return true;
}
