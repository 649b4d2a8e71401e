#include "net/VORAGetChapterInfoService.h"

#include "core/VORAUtility.h"

QString VORAGetChapterInfoService::path() const
{
    return QStringLiteral("ios/pad/chapter_127.php");
}

VORAHttpBaseWebService::Parameters VORAGetChapterInfoService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("chapter_id"), chapterId});
    p.append({QStringLiteral("webp"), isWebp ? QStringLiteral("1") : QStringLiteral("0")});
    return p;
}

void VORAGetChapterInfoService::parseResponseString(const QString &responseString)
{
    chapterData = jsonObjectFromString(responseString);
}

std::optional<QList<VORAPageInfoDTO>> VORAGetChapterInfoService::pageList() const
{
    if (!chapterData)
        return std::nullopt;
    return VORAPageInfoDTO::parseChapterData(*chapterData);
}
