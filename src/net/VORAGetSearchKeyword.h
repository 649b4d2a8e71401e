#pragma once

#include "net/VORAHttpBaseWebService.h"
#include "net/VORASearchListDTO.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Keyword search; the keyword is escaped with urlParameterEscape. Pages count from 1.
class VORAGetSearchKeyword : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString keywordString;
    qint64 page = 0;

    // Answer
    qint64 countTotal = 0;
    QList<VORASearchListDTO> searchArray;
};
