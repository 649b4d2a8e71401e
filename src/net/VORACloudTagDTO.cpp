#include "net/VORACloudTagDTO.h"

#include "core/VORAUtility.h"

VORACloudTagDTO VORACloudTagDTO::fromJson(const QJsonObject &item)
{
    VORACloudTagDTO dto;
    dto.cloudNum = VORAUtility::jsonString(item.value(QLatin1String("search_num")));
    dto.cloudTag = VORAUtility::jsonString(item.value(QLatin1String("tag")));
    return dto;
}

QCborMap VORACloudTagDTO::toArchive() const
{
    QCborMap map;
    map.insert(QLatin1String("cloudNum"), cloudNum);
    map.insert(QLatin1String("cloudTag"), cloudTag);
    return map;
}

VORACloudTagDTO VORACloudTagDTO::fromArchive(const QCborMap &map)
{
    return VORACloudTagDTO{map.value(QLatin1String("cloudNum")).toString(),
                           map.value(QLatin1String("cloudTag")).toString()};
}
