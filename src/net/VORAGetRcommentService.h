#pragma once

#include "net/VORAHttpBaseWebService.h"
#include "net/VORARecommentDTO.h"
#include "net/VORASlideComicDTO.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Recommendation feed: the grid ("data") and the banner ("slide_data").
// comicCategory 3 filters by sort order, 2 by serial state, anything else not at all.
class VORAGetRcommentService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    qint32 comicCategory = 0;
    qint64 comicSerial = 0;
    qint64 comicSort = 0;
    qint64 page = 0;
    qint64 size = 30;
    qint64 slide = 1;

    // Answer
    QList<VORARecommentDTO> recommentArray;
    QList<VORASlideComicDTO> slideArray;
};
