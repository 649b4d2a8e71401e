#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>

// One entry of the in-memory bookshelf. The fields are the `Bookshelf`
// attributes, except `nameFirstletter` (stored as `nameFirstLetter`).
struct VORABookShelf
{
    QString comicId;
    QString comicName;
    QString coverUrl;
    QString nameFirstletter;
    QString latestUpdateChapterId;
    QString latestUpdateChapterName;
    QString latestReadChapterId;
    QString latestReadChapterName;
    QDateTime updateTime;
    QDateTime adddateTime;
    bool isNotRead = false;
    bool isHasUpdate = false;

    bool operator==(const VORABookShelf &) const = default;
};

Q_DECLARE_METATYPE(VORABookShelf)
