#include "net/VORAGetCloudTagService.h"

#include "core/VORAUtility.h"

#include <QJsonArray>

QString VORAGetCloudTagService::path() const
{
    return QStringLiteral("ios/pad/hot_keywords.php");
}

VORAHttpBaseWebService::Parameters VORAGetCloudTagService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("num"), QString::number(num)});
    return p;
}

void VORAGetCloudTagService::parseResponseString(const QString &responseString)
{
    tagList.clear();
    const QJsonObject o = jsonObjectFromString(responseString).value_or(QJsonObject());
    const QJsonArray items = VORAUtility::jsonArray(o.value(QLatin1String("data")));
    for (const QJsonValue &item : items)
        tagList.append(VORACloudTagDTO::fromJson(item.toObject()));
}
