#include "net/VORAVipPayAiaxService.h"

#include "core/VORASystemConfig.h"
#include "core/VORAUtility.h"

QString VORAVipPayAiaxService::path() const
{
    return QStringLiteral("pay/ajax.php");
}

QString VORAVipPayAiaxService::baseUrl() const
{
    return VORASystemConfig::getPayWebServiceUrlBase();
}

VORAHttpBaseWebService::Parameters VORAVipPayAiaxService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("mod"), mod});
    p.append({QStringLiteral("act"), act});
    return p;
}

void VORAVipPayAiaxService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
