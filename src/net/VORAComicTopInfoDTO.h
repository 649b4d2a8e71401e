#pragma once

#include <QCborMap>
#include <QJsonObject>
#include <QString>

// One entry of the "top4" list of a comic answer.
struct VORAComicTopInfoDTO
{
    QString comicId;      // "comic_id"
    QString chapterId;    // "chapter_id"
    QString urlLocation;  // "location"

    bool operator==(const VORAComicTopInfoDTO &) const = default;

    static VORAComicTopInfoDTO fromJson(const QJsonObject &item);

    QCborMap toArchive() const;
    static VORAComicTopInfoDTO fromArchive(const QCborMap &map);
};
