#include "net/VORAGetAuthenticateQ42UserService.h"

#include "core/VORAUtility.h"

QString VORAGetAuthenticateQ42UserService::path() const
{
    return QStringLiteral("ios/pad/login.php");
}

VORAHttpBaseWebService::Parameters VORAGetAuthenticateQ42UserService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("username"), urlParameterEscape(userName)});
    p.append({QStringLiteral("password"), urlParameterEscape(password)});
    return p;
}

void VORAGetAuthenticateQ42UserService::parseResponseString(const QString &responseString)
{
    const std::optional<QJsonObject> answer = jsonObjectFromString(responseString);
    const QJsonObject o = answer.value_or(QJsonObject());
    code = VORAUtility::jsonInteger(o.value(QLatin1String("code")));
    message = VORAUtility::jsonString(o.value(QLatin1String("message")));
    key = VORAUtility::jsonString(o.value(QLatin1String("key")));
    const QJsonValue user = o.value(QLatin1String("user"));
    data = user.isObject() ? std::optional<QJsonObject>(user.toObject()) : std::nullopt;
}
