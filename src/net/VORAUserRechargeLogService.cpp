#include "net/VORAUserRechargeLogService.h"

#include "core/VORAUtility.h"

QString VORAUserRechargeLogService::path() const
{
    return QStringLiteral("ios/pad/recharge_log.php");
}

VORAHttpBaseWebService::Parameters VORAUserRechargeLogService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("page"), QString::number(page)});
    return p;
}

void VORAUserRechargeLogService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
