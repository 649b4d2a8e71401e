#include "net/VORADeleteTucaoService.h"

#include "core/VORAUtility.h"

QString VORADeleteTucaoService::path() const
{
    return QStringLiteral("ios/pad/delete_tucao.php");
}

VORAHttpBaseWebService::Parameters VORADeleteTucaoService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("tucao_id"), tucaoId});
    p.append({QStringLiteral("comic_id"), comicId});
    return p;
}

void VORADeleteTucaoService::parseResponseString(const QString &responseString)
{
    const std::optional<QJsonObject> answer = jsonObjectFromString(responseString);
    const QJsonObject o = answer.value_or(QJsonObject());
    code = VORAUtility::jsonInteger(o.value(QLatin1String("code")));
    message = VORAUtility::jsonString(o.value(QLatin1String("message")));
}
