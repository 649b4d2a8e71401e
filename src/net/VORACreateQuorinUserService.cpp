#include "net/VORACreateQuorinUserService.h"

QString VORACreateQuorinUserService::path() const
{
    return isMobileRegister ? QStringLiteral("v3/app/ios/pad/member/mobilereg")
                            : QStringLiteral("v3/app/ios/pad/member/reg");
}

VORAHttpBaseWebService::Parameters VORACreateQuorinUserService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("mobile"), urlParameterEscape(mobile)});
    p.append({QStringLiteral("code"), urlParameterEscape(verifyCode)});
    p.append({QStringLiteral("username"), urlParameterEscape(userName)});
    p.append({QStringLiteral("password"), urlParameterEscape(password)});
    p.append({QStringLiteral("device_id"), urlParameterEscape(deviceId)});
    return p;
}

void VORACreateQuorinUserService::parseResponseString(const QString &responseString)
{
    takeNewerAnswer(responseString);
}
