#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Account registration, by phone ("mobilereg") or by name ("reg"). Values are sent
// escaped with urlParameterEscape, so that a password holding "&" or "+" is
// registered exactly as the sign-in service will later send it.
class VORACreateQuorinUserService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

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

    // Answer
    qint64 code = 0;
    QString message;
    QString key;
    std::optional<QJsonObject> data;
};
