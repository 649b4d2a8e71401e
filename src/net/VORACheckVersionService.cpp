#include "net/VORACheckVersionService.h"

#include "core/VORASystemConfig.h"
#include "core/VORAUtility.h"

QString VORACheckVersionService::path() const
{
    return QStringLiteral("v3/app/ios/pad/version/newVersion");
}

VORAHttpBaseWebService::Parameters VORACheckVersionService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("target"), VORASystemConfig::bundleName()});
    p.append({QStringLiteral("from"), VORASystemConfig::buildVersion()});
    return p;
}

void VORACheckVersionService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
    returnData.reset();
    const QJsonObject o = data.value_or(QJsonObject());
    const QJsonObject d = VORAUtility::jsonObject(o.value(QLatin1String("data")));
    const QJsonValue r = d.value(QLatin1String("returnData"));
    if (VORAUtility::jsonInteger(o.value(QLatin1String("code"))) == 1
        && VORAUtility::jsonInteger(d.value(QLatin1String("stateCode"))) == 1 && r.isObject())
        returnData = r.toObject();
}
