#include "net/VORASafariPayService.h"

#include "core/VORAUtility.h"

QString VORASafariPayService::path() const
{
    return QStringLiteral("v3/app/ios/phone/vip/vipDiscount");
}

void VORASafariPayService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
