#pragma once

#include "net/VORAHttpBaseWebService.h"
#include "net/VORASortDTO.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Category listing filtered by one criterion: comicCategory 0 theme, 1 type, 2 serial
// state, 3 sort order.
class VORASortWebService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    qint32 comicCategory = 0;
    qint64 comicTheme = 0;
    qint64 comicType = 0;
    qint64 comicSerial = 0;
    qint64 comicSort = 0;
    qint64 page = 0;
    qint64 size = 30;

    // Answer
    qint64 totalCount = 0;
    QList<VORASortDTO> comicList;
};
