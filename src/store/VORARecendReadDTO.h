#pragma once

#include "RecentReadInfo.h"

#include <QDateTime>
#include <QString>

// A row of the recent-reading screen.
struct VORARecendReadDTO
{
    QString comicId;
    QString comicName;
    QString coverUrl;
    QString chapterId;
    QString chapterName;
    qint64 chapterIndex = 0;
    QString pageId;
    qint64 pageIndex = 0;
    QDateTime readTime;

    bool operator==(const VORARecendReadDTO &) const = default;

    static VORARecendReadDTO fromRecord(const RecentReadInfo &record);
};
