#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Membership prices.
class VORASafariPayService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    void parseResponseString(const QString &responseString) override;

    // Answer
    std::optional<QJsonObject> data;
};
