#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Silent re-sign-in with the stored key ("from" is always "appstore4").
class VORAAutoLoginService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString buildVersion;

    // Answer
    std::optional<QJsonObject> data;
};
