#pragma once

#include "StoreRecord.h"

// Store record: one comic on the reader's bookshelf.
class Bookshelf : public StoreRecord
{
public:
    Bookshelf() : StoreRecord(StoreEntityKind::Bookshelf) {}

    QString comicId() const { return text(0); }
    void setComicId(const QString &value) { setValue(0, value); }
    QString comicName() const { return text(1); }
    void setComicName(const QString &value) { setValue(1, value); }
    QString coverUrl() const { return text(2); }
    void setCoverUrl(const QString &value) { setValue(2, value); }
    QString nameFirstLetter() const { return text(3); }
    void setNameFirstLetter(const QString &value) { setValue(3, value); }
    bool isHasUpdate() const { return boolean(4); }
    void setIsHasUpdate(bool value) { setValue(4, value); }
    bool isNotRead() const { return boolean(5); }
    void setIsNotRead(bool value) { setValue(5, value); }
    QDateTime updateTime() const { return date(6); }
    void setUpdateTime(const QDateTime &value) { setValue(6, value); }
    QDateTime adddateTime() const { return date(7); }
    void setAdddateTime(const QDateTime &value) { setValue(7, value); }
    QString latestUpdateChapterId() const { return text(8); }
    void setLatestUpdateChapterId(const QString &value) { setValue(8, value); }
    QString latestUpdateChapterName() const { return text(9); }
    void setLatestUpdateChapterName(const QString &value) { setValue(9, value); }
    QString latestReadChapterId() const { return text(10); }
    void setLatestReadChapterId(const QString &value) { setValue(10, value); }
    QString latestReadChapterName() const { return text(11); }
    void setLatestReadChapterName(const QString &value) { setValue(11, value); }
};

using BookshelfPtr = std::shared_ptr<Bookshelf>;
