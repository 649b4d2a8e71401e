#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Sign-in through a QQ account. Values are escaped with urlParameterEscape.
class VORAQQLoginService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString openId;
    QString accessToken;
    QString nickname;

    // Answer
    qint64 code = 0;
    QString message;
    QString key;
    std::optional<QJsonObject> data;
};
