#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Moves or resizes a tucao (the text cannot change).
class VORAUpdateTucaoService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString tucaoId;
    qint64 x = 0;
    qint64 y = 0;
    qint64 width = 0;
    qint64 height = 0;

    // Answer
    qint64 code = 0;
    QString message;
};
