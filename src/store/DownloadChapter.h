#pragma once

#include "StoreRecord.h"

// Store record: one chapter queued or downloaded; handed out of the store only as VORADownloadChapterInfoDTO copies.
class DownloadChapter : public StoreRecord
{
public:
    DownloadChapter() : StoreRecord(StoreEntityKind::DownloadChapter) {}

    QString chapterId() const { return text(0); }
    void setChapterId(const QString &value) { setValue(0, value); }
    QString chapterName() const { return text(1); }
    void setChapterName(const QString &value) { setValue(1, value); }
    QString comicId() const { return text(2); }
    void setComicId(const QString &value) { setValue(2, value); }
    qint64 chapterIndex() const { return integer(3); }
    void setChapterIndex(qint64 value) { setValue(3, value); }
    qint64 imageCount() const { return integer(4); }
    void setImageCount(qint64 value) { setValue(4, value); }
    qint64 imageSize() const { return integer(5); }
    void setImageSize(qint64 value) { setValue(5, value); }
    QString pageCompleteIds() const { return text(6); }
    void setPageCompleteIds(const QString &value) { setValue(6, value); }
    QString tucaoCompleteIds() const { return text(7); }
    void setTucaoCompleteIds(const QString &value) { setValue(7, value); }
    bool isFinishDownload() const { return boolean(8); }
    void setIsFinishDownload(bool value) { setValue(8, value); }
};

using DownloadChapterPtr = std::shared_ptr<DownloadChapter>;
