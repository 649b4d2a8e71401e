#include "net/VORAComicTopInfoDTO.h"

#include "core/VORAUtility.h"

VORAComicTopInfoDTO VORAComicTopInfoDTO::fromJson(const QJsonObject &item)
{
    VORAComicTopInfoDTO top;
    top.comicId = VORAUtility::jsonString(item.value(QLatin1String("comic_id")));
    top.chapterId = VORAUtility::jsonString(item.value(QLatin1String("chapter_id")));
    top.urlLocation = VORAUtility::jsonString(item.value(QLatin1String("location")));
    return top;
}

QCborMap VORAComicTopInfoDTO::toArchive() const
{
    QCborMap map;
    map.insert(QLatin1String("comicId"), comicId);
    map.insert(QLatin1String("chapterId"), chapterId);
    map.insert(QLatin1String("urlLocation"), urlLocation);
    return map;
}

VORAComicTopInfoDTO VORAComicTopInfoDTO::fromArchive(const QCborMap &map)
{
    VORAComicTopInfoDTO top;
    top.comicId = map.value(QLatin1String("comicId")).toString();
    top.chapterId = map.value(QLatin1String("chapterId")).toString();
    top.urlLocation = map.value(QLatin1String("urlLocation")).toString();
    return top;
}
