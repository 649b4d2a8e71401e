#pragma once

// Shared pieces of the reader panel suites: a stand-in for the reader screen
// that records what the panels ask of it, comics fetched from the reference
// site, and bookmarks written straight into the store.

#include "../catalogue/CatalogueTestSupport.h"
#include "net/VORAGetComicBasicInfoService.h"
#include "reader/VORAReadHomeViewControllerHooks.h"
#include "store/VORADatabaseManager.h"

#include <QDateTime>
#include <QStringList>
#include <QTest>

#include <optional>

// The reader screen as the panels see it: every call, in order.
class RecordingHooks : public VORAReadHomeViewControllerHooks
{
public:
    void skipeToChapterWithChapterId(const QString &chapterId) override { calls << QStringLiteral("chapter:") + chapterId; }
    void backCurrentChapterIndex() override { calls << QStringLiteral("back"); }
    void createUserView() override { calls << QStringLiteral("user"); }
    void pushPayVC(int kind) override { calls << QStringLiteral("pay:") + QString::number(kind); }
    void skipeToComicWithBookmark(const VORABookMarkDTO &bookmark) override
    {
        calls << QStringLiteral("bookmark:") + bookmark.pageId;
    }
    QStringList calls;
};

// The comic as the site answers it to the user signed in now.
inline std::optional<VORAComicInfoDTO> fetchComic(const QString &comicId)
{
    VORAGetComicBasicInfoService service;
    service.comicId = comicId;
    ServiceWaiter waiter;
    service.asynchronousRequestWithDelegate(&waiter);
    if (!QTest::qWaitFor([&]() { return waiter.done; }, 10000) || waiter.failed)
        return std::nullopt;
    return service.comicInfo();
}

inline void clearBookmarks()
{
    VORADatabaseManager db;
    for (const BookmarkPtr &record : db.getBookmark())
        db.deleteBookmark(record);
}

// A stored bookmark of page pageId (index pageIndex) added at `time`; without
// a cover address, one where nothing answers.
inline void storeBookmark(const QString &comicId, const QString &chapterName, const QString &pageId, int pageIndex,
                          const QDateTime &time, const QString &coverUrl = QString())
{
    VORADatabaseManager db;
    VORAComicInfoDTO comic;
    comic.comicId = comicId;
    comic.name = QStringLiteral("漫画") + comicId;
    comic.coverUrl = coverUrl.isEmpty() ? QStringLiteral("http://127.0.0.1:9/cover/") + comicId + QStringLiteral(".jpg") : coverUrl;
    VORAChapterInfoDTO chapter;
    chapter.chapterId = comicId + QStringLiteral("01");
    chapter.name = chapterName;
    VORAPageInfoDTO page;
    page.pageId = pageId;
    page.index = pageIndex;
    const BookmarkPtr record = db.addBookmarkWithComic(comic, chapter, page);
    record->setAddBookmarkTime(time);
    db.save();
}

inline QStringList pageIdsOf(const QList<VORABookMarkDTO> &list)
{
    QStringList ids;
    for (const VORABookMarkDTO &b : list)
        ids << b.pageId;
    return ids;
}
