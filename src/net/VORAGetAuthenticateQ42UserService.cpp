#include "net/VORAGetAuthenticateQ42UserService.h"

QString VORAGetAuthenticateQ42UserService::path() const
{
    return QStringLiteral("ios/pad/login.php");
}

VORAHttpBaseWebService::Parameters VORAGetAuthenticateQ42UserService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("username"), urlParameterEscape(userName)});
    p.append({QStringLiteral("password"), urlParameterEscape(password)});
    return p;
}

void VORAGetAuthenticateQ42UserService::parseResponseString(const QString &responseString)
{
    takeOlderAnswer(responseString);
}
