#include "net/VORASearchListDTO.h"

#include "net/VORAQ42IpadWebServiceUtility.h"

#include "core/VORAUtility.h"

VORASearchListDTO VORASearchListDTO::fromJson(const QJsonObject &item)
{
    VORASearchListDTO dto;
    dto.comicId = VORAUtility::jsonString(item.value(QLatin1String("comic_id")));
    dto.comicName = VORAUtility::jsonString(item.value(QLatin1String("name")));
    dto.comicCover = VORAUtility::jsonString(item.value(QLatin1String("cover")));
    dto.comicDescription = VORAUtility::jsonString(item.value(QLatin1String("description")));
    dto.comicAuthor = VORAUtility::jsonString(item.value(QLatin1String("nick_name")));
    dto.setArredit(VORAQ42IpadWebServiceUtility::comicAccreditWithString(item.value(QLatin1String("accredit"))));
    dto.lastUpdate = VORAUtility::dateFromSeconds(
        VORAUtility::jsonInteger(item.value(QLatin1String("last_update_time"))));
    return dto;
}
