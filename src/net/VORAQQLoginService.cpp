#include "net/VORAQQLoginService.h"

#include "core/VORAUtility.h"

QString VORAQQLoginService::path() const
{
    return QStringLiteral("ios/pad/login_qq.php");
}

VORAHttpBaseWebService::Parameters VORAQQLoginService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("open_id"), urlParameterEscape(openId)});
    p.append({QStringLiteral("access_token"), urlParameterEscape(accessToken)});
    p.append({QStringLiteral("nickname"), urlParameterEscape(nickname)});
    return p;
}

void VORAQQLoginService::parseResponseString(const QString &responseString)
{
    const std::optional<QJsonObject> answer = jsonObjectFromString(responseString);
    const QJsonObject o = answer.value_or(QJsonObject());
    code = VORAUtility::jsonInteger(o.value(QLatin1String("code")));
    message = VORAUtility::jsonString(o.value(QLatin1String("message")));
    key = VORAUtility::jsonString(o.value(QLatin1String("key")));
    const QJsonValue user = o.value(QLatin1String("user"));
    data = user.isObject() ? std::optional<QJsonObject>(user.toObject()) : std::nullopt;
}
