#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>

// One comic of a keyword search ("data" of "ios/pad/search.php").
struct VORASearchListDTO
{
    QString comicId;          // "comic_id"
    QString comicName;        // "name"
    QString comicCover;       // "cover"
    QString comicDescription; // "description"
    QString comicAuthor;      // "nick_name" (this answer's name for the author)
    qint32 accredit = 0;      // "accredit": 0 none, 1 exclusive, 2 signed
    QDateTime lastUpdate;     // "last_update_time", seconds since 1970 (UTC)

    bool operator==(const VORASearchListDTO &) const = default;

    void setArredit(qint32 value) { accredit = value; }

    static VORASearchListDTO fromJson(const QJsonObject &item);
};
