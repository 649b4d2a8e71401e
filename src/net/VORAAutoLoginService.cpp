#include "net/VORAAutoLoginService.h"

#include "core/VORAUtility.h"

QString VORAAutoLoginService::path() const
{
    return QStringLiteral("v3/app/ios/pad/member/autologin");
}

VORAHttpBaseWebService::Parameters VORAAutoLoginService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("v"), buildVersion});
    p.append({QStringLiteral("from"), QStringLiteral("appstore4")});
    return p;
}

void VORAAutoLoginService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
