#include "net/VORAAddTucaoService.h"

#include "core/VORAUtility.h"

QString VORAAddTucaoService::path() const
{
    return QStringLiteral("ios/pad/add_tucao.php");
}

int VORAAddTucaoService::q42HttpMethod() const
{
    return 1;
}

VORAHttpBaseWebService::Parameters VORAAddTucaoService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("image_id"), objectId});
    p.append({QStringLiteral("content"), content});
    p.append({QStringLiteral("color"), QStringLiteral("0")});
    p.append({QStringLiteral("back"), QStringLiteral("0")});
    p.append({QStringLiteral("create_time"), QString::number(createTime.isValid() ? createTime.toSecsSinceEpoch() : 0)});
    p.append({QStringLiteral("x"), QString::number(x)});
    p.append({QStringLiteral("y"), QString::number(y)});
    p.append({QStringLiteral("w"), QString::number(width)});
    p.append({QStringLiteral("h"), QString::number(height)});
    return p;
}

void VORAAddTucaoService::parseResponseString(const QString &responseString)
{
    const std::optional<QJsonObject> answer = jsonObjectFromString(responseString);
    const QJsonObject o = answer.value_or(QJsonObject());
    code = VORAUtility::jsonInteger(o.value(QLatin1String("code")));
    message = VORAUtility::jsonString(o.value(QLatin1String("message")));
    tucaoId = VORAUtility::jsonString(o.value(QLatin1String("tucao_id")));
}
