#pragma once

#include "VORABookShelf.h"

#include <QDateTime>
#include <QString>

// A row of the bookshelf screen.
struct VORABookShelfDTO
{
    QString comicId;
    QString comicName;
    QString nameFirstLetter;
    QString coverUrl;
    QString latestChapterId;
    QString latestChapterName;
    QString latestReadChapterId;
    QString latestReadChapterName;
    QDateTime updateTime;
    QDateTime adddateTime;
    bool isNotRead = false;
    bool isHasUpdate = false;

    bool operator==(const VORABookShelfDTO &) const = default;

    static VORABookShelfDTO fromBookShelf(const VORABookShelf &entry);
};
