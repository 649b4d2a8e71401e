#include "download/VORADownloadTucaoTask.h"

#include "download/DownloadLog.h"

#include "core/VORAUtility.h"
#include "net/VORAGetTucaoService.h"
#include "store/VORAPersistenceManager.h"

std::shared_ptr<VORADownloadTucaoTask> VORADownloadTucaoTask::initWithDownloadChapter(const VORADownloadChapterInfoDTO &chapter,
                                                                                     const VORAPageInfoDTO &page)
{
    return std::make_shared<VORADownloadTucaoTask>(chapter, page);
}

bool VORADownloadTucaoTask::storeFile()
{
    const QString path = VORAPersistenceManager::tucaoFileWithComicId(downloadChapter.comicId, downloadChapter.chapterId,
                                                                      page.pageId);
    if (path.isEmpty()) {
        qCWarning(lcDownload) << "tucao of page" << page.pageId << "names no safe file; nothing written";
        return false;
    }
    VORAGetTucaoService service;
    service.pageId = page.pageId;
    service.lastId = QStringLiteral("100000000");
    service.pageSize = pageSize;
    service.isNext = true;
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        service.synchronousRequest();
        if (!service.error())
            break;
    }
    if (service.error()) {
        qCInfo(lcDownload) << "tucao of page" << page.pageId << "not fetched after" << attempts << "attempts";
        return false;
    }
    const QList<VORATucao> tucao = VORATucao::listFromJson(service.jsonTucao).mid(0, pageSize);
    VORAUtility::createDir(VORAPersistenceManager::chapterDirWithComicId(downloadChapter.comicId, downloadChapter.chapterId));
    VORAPersistenceManager::saveTucao(tucao, path);
    return true;
}
