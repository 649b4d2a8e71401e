#include "net/VORAGetSearchKeyword.h"

#include "core/VORAUtility.h"

#include <QJsonArray>

QString VORAGetSearchKeyword::path() const
{
    return QStringLiteral("ios/pad/search.php");
}

VORAHttpBaseWebService::Parameters VORAGetSearchKeyword::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("q"), urlParameterEscape(keywordString)});
    p.append({QStringLiteral("page"), QString::number(page)});
    p.append({QStringLiteral("from"), QStringLiteral("appstore4")});
    return p;
}

void VORAGetSearchKeyword::parseResponseString(const QString &responseString)
{
    searchArray.clear();
    const QJsonObject o = jsonObjectFromString(responseString).value_or(QJsonObject());
    countTotal = VORAUtility::jsonInteger(o.value(QLatin1String("total")));
    const QJsonArray items = VORAUtility::jsonArray(o.value(QLatin1String("data")));
    for (const QJsonValue &item : items)
        searchArray.append(VORASearchListDTO::fromJson(item.toObject()));
}
