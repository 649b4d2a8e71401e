#include "net/VORAUpdateTucaoService.h"

#include "core/VORAUtility.h"

QString VORAUpdateTucaoService::path() const
{
    return QStringLiteral("ios/pad/edit_tucao.php");
}

VORAHttpBaseWebService::Parameters VORAUpdateTucaoService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("tucao_id"), tucaoId});
    p.append({QStringLiteral("x"), QString::number(x)});
    p.append({QStringLiteral("y"), QString::number(y)});
    p.append({QStringLiteral("width"), QString::number(width)});
    p.append({QStringLiteral("height"), QString::number(height)});
    return p;
}

void VORAUpdateTucaoService::parseResponseString(const QString &responseString)
{
    const std::optional<QJsonObject> answer = jsonObjectFromString(responseString);
    const QJsonObject o = answer.value_or(QJsonObject());
    code = VORAUtility::jsonInteger(o.value(QLatin1String("code")));
    message = VORAUtility::jsonString(o.value(QLatin1String("message")));
}
