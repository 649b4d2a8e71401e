#pragma once

#include "net/VORASignInService.h"

#include <QString>

// Sign-in with a site account. The credentials are escaped with urlParameterEscape so
// that reserved characters in a password survive the query.
class VORAGetAuthenticateQ42UserService : public VORASignInService
{
public:
    using VORASignInService::VORASignInService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString userName;
    QString password;
};
