#include "VORADatabaseManager.h"

#include "DownloadChapter.h"
#include "DownloadComic.h"
#include "StoreContext.h"
#include "StoreCoordinator.h"
#include "VORAPersistenceManager.h"

#include <QMutex>
#include <QSet>

namespace {

QMutex clockMutex;
std::function<QDateTime()> testClock;

QDateTime now()
{
    QMutexLocker locker(&clockMutex);
    return testClock ? testClock() : QDateTime::currentDateTimeUtc();
}

void copyShelf(Bookshelf &record, const VORABookShelf &item)
{
    record.setComicId(item.comicId);
    record.setComicName(item.comicName);
    record.setCoverUrl(item.coverUrl);
    record.setNameFirstLetter(item.nameFirstletter);
    record.setIsHasUpdate(item.isHasUpdate);
    record.setIsNotRead(item.isNotRead);
    record.setUpdateTime(item.updateTime);
    record.setAdddateTime(item.adddateTime);
    record.setLatestUpdateChapterId(item.latestUpdateChapterId);
    record.setLatestUpdateChapterName(item.latestUpdateChapterName);
    record.setLatestReadChapterId(item.latestReadChapterId);
    record.setLatestReadChapterName(item.latestReadChapterName);
}

VORADownloadComicInfoDTO comicCopy(const DownloadComic &record, bool descriptive)
{
    VORADownloadComicInfoDTO copy;
    copy.comicId = record.comicId();
    copy.comicName = record.comicName();
    copy.coverUrl = record.coverUrl();
    copy.authorName = record.authorName();
    if (descriptive) {
        copy.theme = record.theme();
        const qint64 serial = record.comicSerial();
        if (serial == 0 || serial == 1)
            copy.comicSerial = qint32(serial);
    }
    copy.downloadChapterCount = record.downloadChapterCount();
    copy.downloadPageCount = record.downloadPageCount();
    copy.downloadPageSize = record.downloadPageSize();
    copy.downloadingChapterCount = record.downloadingChapterCount();
    copy.downloadingPageCount = record.downloadingPageCount();
    copy.downloadingPageSize = record.downloadingPageSize();
    copy.downloadingCompletePageCount = record.downloadingCompletePageCount();
    copy.downloadingCompleteTucaoCount = record.downloadingCompleteTucaoCount();
    return copy;
}

VORADownloadChapterInfoDTO chapterCopy(const DownloadChapter &record)
{
    VORADownloadChapterInfoDTO copy;
    copy.chapterId = record.chapterId();
    copy.chapterName = record.chapterName();
    copy.comicId = record.comicId();
    copy.chapterIndex = record.chapterIndex();
    copy.imageCount = record.imageCount();
    copy.imageSize = record.imageSize();
    copy.pageCompleteIds = record.pageCompleteIds();
    copy.tucaoCompleteIds = record.tucaoCompleteIds();
    copy.isFinishDownload = record.isFinishDownload();
    return copy;
}

QList<VORADownloadChapterInfoDTO> chapterCopies(const QList<DownloadChapterPtr> &records)
{
    QList<VORADownloadChapterInfoDTO> out;
    out.reserve(records.size());
    for (const auto &record : records)
        out.append(chapterCopy(*record));
    return out;
}

} // namespace

VORADatabaseManager::VORADatabaseManager(QObject *parent)
    : QObject(parent)
{
    const QString path = VORAPersistenceManager::dbFile();
    // An unusable file leaves the instance without a connection: it answers
    // every query with nothing and keeps its changes pending.
    m_context = StoreContext::create(StoreCoordinator::instance().prepareStore(path) ? path : QString());
}

VORADatabaseManager::~VORADatabaseManager() = default;

void VORADatabaseManager::initializeDB()
{
    StoreCoordinator::instance().prepareStore(VORAPersistenceManager::dbFile());
}

const QList<StoreModel::Entity> &VORADatabaseManager::managedObjectModel()
{
    return StoreModel::entities();
}

StoreCoordinator &VORADatabaseManager::persistentStoreCoordinator()
{
    return StoreCoordinator::instance();
}

void VORADatabaseManager::setClockForTesting(std::function<QDateTime()> clock)
{
    QMutexLocker locker(&clockMutex);
    testClock = std::move(clock);
}

