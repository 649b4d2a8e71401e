#pragma once

#include "net/VORAHttpBaseWebService.h"
#include "net/VORACloudTagDTO.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Hot search keywords.
class VORAGetCloudTagService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    qint64 num = 15;

    // Answer
    QList<VORACloudTagDTO> tagList;
};
