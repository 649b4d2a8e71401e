#pragma once

#include "StoreRecord.h"

// Store record: one comic with chapters queued or downloaded; handed out of the store only as VORADownloadComicInfoDTO copies.
class DownloadComic : public StoreRecord
{
public:
    DownloadComic() : StoreRecord(StoreEntityKind::DownloadComic) {}

    QString comicId() const { return text(0); }
    void setComicId(const QString &value) { setValue(0, value); }
    QString comicName() const { return text(1); }
    void setComicName(const QString &value) { setValue(1, value); }
    QString coverUrl() const { return text(2); }
    void setCoverUrl(const QString &value) { setValue(2, value); }
    QString authorName() const { return text(3); }
    void setAuthorName(const QString &value) { setValue(3, value); }
    QString theme() const { return text(4); }
    void setTheme(const QString &value) { setValue(4, value); }
    qint64 comicSerial() const { return integer(5); }
    void setComicSerial(qint64 value) { setValue(5, value); }
    QDateTime createComicDate() const { return date(6); }
    void setCreateComicDate(const QDateTime &value) { setValue(6, value); }
    qint64 downloadChapterCount() const { return integer(7); }
    void setDownloadChapterCount(qint64 value) { setValue(7, value); }
    qint64 downloadPageCount() const { return integer(8); }
    void setDownloadPageCount(qint64 value) { setValue(8, value); }
    qint64 downloadPageSize() const { return integer(9); }
    void setDownloadPageSize(qint64 value) { setValue(9, value); }
    qint64 downloadingChapterCount() const { return integer(10); }
    void setDownloadingChapterCount(qint64 value) { setValue(10, value); }
    qint64 downloadingPageCount() const { return integer(11); }
    void setDownloadingPageCount(qint64 value) { setValue(11, value); }
    qint64 downloadingPageSize() const { return integer(12); }
    void setDownloadingPageSize(qint64 value) { setValue(12, value); }
    qint64 downloadingCompletePageCount() const { return integer(13); }
    void setDownloadingCompletePageCount(qint64 value) { setValue(13, value); }
    qint64 downloadingCompleteTucaoCount() const { return integer(14); }
    void setDownloadingCompleteTucaoCount(qint64 value) { setValue(14, value); }
};

using DownloadComicPtr = std::shared_ptr<DownloadComic>;
