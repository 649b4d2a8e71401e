#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Sign-in through a partner account. Tokens and names are escaped with
// urlParameterEscape (they may hold "+", "/" or "=").
class VORAOpenLoginService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString openId;
    QString accessToken;
    QString siteMark;
    QString openName;

    // Answer
    qint64 code = 0;
    QString message;
    QString key;
    std::optional<QJsonObject> data;
};
