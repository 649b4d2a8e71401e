#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Sign-in with a site account. The credentials are escaped with urlParameterEscape so
// that reserved characters in a password survive the query.
class VORAGetAuthenticateQ42UserService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString userName;
    QString password;

    // Answer
    qint64 code = 0;
    QString message;
    QString key;
    std::optional<QJsonObject> data;
};