// --- Reading position ---

ReadHistoryPtr VORADatabaseManager::getReadHistoryWithComic(const QString &comicId)
{
    const auto found = m_context->fetchAs<ReadHistory>(QStringLiteral("GetReadHistoryByComicId"), comicId);
    return found.isEmpty() ? nullptr : found.first();
}

ReadHistoryPtr VORADatabaseManager::addReadHistoryWithComic(const VORAComicInfoDTO &comic,
                                                            const VORAChapterInfoDTO &chapter,
                                                            const VORAPageInfoDTO &page)
{
    auto record = std::make_shared<ReadHistory>();
    record->setComicId(comic.comicId);
    record->setChapterId(chapter.chapterId);
    record->setPageId(page.pageId);
    m_context->insertRecord(record);
    save();
    return record;
}

void VORADatabaseManager::updateReadHistory(const ReadHistoryPtr &record, const VORAChapterInfoDTO &chapter,
                                            const VORAPageInfoDTO &page)
{
    if (!record)
        return;
    record->setChapterId(chapter.chapterId);
    record->setPageId(page.pageId);
    save();
}

// --- Bookshelf ---

void VORADatabaseManager::addBookshelfWithBookshelfList(const QList<VORABookShelf> &list)
{
    for (const auto &item : list) {
        auto record = std::make_shared<Bookshelf>();
        copyShelf(*record, item);
        m_context->insertRecord(record);
    }
    save();
}

void VORADatabaseManager::updateBookshelfWithBookshelfList(const QList<VORABookShelf> &list)
{
    QStringList ids;
    for (const auto &item : list)
        ids.append(item.comicId);
    const auto stored = m_context->fetchAs<Bookshelf>(QStringLiteral("GetBookshelfByComicId"), QString(), ids);
    for (const auto &item : list) {
        for (const auto &record : stored) {
            if (record->comicId() == item.comicId) {
                copyShelf(*record, item);
                break;
            }
        }
    }
    save();
}

QList<BookshelfPtr> VORADatabaseManager::getAllBookshelf()
{
    return m_context->fetchAs<Bookshelf>(QStringLiteral("GetAllBookshelf"));
}

BookshelfPtr VORADatabaseManager::getBookshelfWithComicId(const QString &comicId)
{
    const auto found = getBookshelfWithComicIdList({comicId});
    return found.isEmpty() ? nullptr : found.first();
}

QList<BookshelfPtr> VORADatabaseManager::getBookshelfWithComicIdList(const QStringList &comicIds)
{
    return m_context->fetchAs<Bookshelf>(QStringLiteral("GetBookshelfByComicId"), QString(), comicIds);
}

void VORADatabaseManager::deleteBookshelf(const QString &comicId)
{
    if (BookshelfPtr record = getBookshelfWithComicId(comicId)) {
        m_context->deleteRecord(record);
        save();
    }
}

// --- Bookmarks ---

QList<BookmarkPtr> VORADatabaseManager::getBookmark()
{
    return m_context->fetchAs<Bookmark>(QStringLiteral("GetBookmark"));
}

QList<BookmarkPtr> VORADatabaseManager::getBookmarkWithComic(const QString &comicId)
{
    return m_context->fetchAs<Bookmark>(QStringLiteral("GetBookmarkByComicId"), comicId);
}

BookmarkPtr VORADatabaseManager::addBookmarkWithComic(const VORAComicInfoDTO &comic,
                                                      const VORAChapterInfoDTO &chapter,
                                                      const VORAPageInfoDTO &page)
{
    auto record = std::make_shared<Bookmark>();
    record->setComicId(comic.comicId);
    record->setComicName(comic.name);
    record->setChapterId(chapter.chapterId);
    record->setChapterName(chapter.name);
    record->setChapterIndex(chapter.index);
    record->setPageId(page.pageId);
    record->setPageIndex(page.index);
    record->setAddBookmarkTime(now());
    record->setComicCover(comic.coverUrl);
    m_context->insertRecord(record);
    return record;
}

void VORADatabaseManager::deleteBookmark(const BookmarkPtr &record)
{
    if (!record)
        return;
    m_context->deleteRecord(record);
    save();
}

