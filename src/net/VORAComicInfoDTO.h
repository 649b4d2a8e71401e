#pragma once

#include "net/VORAChapterInfoDTO.h"
#include "net/VORAComicTopInfoDTO.h"

#include <QCborMap>
#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>

// One comic with its chapters, from "ios/pad/comic_127.php". Cached by the comic
// cache and archived with a downloaded comic ("comicInfo.txt").
struct VORAComicInfoDTO
{
    QString comicId;               // the identifier asked for (not on the wire)
    QString name;                  // "name"
    QString authorName;            // "author_name"
    QString coverUrl;              // "cover"
    QString oriCoverUrl;           // "ori"
    QString theme;                 // "theme_ids"
    qint32 serialStatus = 0;       // "series_status", only 0 or 1 (1 = finished)
    qint64 readOrder = 0;          // "read_order", only 0 or 1
    QString nameFirstLetter;       // "first_letter"
    QString comicDescription;      // "description"
    qint64 clickTotal = 0;         // "click_total"
    qint64 tucaoTotal = 0;         // "total_tucao"
    qint64 commentTotal = 0;       // "comment_total"
    qint64 ticketTotal = 0;        // "total_ticket"
    qint64 is_vip = 0;             // "is_vip": 0 free, 1/2 paid chapters, 3 VIP-sealed
    QString type;                  // "group_ids"
    QString lastUpdateChapterId;   // "last_update_chapter_id"
    QString lastUpdateChapterName; // "last_update_chapter_name"
    QString threadName;            // "thread" -> "name"
    QString thread_id;             // "thread" -> "thread_id"
    QDateTime lastUpdateTime;      // "last_update_time", seconds since 1970 (UTC)
    qint32 accredit = 0;           // 0 none, 1 exclusive, 2 signed (from the listings)
    QList<VORAChapterInfoDTO> chapterList; // top-level "chapter_list"
    QList<VORAComicTopInfoDTO> topList;    // top-level "top4"

    bool operator==(const VORAComicInfoDTO &) const = default;

    // The comic answer as a whole: the head fields come from its "comic" object,
    // the lists from its top level. Wrong types read as empty values.
    static VORAComicInfoDTO parseData(const QJsonObject &data, const QString &comicId);

    QCborMap toArchive() const;
    static VORAComicInfoDTO fromArchive(const QCborMap &map);
};
