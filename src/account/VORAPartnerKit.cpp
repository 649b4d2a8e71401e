#include "account/VORAPartnerKit.h"

#include "core/VORAUtility.h"

QString VORAPartnerKit::path() const
{
    return QStringLiteral("demo/partner/authorize");
}

VORAHttpBaseWebService::Parameters VORAPartnerKit::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("partner"), urlParameterEscape(partner)});
    p.append({QStringLiteral("account"), urlParameterEscape(account)});
    return p;
}

void VORAPartnerKit::parseResponseString(const QString &responseString)
{
    const QJsonObject answer = jsonObjectFromString(responseString).value_or(QJsonObject());
    const auto text = [&answer](const char *key) { return VORAUtility::jsonString(answer.value(QLatin1String(key))); };
    code = VORAUtility::jsonInteger(answer.value(QLatin1String("code")));
    message = text("message");
    openId = text("open_id");
    accessToken = text("access_token");
    nickname = text("nickname");
    sessionId = text("session_id");
}
