#include "net/VORACheckBuyService.h"

#include "core/VORAUtility.h"

QString VORACheckBuyService::path() const
{
    return QStringLiteral("v3/app/ios/pad/pay/alipayStatus");
}

VORAHttpBaseWebService::Parameters VORACheckBuyService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("order_id"), orderId});
    return p;
}

void VORACheckBuyService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
