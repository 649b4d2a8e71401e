#pragma once

#include <QCborMap>
#include <QJsonObject>
#include <QList>
#include <QString>

// One page of a chapter, as "ios/pad/chapter_127.php" lists it. Kept in memory by
// the reading session and archived in a downloaded chapter's "chapterInfo.txt".
struct VORAPageInfoDTO
{
    QString pageId;      // "image_id"
    QString url;         // "location": absolute URL of the image
    int width = 0;       // "width", pixels
    int height = 0;      // "height", pixels
    int tucaoTotal = 0;  // "total_tucao"
    int index = 0;       // 0-based position in the chapter

    bool operator==(const VORAPageInfoDTO &) const = default;

    // The page list of a chapter answer: its "data" array, in order. Anything
    // that is not an array gives an empty list; every element that is not an
    // object still takes its place with empty fields.
    static QList<VORAPageInfoDTO> parseChapterData(const QJsonObject &chapterData);
    static VORAPageInfoDTO fromJson(const QJsonObject &item, int index);

    // Archive keys: "pageId", "url", "width", "height", "tucaoTotal", "index".
    QCborMap toArchive() const;
    static VORAPageInfoDTO fromArchive(const QCborMap &map);
};
