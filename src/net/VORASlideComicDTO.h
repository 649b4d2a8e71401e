#pragma once

#include <QCborMap>
#include <QJsonObject>
#include <QString>

// One banner slide of the recommendation feed ("slide_data").
struct VORASlideComicDTO
{
    QString comicId;    // "comic_id": comic to open (type 0)
    QString comicName;  // "comic_name"
    QString comicCover; // "image": banner image URL
    QString comicTitle; // "title"
    QString comicUrl;   // "url": address to open (type 1)
    qint64 comicSort = 0; // "sort": kept, not used for ordering
    qint32 slideType = 0; // "type": 0 opens a comic, 1 opens comicUrl

    bool operator==(const VORASlideComicDTO &) const = default;

    static VORASlideComicDTO fromJson(const QJsonObject &item);

    // Archive keys are the field names.
    QCborMap toArchive() const;
    static VORASlideComicDTO fromArchive(const QCborMap &map);
};
