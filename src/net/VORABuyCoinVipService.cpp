#include "net/VORABuyCoinVipService.h"

#include "core/VORAUtility.h"

QString VORABuyCoinVipService::path() const
{
    return QStringLiteral("v3/app/ios/pad/pay/alipay");
}

VORAHttpBaseWebService::Parameters VORABuyCoinVipService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("android_id"), androidId});
    p.append({QStringLiteral("product"), product});
    p.append({QStringLiteral("product_num"), productNum});
    p.append({QStringLiteral("rmb"), rmb});
    return p;
}

void VORABuyCoinVipService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
