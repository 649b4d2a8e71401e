#pragma once

#include <QCborMap>
#include <QDateTime>
#include <QJsonObject>
#include <QString>

// One comic of a category listing ("data" of "ios/pad/list.php").
struct VORASortDTO
{
    QString comicId;          // "comic_id"
    QString comicName;        // "name"
    QString comicAuthor;      // "author_name"
    QString comicCover;       // "cover"
    QDateTime comicLastUpdate; // "last_update_time", seconds since 1970 (UTC)
    QString comicClickTotal;  // "click_total", as plain digits
    QString comicDescription; // "description"
    qint32 comicAccredit = 0; // "accredit": 0 none, 1 exclusive, 2 signed

    bool operator==(const VORASortDTO &) const = default;

    static VORASortDTO fromJson(const QJsonObject &item);

    // Archive keys are the field names.
    QCborMap toArchive() const;
    static VORASortDTO fromArchive(const QCborMap &map);
};
