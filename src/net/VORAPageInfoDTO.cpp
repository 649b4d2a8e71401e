#include "net/VORAPageInfoDTO.h"

#include "core/VORAUtility.h"

#include <QJsonArray>

QList<VORAPageInfoDTO> VORAPageInfoDTO::parseChapterData(const QJsonObject &chapterData)
{
    QList<VORAPageInfoDTO> pages;
    const QJsonArray data = VORAUtility::jsonArray(chapterData.value(QLatin1String("data")));
    pages.reserve(data.size());
    for (int i = 0; i < data.size(); ++i)
        pages.append(fromJson(data.at(i).toObject(), i));
    return pages;
}

VORAPageInfoDTO VORAPageInfoDTO::fromJson(const QJsonObject &item, int index)
{
    VORAPageInfoDTO page;
    page.pageId = VORAUtility::jsonString(item.value(QLatin1String("image_id")));
    page.url = VORAUtility::jsonString(item.value(QLatin1String("location")));
    page.width = static_cast<qint32>(VORAUtility::jsonInteger(item.value(QLatin1String("width"))));
    page.height = static_cast<qint32>(VORAUtility::jsonInteger(item.value(QLatin1String("height"))));
    page.tucaoTotal = static_cast<qint32>(VORAUtility::jsonInteger(item.value(QLatin1String("total_tucao"))));
    page.index = index;
    return page;
}

QCborMap VORAPageInfoDTO::toArchive() const
{
    QCborMap map;
    map.insert(QLatin1String("pageId"), pageId);
    map.insert(QLatin1String("url"), url);
    map.insert(QLatin1String("width"), width);
    map.insert(QLatin1String("height"), height);
    map.insert(QLatin1String("tucaoTotal"), tucaoTotal);
    map.insert(QLatin1String("index"), index);
    return map;
}

VORAPageInfoDTO VORAPageInfoDTO::fromArchive(const QCborMap &map)
{
    VORAPageInfoDTO page;
    page.pageId = map.value(QLatin1String("pageId")).toString();
    page.url = map.value(QLatin1String("url")).toString();
    page.width = static_cast<int>(map.value(QLatin1String("width")).toInteger());
    page.height = static_cast<int>(map.value(QLatin1String("height")).toInteger());
    page.tucaoTotal = static_cast<int>(map.value(QLatin1String("tucaoTotal")).toInteger());
    page.index = static_cast<int>(map.value(QLatin1String("index")).toInteger());
    return page;
}
