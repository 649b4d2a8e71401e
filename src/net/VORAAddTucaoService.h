#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QDateTime>
#include <QJsonObject>
#include <QString>

#include <optional>

// Pins a new tucao on a page; the rectangle is in image pixels ("w"/"h").
class VORAAddTucaoService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    int q42HttpMethod() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString objectId;
    QString content;
    QDateTime createTime;
    qint64 x = 0;
    qint64 y = 0;
    qint64 width = 0;
    qint64 height = 0;

    // Answer
    qint64 code = 0;
    QString message;
    QString tucaoId;
};
