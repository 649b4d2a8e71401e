#include "net/VORASlideComicDTO.h"

#include "net/VORAQ42IpadWebServiceUtility.h"

#include "core/VORAUtility.h"

VORASlideComicDTO VORASlideComicDTO::fromJson(const QJsonObject &item)
{
    VORASlideComicDTO dto;
    dto.comicId = VORAUtility::jsonString(item.value(QLatin1String("comic_id")));
    dto.comicName = VORAUtility::jsonString(item.value(QLatin1String("comic_name")));
    dto.comicCover = VORAUtility::jsonString(item.value(QLatin1String("image")));
    dto.comicTitle = VORAUtility::jsonString(item.value(QLatin1String("title")));
    dto.comicUrl = VORAUtility::jsonString(item.value(QLatin1String("url")));
    dto.comicSort = VORAUtility::jsonInteger(item.value(QLatin1String("sort")));
    dto.slideType = VORAQ42IpadWebServiceUtility::SlideTypeWithString(item.value(QLatin1String("type")));
    return dto;
}

QCborMap VORASlideComicDTO::toArchive() const
{
    QCborMap map;
    map.insert(QLatin1String("comicId"), comicId);
    map.insert(QLatin1String("comicName"), comicName);
    map.insert(QLatin1String("comicCover"), comicCover);
    map.insert(QLatin1String("comicTitle"), comicTitle);
    map.insert(QLatin1String("comicUrl"), comicUrl);
    map.insert(QLatin1String("comicSort"), comicSort);
    map.insert(QLatin1String("slideType"), slideType);
    return map;
}

VORASlideComicDTO VORASlideComicDTO::fromArchive(const QCborMap &map)
{
    VORASlideComicDTO dto;
    dto.comicId = map.value(QLatin1String("comicId")).toString();
    dto.comicName = map.value(QLatin1String("comicName")).toString();
    dto.comicCover = map.value(QLatin1String("comicCover")).toString();
    dto.comicTitle = map.value(QLatin1String("comicTitle")).toString();
    dto.comicUrl = map.value(QLatin1String("comicUrl")).toString();
    dto.comicSort = map.value(QLatin1String("comicSort")).toInteger();
    dto.slideType = static_cast<qint32>(map.value(QLatin1String("slideType")).toInteger());
    return dto;
}
