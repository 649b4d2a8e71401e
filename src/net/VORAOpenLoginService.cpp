#include "net/VORAOpenLoginService.h"

QString VORAOpenLoginService::path() const
{
    return QStringLiteral("v3/app/ios/pad/member/openLogin");
}

VORAHttpBaseWebService::Parameters VORAOpenLoginService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("open_id"), urlParameterEscape(openId)});
    p.append({QStringLiteral("access_token"), urlParameterEscape(accessToken)});
    p.append({QStringLiteral("site_mark"), urlParameterEscape(siteMark)});
    p.append({QStringLiteral("open_name"), urlParameterEscape(openName)});
    return p;
}

void VORAOpenLoginService::parseResponseString(const QString &responseString)
{
    takeNewerAnswer(responseString);
}
