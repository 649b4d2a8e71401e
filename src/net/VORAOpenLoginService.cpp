#include "net/VORAOpenLoginService.h"

#include "core/VORAUtility.h"

QString VORAOpenLoginService::path() const
{
    return QStringLiteral("v3/app/ios/pad/member/openLogin");
}

VORAHttpBaseWebService::Parameters VORAOpenLoginService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("open_id"), urlParameterEscape(openId)});
    p.append({QStringLiteral("access_token"), urlParameterEscape(accessToken)});
    p.append({QStringLiteral("site_mark"), urlParameterEscape(siteMark)});
    p.append({QStringLiteral("open_name"), urlParameterEscape(openName)});
    return p;
}

void VORAOpenLoginService::parseResponseString(const QString &responseString)
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
