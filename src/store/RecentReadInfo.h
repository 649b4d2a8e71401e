#pragma once

#include "StoreRecord.h"

// Store record: one entry of the recent-reading list.
class RecentReadInfo : public StoreRecord
{
public:
    RecentReadInfo() : StoreRecord(StoreEntityKind::RecentReadInfo) {}

    QString comicId() const { return text(0); }
    void setComicId(const QString &value) { setValue(0, value); }
    QString comicName() const { return text(1); }
    void setComicName(const QString &value) { setValue(1, value); }
    QString coverUrl() const { return text(2); }
    void setCoverUrl(const QString &value) { setValue(2, value); }
    QString chapterId() const { return text(3); }
    void setChapterId(const QString &value) { setValue(3, value); }
    QString chapterName() const { return text(4); }
    void setChapterName(const QString &value) { setValue(4, value); }
    qint64 chapterIndex() const { return integer(5); }
    void setChapterIndex(qint64 value) { setValue(5, value); }
    QString pageId() const { return text(6); }
    void setPageId(const QString &value) { setValue(6, value); }
    qint64 pageIndex() const { return integer(7); }
    void setPageIndex(qint64 value) { setValue(7, value); }
    QDateTime readTime() const { return date(8); }
    void setReadTime(const QDateTime &value) { setValue(8, value); }
};

using RecentReadInfoPtr = std::shared_ptr<RecentReadInfo>;
