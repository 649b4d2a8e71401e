#pragma once

#include "StoreRecord.h"

// Store record: the last reading position of one comic.
class ReadHistory : public StoreRecord
{
public:
    ReadHistory() : StoreRecord(StoreEntityKind::ReadHistory) {}

    QString comicId() const { return text(0); }
    void setComicId(const QString &value) { setValue(0, value); }
    QString chapterId() const { return text(1); }
    void setChapterId(const QString &value) { setValue(1, value); }
    QString pageId() const { return text(2); }
    void setPageId(const QString &value) { setValue(2, value); }
};

using ReadHistoryPtr = std::shared_ptr<ReadHistory>;
