#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Sends a verification code to a phone by text message. The code is for a
// registration; with `type` "resetpwd" it is for a password reset of the
// account registered with that phone (VORAResetPasswordService).
class VORAGetPhoneVerifyCodeService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString mobile;
    QString type; // sent as "type" only when not empty

    static constexpr char resetPasswordType[] = "resetpwd";

    // Answer
    qint64 code = 0;
    QString message;
};
