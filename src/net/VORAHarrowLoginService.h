#pragma once

#include "net/VORASignInService.h"

#include <QString>

// Sign-in through the partner passport.
class VORAHarrowLoginService : public VORASignInService
{
public:
    using VORASignInService::VORASignInService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString sessionId;
};
