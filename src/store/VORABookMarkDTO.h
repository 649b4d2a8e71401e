#pragma once

#include "Bookmark.h"

#include <QDateTime>
#include <QString>

// A row of the bookmarks screen.
struct VORABookMarkDTO
{
    QString comicId;
    QString comicName;
    QString coverUrl;
    QString chapterId;
    QString chapterName;
    qint64 chapterIndex = 0;
    QString pageId;
    qint64 pageIndex = 0;
    QDateTime addBookmarkTime;

    bool operator==(const VORABookMarkDTO &) const = default;

    static VORABookMarkDTO fromRecord(const Bookmark &record);
};
