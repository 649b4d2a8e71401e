#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Latest version and update flags. returnData is kept only when "code" is 1 and
// "data"."stateCode" is 1.
class VORACheckVersionService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Answer
    std::optional<QJsonObject> data;
    std::optional<QJsonObject> returnData;
};
