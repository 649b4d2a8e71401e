#pragma once

#include <QCborMap>
#include <QJsonObject>
#include <QString>

// One hot search keyword ("data" of "ios/pad/hot_keywords.php").
struct VORACloudTagDTO
{
    QString cloudNum; // "search_num": how often it was searched
    QString cloudTag; // "tag": the keyword

    bool operator==(const VORACloudTagDTO &) const = default;

    static VORACloudTagDTO fromJson(const QJsonObject &item);

    // Archive keys are the field names.
    QCborMap toArchive() const;
    static VORACloudTagDTO fromArchive(const QCborMap &map);
};
