#include "net/VORAVipOrQ42PayAiaxService.h"

#include "core/VORASystemConfig.h"
#include "core/VORAUtility.h"

QString VORAVipOrQ42PayAiaxService::path() const
{
    return QStringLiteral("api/index.php");
}

int VORAVipOrQ42PayAiaxService::q42HttpMethod() const
{
    return 1;
}

QString VORAVipOrQ42PayAiaxService::baseUrl() const
{
    return VORASystemConfig::getPayWebServiceUrlBase();
}

VORAHttpBaseWebService::Parameters VORAVipOrQ42PayAiaxService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("product"), product});
    p.append({QStringLiteral("product_num"), productNum});
    p.append({QStringLiteral("total_money"), totalMoney});
    p.append({QStringLiteral("way"), way});
    p.append({QStringLiteral("contact"), contact});
    return p;
}

void VORAVipOrQ42PayAiaxService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
