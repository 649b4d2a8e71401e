#pragma once

#include "VORABookMarkDTO.h"
#include "VORARecendReadDTO.h"

#include <QDateTime>
#include <QString>

// One row of the bookmarks or the recent-reading screen: a place in a comic
// and when it was marked (addBookmarkTime) or last read (readTime).
struct ReadingPlaceRow
{
    QString comicId;
    QString comicName;
    QString coverUrl;
    QString chapterId;
    QString chapterName;
    QString pageId;
    qint64 pageIndex = 0;
    QDateTime time;

    bool operator==(const ReadingPlaceRow &) const = default;

    static ReadingPlaceRow fromBookmark(const VORABookMarkDTO &b)
    {
        return {b.comicId, b.comicName, b.coverUrl, b.chapterId, b.chapterName, b.pageId, b.pageIndex, b.addBookmarkTime};
    }
    static ReadingPlaceRow fromRecentRead(const VORARecendReadDTO &r)
    {
        return {r.comicId, r.comicName, r.coverUrl, r.chapterId, r.chapterName, r.pageId, r.pageIndex, r.readTime};
    }
};
