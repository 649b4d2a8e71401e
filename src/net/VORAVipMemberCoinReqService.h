#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// The partner payment request.
class VORAVipMemberCoinReqService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    int q42HttpMethod() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString productId;
    QString totalMoney;
    QString productNum;
    QString way;

    // Answer
    std::optional<QJsonObject> data;
};
