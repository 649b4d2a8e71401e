#include "net/VORAPushmessageService.h"

#include "core/VORAUtility.h"

QString VORAPushmessageService::path() const
{
    return QStringLiteral("ios/pad/token.php");
}

VORAHttpBaseWebService::Parameters VORAPushmessageService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("token"), ipadToken});
    p.append({QStringLiteral("appid"), appId});
    p.append({QStringLiteral("user_id"), userId});
    return p;
}

void VORAPushmessageService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
