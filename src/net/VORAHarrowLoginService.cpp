#include "net/VORAHarrowLoginService.h"

#include "core/VORAUtility.h"

QString VORAHarrowLoginService::path() const
{
    return QStringLiteral("v3/app/ios/pad/member/hrwlogin");
}

VORAHttpBaseWebService::Parameters VORAHarrowLoginService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("session_id"), urlParameterEscape(sessionId)});
    return p;
}

void VORAHarrowLoginService::parseResponseString(const QString &responseString)
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
