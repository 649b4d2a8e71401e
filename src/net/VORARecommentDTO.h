#pragma once

#include <QCborMap>
#include <QDateTime>
#include <QJsonObject>
#include <QString>

// One comic of the recommendation feed grid ("data" of "ios/pad/list.php").
struct VORARecommentDTO
{
    QString comicId;          // "comic_id"
    QString comicName;        // "name"
    QString comicAuthor;      // "author_name"
    QString comicCover;       // "cover"
    QDateTime comicLastUpdate; // "last_update_time", seconds since 1970 (UTC)
    QString comicClickTotal;  // "click_total", as plain digits
    QString comicDescription; // "description"
    qint32 comicAccredit = 0; // "accredit": 0 none, 1 exclusive, 2 signed

    bool operator==(const VORARecommentDTO &) const = default;

    static VORARecommentDTO fromJson(const QJsonObject &item);

    // Archive keys are the field names.
    QCborMap toArchive() const;
    static VORARecommentDTO fromArchive(const QCborMap &map);
};
