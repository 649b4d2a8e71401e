#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Deletes a tucao.
class VORADeleteTucaoService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString tucaoId;
    QString comicId;

    // Answer
    qint64 code = 0;
    QString message;
};
