#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Creates a coin or membership order.
class VORABuyCoinVipService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString androidId;
    QString product;
    QString productNum;
    QString rmb;

    // Answer
    std::optional<QJsonObject> data;
};
