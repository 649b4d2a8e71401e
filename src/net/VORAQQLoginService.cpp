#include "net/VORAQQLoginService.h"

QString VORAQQLoginService::path() const
{
    return QStringLiteral("ios/pad/login_qq.php");
}

VORAHttpBaseWebService::Parameters VORAQQLoginService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("open_id"), urlParameterEscape(openId)});
    p.append({QStringLiteral("access_token"), urlParameterEscape(accessToken)});
    p.append({QStringLiteral("nickname"), urlParameterEscape(nickname)});
    return p;
}

void VORAQQLoginService::parseResponseString(const QString &responseString)
{
    takeOlderAnswer(responseString);
}
