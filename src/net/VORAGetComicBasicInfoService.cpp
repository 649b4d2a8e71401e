#include "net/VORAGetComicBasicInfoService.h"

#include "core/VORAUtility.h"

QString VORAGetComicBasicInfoService::path() const
{
    return QStringLiteral("ios/pad/comic_127.php");
}

VORAHttpBaseWebService::Parameters VORAGetComicBasicInfoService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("comic_id"), comicId});
    return p;
}

void VORAGetComicBasicInfoService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}

std::optional<VORAComicInfoDTO> VORAGetComicBasicInfoService::comicInfo() const
{
    if (!data)
        return std::nullopt;
    return VORAComicInfoDTO::parseData(*data, comicId);
}