// --- Recent reading ---

QList<RecentReadInfoPtr> VORADatabaseManager::getRecentReadInfo()
{
    return m_context->fetchAs<RecentReadInfo>(QStringLiteral("GetRecentReadInfo"));
}

RecentReadInfoPtr VORADatabaseManager::getRecentReadInfoWithComic(const QString &comicId)
{
    const auto found = m_context->fetchAs<RecentReadInfo>(QStringLiteral("getRecentReadInfoByComicId"), comicId);
    return found.isEmpty() ? nullptr : found.first();
}

RecentReadInfoPtr VORADatabaseManager::addRecentReadInfoWithComic(const VORAComicInfoDTO &comic,
                                                                  const VORAChapterInfoDTO &chapter,
                                                                  const VORAPageInfoDTO &page)
{
    auto record = std::make_shared<RecentReadInfo>();
    record->setComicId(comic.comicId);
    record->setComicName(comic.name);
    record->setCoverUrl(comic.coverUrl);
    record->setChapterId(chapter.chapterId);
    record->setChapterName(chapter.name);
    record->setChapterIndex(chapter.index);
    record->setPageId(page.pageId);
    record->setPageIndex(page.index);
    record->setReadTime(now());
    m_context->insertRecord(record);
    save();
    return record;
}

void VORADatabaseManager::updateRecentReadInfo(const RecentReadInfoPtr &record, const VORAChapterInfoDTO &chapter,
                                               const VORAPageInfoDTO &page)
{
    if (!record)
        return;
    record->setChapterId(chapter.chapterId);
    record->setChapterName(chapter.name);
    record->setChapterIndex(chapter.index);
    record->setPageId(page.pageId);
    record->setPageIndex(page.index);
    record->setReadTime(now());
    save();
}

void VORADatabaseManager::deleteRecentReadInfo(const RecentReadInfoPtr &record)
{
    if (!record)
        return;
    m_context->deleteRecord(record);
    save();
}

// --- Downloads ---

std::optional<VORADownloadComicInfoDTO> VORADatabaseManager::getDownloadComicWithComic(const QString &comicId)
{
    const auto found = m_context->fetchAs<DownloadComic>(QStringLiteral("GetDownloadComicByComicId"), comicId);
    if (found.isEmpty())
        return std::nullopt;
    return comicCopy(*found.first(), true);
}

QList<VORADownloadComicInfoDTO> VORADatabaseManager::getAllDownloadComic()
{
    QList<VORADownloadComicInfoDTO> out;
    for (const auto &record : m_context->fetchAs<DownloadComic>(QStringLiteral("GetAllDownloadComic")))
        out.append(comicCopy(*record, false));
    return out;
}

void VORADatabaseManager::addDownlaodComicWithComic(const VORADownloadComicInfoDTO &comic)
{
    auto record = std::make_shared<DownloadComic>();
    record->setComicId(comic.comicId);
    record->setComicName(comic.comicName);
    record->setCoverUrl(comic.coverUrl);
    record->setAuthorName(comic.authorName);
    record->setTheme(comic.theme);
    record->setComicSerial(comic.comicSerial);
    record->setCreateComicDate(now());
    m_context->insertRecord(record);
    save();
}

void VORADatabaseManager::updateDownlaodComicWithComic(const VORADownloadComicInfoDTO &comic)
{
    const auto found = m_context->fetchAs<DownloadComic>(QStringLiteral("GetDownloadComicByComicId"), comic.comicId);
    if (found.isEmpty())
        return;
    const auto &record = found.first();
    record->setDownloadChapterCount(comic.downloadChapterCount);
    record->setDownloadPageCount(comic.downloadPageCount);
    record->setDownloadPageSize(comic.downloadPageSize);
    record->setDownloadingChapterCount(comic.downloadingChapterCount);
    record->setDownloadingPageCount(comic.downloadingPageCount);
    record->setDownloadingPageSize(comic.downloadingPageSize);
    record->setDownloadingCompletePageCount(comic.downloadingCompletePageCount);
    record->setDownloadingCompleteTucaoCount(comic.downloadingCompleteTucaoCount);
    save();
}

