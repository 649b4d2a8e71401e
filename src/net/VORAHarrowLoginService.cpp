#include "net/VORAHarrowLoginService.h"

QString VORAHarrowLoginService::path() const
{
    return QStringLiteral("v3/app/ios/pad/member/hrwlogin");
}

VORAHttpBaseWebService::Parameters VORAHarrowLoginService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("session_id"), urlParameterEscape(sessionId)});
    return p;
}

void VORAHarrowLoginService::parseResponseString(const QString &responseString)
{
    takeNewerAnswer(responseString);
}
