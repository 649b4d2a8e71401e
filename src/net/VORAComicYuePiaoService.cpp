#include "net/VORAComicYuePiaoService.h"

#include "core/VORAUtility.h"

QString VORAComicYuePiaoService::path() const
{
    return QStringLiteral("ios/pad/ticket.php");
}

int VORAComicYuePiaoService::q42HttpMethod() const
{
    return 1;
}

VORAHttpBaseWebService::Parameters VORAComicYuePiaoService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("act"), act});
    p.append({QStringLiteral("ticket_content"), ticket_content});
    p.append({QStringLiteral("comic_id"), comic_id});
    p.append({QStringLiteral("ticket_num"), ticket_num});
    return p;
}

void VORAComicYuePiaoService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
