#include "net/VORAGetPhoneVerifyCodeService.h"

#include "core/VORAUtility.h"

QString VORAGetPhoneVerifyCodeService::path() const
{
    return QStringLiteral("v3/app/ios/pad/member/getmessage");
}

VORAHttpBaseWebService::Parameters VORAGetPhoneVerifyCodeService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("mobile"), VORAUtility::encodeUrlParameter(mobile)});
    if (!type.isEmpty())
        p.append({QStringLiteral("type"), VORAUtility::encodeUrlParameter(type)});
    return p;
}

void VORAGetPhoneVerifyCodeService::parseResponseString(const QString &responseString)
{
    const std::optional<QJsonObject> answer = jsonObjectFromString(responseString);
    const QJsonObject d = VORAUtility::jsonObject(answer.value_or(QJsonObject()).value(QLatin1String("data")));
    code = VORAUtility::jsonInteger(d.value(QLatin1String("stateCode")));
    message = VORAUtility::jsonString(d.value(QLatin1String("message")));
}
