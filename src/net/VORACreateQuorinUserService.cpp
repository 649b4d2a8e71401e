#include "net/VORACreateQuorinUserService.h"

#include "core/VORAUtility.h"

QString VORACreateQuorinUserService::path() const
{
    return isMobileRegister ? QStringLiteral("v3/app/ios/pad/member/mobilereg")
                            : QStringLiteral("v3/app/ios/pad/member/reg");
}

VORAHttpBaseWebService::Parameters VORACreateQuorinUserService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("mobile"), urlParameterEscape(mobile)});
    p.append({QStringLiteral("code"), urlParameterEscape(verifyCode)});
    p.append({QStringLiteral("username"), urlParameterEscape(userName)});
    p.append({QStringLiteral("password"), urlParameterEscape(password)});
    p.append({QStringLiteral("device_id"), urlParameterEscape(deviceId)});
    return p;
}

void VORACreateQuorinUserService::parseResponseString(const QString &responseString)
{
    const std::optional<QJsonObject> answer = jsonObjectFromString(responseString);
    const QJsonObject d = VORAUtility::jsonObject(answer.value_or(QJsonObject()).value(QLatin1String("data")));
    code = VORAUtility::jsonInteger(d.value(QLatin1String("stateCode")));
    message = VORAUtility::jsonString(d.value(QLatin1String("message")));
    key.clear();
    data.reset();
    if (code == 1) {
        const QJsonObject r = VORAUtility::jsonObject(d.value(QLatin1String("returnData")));
        key = VORAUtility::jsonString(r.value(QLatin1String("key")));
        const QJsonValue user = r.value(QLatin1String("user"));
        if (user.isObject())
            data = user.toObject();
    }
}
