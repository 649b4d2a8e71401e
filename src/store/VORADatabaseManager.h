#pragma once

#include "Bookmark.h"
#include "Bookshelf.h"
#include "ReadHistory.h"
#include "RecentReadInfo.h"
#include "StoreModel.h"
#include "StoreSaveNotice.h"
#include "VORABookShelf.h"
#include "VORADownloadChapterInfoDTO.h"
#include "VORADownloadComicInfoDTO.h"

#include "net/VORAChapterInfoDTO.h"
#include "net/VORAComicInfoDTO.h"
#include "net/VORAPageInfoDTO.h"

#include <QList>
#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class StoreContext;
class StoreCoordinator;

// The only way into the store file "q42.sqlite". Every component makes its own
// instance; each instance has its own context (connection and fetched records)
// and is used on the thread that made it.
//
// Bookshelf, bookmark, recent-reading and reading-position records are handed
// out live: change a field, and the next save of this instance writes it.
// Download records are handed out as plain copies. Every changing operation
// saves at its end, except addBookmarkWithComic. No store error reaches the
// caller: failed fetches give nothing, failed saves keep the changes pending.
class VORADatabaseManager : public QObject
{
    Q_OBJECT
public:
    explicit VORADatabaseManager(QObject *parent = nullptr);
    ~VORADatabaseManager() override;

    // Prepares the store file (migration, damaged-file handling). Called once
    // at start-up; every instance also makes sure of it.
    static void initializeDB();
    static const QList<StoreModel::Entity> &managedObjectModel();
    // The process-wide coordinator; lock()/unlock() around every run of
    // related download-bookkeeping calls.
    static StoreCoordinator &persistentStoreCoordinator();
    // The time the store stamps records with (bookmarks, reading, queued
    // downloads): the clock, unless a test sets one (an empty one restores it).
    static void setClockForTesting(std::function<QDateTime()> clock);

    // --- Reading position ---
    ReadHistoryPtr getReadHistoryWithComic(const QString &comicId);
    ReadHistoryPtr addReadHistoryWithComic(const VORAComicInfoDTO &comic, const VORAChapterInfoDTO &chapter,
                                           const VORAPageInfoDTO &page);
    void updateReadHistory(const ReadHistoryPtr &record, const VORAChapterInfoDTO &chapter,
                           const VORAPageInfoDTO &page);

    // --- Bookshelf ---
    void addBookshelfWithBookshelfList(const QList<VORABookShelf> &list);
    void updateBookshelfWithBookshelfList(const QList<VORABookShelf> &list);
    QList<BookshelfPtr> getAllBookshelf();
    BookshelfPtr getBookshelfWithComicId(const QString &comicId);
    QList<BookshelfPtr> getBookshelfWithComicIdList(const QStringList &comicIds);
    void deleteBookshelf(const QString &comicId);
    void deleteBookshelf(const VORABookShelf &entry) { deleteBookshelf(entry.comicId); }

    // --- Bookmarks ---
    QList<BookmarkPtr> getBookmark();
    QList<BookmarkPtr> getBookmarkWithComic(const QString &comicId);
    // Not saved: the caller saves when the bookmark is confirmed.
    BookmarkPtr addBookmarkWithComic(const VORAComicInfoDTO &comic, const VORAChapterInfoDTO &chapter,
                                     const VORAPageInfoDTO &page);
    void deleteBookmark(const BookmarkPtr &record);

    // --- Recent reading ---
    QList<RecentReadInfoPtr> getRecentReadInfo();
    RecentReadInfoPtr getRecentReadInfoWithComic(const QString &comicId);
    RecentReadInfoPtr addRecentReadInfoWithComic(const VORAComicInfoDTO &comic,
                                                 const VORAChapterInfoDTO &chapter,
                                                 const VORAPageInfoDTO &page);
    void updateRecentReadInfo(const RecentReadInfoPtr &record, const VORAChapterInfoDTO &chapter,
                              const VORAPageInfoDTO &page);
    void deleteRecentReadInfo(const RecentReadInfoPtr &record);

    // --- Downloads (plain copies) ---
    std::optional<VORADownloadComicInfoDTO> getDownloadComicWithComic(const QString &comicId);
    // First queued first; theme and comicSerial stay at their defaults.
    QList<VORADownloadComicInfoDTO> getAllDownloadComic();
    // Uses comicId, comicName, coverUrl, authorName, theme, comicSerial.
    void addDownlaodComicWithComic(const VORADownloadComicInfoDTO &comic);
    void updateDownlaodComicWithComic(const VORADownloadComicInfoDTO &comic);
    void updateDownlaodComicWithCreateDate(const VORADownloadComicInfoDTO &comic);
    QList<VORADownloadChapterInfoDTO> getAllDownloadChapter();
    QList<VORADownloadChapterInfoDTO> getDownloadChapterWithComicId(const QString &comicId);
    std::optional<VORADownloadChapterInfoDTO> getDownloadChapterWithChapterId(const QString &chapterId);
    QList<VORADownloadChapterInfoDTO> getDownloadChapterWithChapterIdList(const QStringList &chapterIds);
    void addDownlaodChapter(const VORADownloadChapterInfoDTO &chapter);
    void addDownlaodChapterList(const QList<VORADownloadChapterInfoDTO> &list);
    void updateDownloadChapter(const VORADownloadChapterInfoDTO &chapter);
    void deleteDownloadChapter(const VORADownloadChapterInfoDTO &chapter);
    void deleteDownloadChapterList(const QList<VORADownloadChapterInfoDTO> &list);

    // --- General ---
    void save();
    bool hasChanges() const;
    // Discards the record's unsaved values; it reads the file again.
    void faultWithObject(const StoreRecordPtr &record);

    // Merges another instance's committed save (`dataUpdate`): records this
    // instance holds are re-read, deleted ones dropped; emits objectsDidChange
    // when any held record was touched.
    void mergeChangesFromContextDidSave(const StoreSaveNotice &notice);
    // Copies of the download comics this instance holds, as last read or
    // merged (no query).
    QList<VORADownloadComicInfoDTO> registeredDownloadComics() const;

signals:
    void objectsDidChange();

private:
    std::shared_ptr<StoreContext> m_context;
};
