#include "net/VORAUserCoinLogService.h"

#include "core/VORAUtility.h"

QString VORAUserCoinLogService::path() const
{
    return QStringLiteral("ios/pad/coin_log.php");
}

VORAHttpBaseWebService::Parameters VORAUserCoinLogService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("page"), QString::number(page)});
    return p;
}

void VORAUserCoinLogService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
