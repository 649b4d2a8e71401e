#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QString>

// Sets a new password for the account registered with a phone, proven by the
// text-message code of VORAGetPhoneVerifyCodeService (type "resetpwd"). The
// reference site's "v3/app/ios/pad/member/resetpwd": a demo route, see
// docs/accounts.md. Values are escaped with urlParameterEscape.
class VORAResetPasswordService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString mobile;
    QString verifyCode;
    QString password;

    // Answer: "data"."stateCode" (1 = reset) and "data"."message".
    qint64 code = 0;
    QString message;
};
