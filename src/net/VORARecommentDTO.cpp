#include "net/VORARecommentDTO.h"

#include "net/VORAQ42IpadWebServiceUtility.h"

#include "core/VORAUtility.h"

#include <QCborValue>

VORARecommentDTO VORARecommentDTO::fromJson(const QJsonObject &item)
{
    VORARecommentDTO dto;
    dto.comicId = VORAUtility::jsonString(item.value(QLatin1String("comic_id")));
    dto.comicName = VORAUtility::jsonString(item.value(QLatin1String("name")));
    dto.comicCover = VORAUtility::jsonString(item.value(QLatin1String("cover")));
    dto.comicAuthor = VORAUtility::jsonString(item.value(QLatin1String("author_name")));
    dto.comicDescription = VORAUtility::jsonString(item.value(QLatin1String("description")));
    dto.comicAccredit =
        VORAQ42IpadWebServiceUtility::comicAccreditWithString(item.value(QLatin1String("accredit")));
    dto.comicClickTotal =
        VORAQ42IpadWebServiceUtility::formatClickTotal(item.value(QLatin1String("click_total")));
    dto.comicLastUpdate = VORAUtility::dateFromSeconds(
        VORAUtility::jsonInteger(item.value(QLatin1String("last_update_time"))));
    return dto;
}

QCborMap VORARecommentDTO::toArchive() const
{
    QCborMap map;
    map.insert(QLatin1String("comicId"), comicId);
    map.insert(QLatin1String("comicName"), comicName);
    map.insert(QLatin1String("comicAuthor"), comicAuthor);
    map.insert(QLatin1String("comicCover"), comicCover);
    map.insert(QLatin1String("comicLastUpdate"), QCborValue(comicLastUpdate));
    map.insert(QLatin1String("comicClickTotal"), comicClickTotal);
    map.insert(QLatin1String("comicDescription"), comicDescription);
    map.insert(QLatin1String("comicAccredit"), comicAccredit);
    return map;
}

VORARecommentDTO VORARecommentDTO::fromArchive(const QCborMap &map)
{
    VORARecommentDTO dto;
    dto.comicId = map.value(QLatin1String("comicId")).toString();
    dto.comicName = map.value(QLatin1String("comicName")).toString();
    dto.comicAuthor = map.value(QLatin1String("comicAuthor")).toString();
    dto.comicCover = map.value(QLatin1String("comicCover")).toString();
    dto.comicLastUpdate = map.value(QLatin1String("comicLastUpdate")).toDateTime().toUTC();
    dto.comicClickTotal = map.value(QLatin1String("comicClickTotal")).toString();
    dto.comicDescription = map.value(QLatin1String("comicDescription")).toString();
    dto.comicAccredit = static_cast<qint32>(map.value(QLatin1String("comicAccredit")).toInteger());
    return dto;
}
