#include "net/VORATicket_logService.h"

#include "core/VORAUtility.h"

QString VORATicket_logService::path() const
{
    return QStringLiteral("android/phone/ticket_log.php");
}

VORAHttpBaseWebService::Parameters VORATicket_logService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("page"), QString::number(page)});
    p.append({QStringLiteral("type"), type});
    return p;
}

void VORATicket_logService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
