#pragma once

#include "net/VORASignInService.h"

#include <QString>

// Account registration, by phone ("mobilereg") or by name ("reg"). Values are sent
// escaped with urlParameterEscape, so that a password holding "&" or "+" is
// registered exactly as the sign-in service will later send it.
class VORACreateQuorinUserService : public VORASignInService
{
public:
    using VORASignInService::VORASignInService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    bool isMobileRegister = false;
    QString mobile;
    QString verifyCode;
    QString userName;
    QString password;
    QString deviceId;
};
