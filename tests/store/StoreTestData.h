#pragma once

#include "net/VORAChapterInfoDTO.h"
#include "net/VORAComicInfoDTO.h"
#include "net/VORAPageInfoDTO.h"
#include "store/VORABookShelf.h"
#include "store/VORADownloadChapterInfoDTO.h"
#include "store/VORADatabaseManager.h"
#include "store/VORADownloadComicInfoDTO.h"

#include <QDateTime>

// Small builders for the records the store operations take.
namespace StoreTestData {

// The store's clock moves one second per stamp: records written one after
// another get distinct times in the order they were written.
inline void useTickingStoreClock()
{
    static qint64 tick = 1'700'000'000;
    VORADatabaseManager::setClockForTesting([] { return QDateTime::fromSecsSinceEpoch(++tick, Qt::UTC); });
}

inline VORAComicInfoDTO comic(const QString &id, const QString &name = QString())
{
    VORAComicInfoDTO c;
    c.comicId = id;
    c.name = name.isEmpty() ? QStringLiteral("漫画") + id : name;
    c.coverUrl = QStringLiteral("http://img.example/") + id + QStringLiteral(".jpg");
    return c;
}

inline VORAChapterInfoDTO chapter(const QString &id, int index)
{
    VORAChapterInfoDTO c;
    c.chapterId = id;
    c.name = QStringLiteral("第%1话").arg(index + 1);
    c.index = index;
    return c;
}

inline VORAPageInfoDTO page(const QString &id, int index)
{
    VORAPageInfoDTO p;
    p.pageId = id;
    p.index = index;
    return p;
}

inline VORABookShelf shelf(const QString &id, qint64 updateSecs, bool hasUpdate = false, bool notRead = false)
{
    VORABookShelf s;
    s.comicId = id;
    s.comicName = QStringLiteral("书") + id;
    s.coverUrl = QStringLiteral("http://img.example/c") + id;
    s.nameFirstletter = id.left(1).toUpper();
    s.latestUpdateChapterId = id + QStringLiteral("9");
    s.latestUpdateChapterName = QStringLiteral("最新");
    s.latestReadChapterId = id + QStringLiteral("1");
    s.latestReadChapterName = QStringLiteral("已读");
    s.updateTime = QDateTime::fromSecsSinceEpoch(updateSecs, Qt::UTC);
    s.adddateTime = QDateTime::fromSecsSinceEpoch(1'600'000'000, Qt::UTC);
    s.isHasUpdate = hasUpdate;
    s.isNotRead = notRead;
    return s;
}

inline VORADownloadComicInfoDTO downloadComic(const QString &id, qint32 serial = 1)
{
    VORADownloadComicInfoDTO c;
    c.comicId = id;
    c.comicName = QStringLiteral("下载") + id;
    c.coverUrl = QStringLiteral("http://img.example/d") + id;
    c.authorName = QStringLiteral("作者");
    c.theme = QStringLiteral("热血");
    c.comicSerial = serial;
    return c;
}

inline VORADownloadChapterInfoDTO downloadChapter(const QString &comicId, const QString &chapterId, int index)
{
    VORADownloadChapterInfoDTO c;
    c.chapterId = chapterId;
    c.chapterName = QStringLiteral("章") + chapterId;
    c.comicId = comicId;
    c.chapterIndex = index;
    c.imageCount = 20;
    c.imageSize = 3000;
    return c;
}

} // namespace StoreTestData