void VORADatabaseManager::updateDownlaodComicWithCreateDate(const VORADownloadComicInfoDTO &comic)
{
    // Kept as a plain save-if-present: it changes no field.
    if (!m_context->fetch(QStringLiteral("GetDownloadComicByComicId"), comic.comicId).isEmpty())
        save();
}

QList<VORADownloadChapterInfoDTO> VORADatabaseManager::getAllDownloadChapter()
{
    return chapterCopies(m_context->fetchAs<DownloadChapter>(QStringLiteral("GetAllDownloadChapter")));
}

QList<VORADownloadChapterInfoDTO> VORADatabaseManager::getDownloadChapterWithComicId(const QString &comicId)
{
    return chapterCopies(m_context->fetchAs<DownloadChapter>(QStringLiteral("GetDownloadChapterByComicId"), comicId));
}

std::optional<VORADownloadChapterInfoDTO> VORADatabaseManager::getDownloadChapterWithChapterId(const QString &chapterId)
{
    const auto found = getDownloadChapterWithChapterIdList({chapterId});
    if (found.isEmpty())
        return std::nullopt;
    return found.first();
}

QList<VORADownloadChapterInfoDTO> VORADatabaseManager::getDownloadChapterWithChapterIdList(const QStringList &chapterIds)
{
    return chapterCopies(
        m_context->fetchAs<DownloadChapter>(QStringLiteral("GetDownloadChapterByChapterId"), QString(), chapterIds));
}

void VORADatabaseManager::addDownlaodChapter(const VORADownloadChapterInfoDTO &chapter)
{
    addDownlaodChapterList({chapter});
}

void VORADatabaseManager::addDownlaodChapterList(const QList<VORADownloadChapterInfoDTO> &list)
{
    for (const auto &item : list) {
        auto record = std::make_shared<DownloadChapter>();
        record->setChapterId(item.chapterId);
        record->setChapterName(item.chapterName);
        record->setComicId(item.comicId);
        record->setChapterIndex(item.chapterIndex);
        record->setImageCount(item.imageCount);
        record->setImageSize(item.imageSize);
        record->setPageCompleteIds(QString(QLatin1String("")));
        record->setTucaoCompleteIds(QString(QLatin1String("")));
        record->setIsFinishDownload(false);
        m_context->insertRecord(record);
    }
    save();
}

void VORADatabaseManager::updateDownloadChapter(const VORADownloadChapterInfoDTO &chapter)
{
    const auto found = m_context->fetchAs<DownloadChapter>(QStringLiteral("GetDownloadChapterByChapterId"),
                                                          QString(), {chapter.chapterId});
    if (found.isEmpty())
        return;
    const auto &record = found.first();
    record->setPageCompleteIds(chapter.pageCompleteIds);
    record->setTucaoCompleteIds(chapter.tucaoCompleteIds);
    record->setIsFinishDownload(chapter.isFinishDownload);
    save();
}

void VORADatabaseManager::deleteDownloadChapter(const VORADownloadChapterInfoDTO &chapter)
{
    deleteDownloadChapterList({chapter});
}

void VORADatabaseManager::deleteDownloadChapterList(const QList<VORADownloadChapterInfoDTO> &list)
{
    QStringList ids;
    for (const auto &item : list)
        ids.append(item.chapterId);
    for (const auto &record : m_context->fetch(QStringLiteral("GetDownloadChapterByChapterId"), QString(), ids))
        m_context->deleteRecord(record);
    save();
}

// --- General ---

void VORADatabaseManager::save()
{
    m_context->save();
}

bool VORADatabaseManager::hasChanges() const
{
    return m_context->hasChanges();
}

void VORADatabaseManager::faultWithObject(const StoreRecordPtr &record)
{
    m_context->refreshRecord(record);
}

void VORADatabaseManager::mergeChangesFromContextDidSave(const StoreSaveNotice &notice)
{
    if (m_context->mergeChanges(notice))
        emit objectsDidChange();
}

QList<VORADownloadComicInfoDTO> VORADatabaseManager::registeredDownloadComics() const
{
    QList<VORADownloadComicInfoDTO> out;
    for (const auto &record : m_context->registeredRecords(StoreEntityKind::DownloadComic))
        out.append(comicCopy(static_cast<const DownloadComic &>(*record), true));
    return out;
}
