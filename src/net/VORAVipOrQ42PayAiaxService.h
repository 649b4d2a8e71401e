#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// A payment order on the payment host.
class VORAVipOrQ42PayAiaxService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    int q42HttpMethod() const override;
    QString baseUrl() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString product;
    QString productNum;
    QString totalMoney;
    QString way;
    QString contact;

    // Answer
    std::optional<QJsonObject> data;
};
