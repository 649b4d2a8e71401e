#include "net/VORAResetPasswordService.h"

#include "net/VORASignInAnswer.h"

QString VORAResetPasswordService::path() const
{
    return QStringLiteral("v3/app/ios/pad/member/resetpwd");
}

VORAHttpBaseWebService::Parameters VORAResetPasswordService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("mobile"), urlParameterEscape(mobile)});
    p.append({QStringLiteral("code"), urlParameterEscape(verifyCode)});
    p.append({QStringLiteral("password"), urlParameterEscape(password)});
    return p;
}

void VORAResetPasswordService::parseResponseString(const QString &responseString)
{
    // The newer interface's "stateCode" and "message"; the answer has no payload.
    const VORASignInAnswer answer =
        VORASignInAnswer::fromNewerAnswer(jsonObjectFromString(responseString).value_or(QJsonObject()));
    code = answer.code;
    message = answer.message;
}
