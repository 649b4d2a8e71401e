#include "VORADownloadChapterInfoDTO.h"

namespace {
qint64 countItems(const QString &ids)
{
    return ids.isEmpty() ? 0 : ids.count(QLatin1Char(',')) + 1;
}
} // namespace

qint64 VORADownloadChapterInfoDTO::pageCompleteCount() const
{
    return countItems(pageCompleteIds);
}

qint64 VORADownloadChapterInfoDTO::tucaoCompleteCount() const
{
    return countItems(tucaoCompleteIds);
}

qint64 VORADownloadChapterInfoDTO::downloadPercent() const
{
    if (imageCount <= 0)
        return 0;
    return (pageCompleteCount() + tucaoCompleteCount()) * 100 / (imageCount * 2);
}

int VORADownloadChapterInfoDTO::downloadChapterIndexCompare(const VORADownloadChapterInfoDTO &a,
                                                            const VORADownloadChapterInfoDTO &b)
{
    if (a.chapterIndex < b.chapterIndex)
        return -1;
    return a.chapterIndex > b.chapterIndex ? 1 : 0;
}
