#pragma once

#include "net/VORASignInService.h"

#include <QString>

// Sign-in through a QQ account. Values are escaped with urlParameterEscape.
class VORAQQLoginService : public VORASignInService
{
public:
    using VORASignInService::VORASignInService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString openId;
    QString accessToken;
    QString nickname;
};
