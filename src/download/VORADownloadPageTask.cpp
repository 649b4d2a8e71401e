#include "download/VORADownloadPageTask.h"

#include "download/DownloadLog.h"

#include "core/VORAUtility.h"
#include "net/ASIHTTPRequest.h"
#include "store/VORAPersistenceManager.h"

#include <QFile>
#include <QUrl>

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
        image = fetchImage(page.url);
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

// One blocking download of the whole body. An error, a status outside 2xx
// (its body is no page image) and an empty body all give nothing.
std::optional<QByteArray> VORADownloadPageTask::fetchImage(const QString &url)
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
