#pragma once

#include "net/VORASignInService.h"

#include <QString>

// Sign-in through a partner account. Tokens and names are escaped with
// urlParameterEscape (they may hold "+", "/" or "=").
class VORAOpenLoginService : public VORASignInService
{
public:
    using VORASignInService::VORASignInService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString openId;
    QString accessToken;
    QString siteMark;
    QString openName;
};
