#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Monthly-ticket history.
class VORATicket_logService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    qint64 page = 1;
    QString type;

    // Answer
    std::optional<QJsonObject> data;
};
