#pragma once

#include <QCborMap>
#include <QDateTime>
#include <QJsonObject>
#include <QString>

// One chapter of a comic, from the "chapter_list" of "ios/pad/comic_127.php".
struct VORAChapterInfoDTO
{
    QString comicId;        // the comic it belongs to (not on the wire)
    QString chapterId;      // "chapter_id"
    QString name;           // "name"
    qint64 imageCount = 0;  // "image_total"
    qint64 imageSize = 0;   // "size", kilobytes
    qint64 buyed = 0;       // "buyed": -1 unknown for this user, 0 not bought, other bought
    quint32 type = 0;       // "type": 2 = paid chapter
    qint64 is_view = 0;     // "is_view": non-zero = readable without any check
    qint64 price = 0;       // "price", site coins
    QDateTime pass_time;    // later of "release_time" and "pass_time" (UTC)
    int index = 0;          // position in "chapter_list", from 0

    bool operator==(const VORAChapterInfoDTO &) const = default;

    static VORAChapterInfoDTO fromJson(const QJsonObject &item, const QString &comicId, int index);

    QCborMap toArchive() const;
    static VORAChapterInfoDTO fromArchive(const QCborMap &map);
};
