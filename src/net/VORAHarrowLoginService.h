#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Sign-in through the partner passport.
class VORAHarrowLoginService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString sessionId;

    // Answer
    qint64 code = 0;
    QString message;
    QString key;
    std::optional<QJsonObject> data;
};
