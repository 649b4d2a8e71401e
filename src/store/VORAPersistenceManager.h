#pragma once

#include "VORAHistory.h"

#include "net/VORAComicInfoDTO.h"
#include "net/VORAPageInfoDTO.h"
#include "net/VORATucao.h"

#include <QCborArray>
#include <QCborValue>
#include <QList>
#include <QString>

#include <optional>

class VORADatabaseManager;

// Names the archive files and the store file, reads and writes keyed
// archives, keeps the search history, and owns the main-thread store
// instance. Every committed save of another store instance (worker threads
// included) is merged into that instance on the main thread.
class VORAPersistenceManager
{
public:
    // The single instance, made once (thread-safe); its store instance lives
    // on the application's main thread.
    static VORAPersistenceManager *getPersistenceManager();

    // --- Paths (each creates its directory when missing) ---
    static QString appStatusFile();
    static QString userFile();
    static QString searchHistoryFile();
    static QString dbFile();
    // Name-based paths give the empty text for a name that is not a safe
    // file-name component ("/", "\\", "..", NUL or control characters).
    static QString photoSkinWithString(const QString &name);
    static QString themeWallpapers(const QString &name);
    static QString themeWallpapersTmp(const QString &name);
    static QString pageCacheFileWithPageId(const QString &pageId);
    static bool isSafePathComponent(const QString &name);

    // --- Downloaded comics (under VORAUtility::comicBookDirectory()) ---
    // {comicId}/comicInfo.txt, {comicId}/{chapterId}/chapterInfo.txt and, per
    // page, {comicId}/{chapterId}/{pageId}.png and {pageId}.txt. These only
    // name the files (nothing is created; the save functions make the missing
    // directories) and give the empty text when an identifier is not a safe
    // file-name component. Directories end in "/".
    static QString comicDirWithComicId(const QString &comicId);
    static QString comicInfoFileWithComicId(const QString &comicId);
    static QString chapterDirWithComicId(const QString &comicId, const QString &chapterId);
    static QString chapterInfoFileWithComicId(const QString &comicId, const QString &chapterId);
    static QString pageFileWithComicId(const QString &comicId, const QString &chapterId, const QString &pageId);
    static QString tucaoFileWithComicId(const QString &comicId, const QString &chapterId, const QString &pageId);

    // The archives of a downloaded comic: the comic record under "comic", the
    // chapter's page list under "chapter", a page's tucao under "Tucao". The
    // loaders give nothing (the page list: an empty list) when the file is
    // missing, damaged or of another shape. File work: call off the main thread
    // where it can wait.
    static void saveComicInfo(const VORAComicInfoDTO &comic, const QString &path);
    static std::optional<VORAComicInfoDTO> loadComicInfoWithFile(const QString &path);
    static void saveChapterInfo(const QList<VORAPageInfoDTO> &pages, const QString &path);
    static QList<VORAPageInfoDTO> loadChapterInfoWithFile(const QString &path);
    static void saveTucao(const QList<VORATucao> &tucao, const QString &path);
    static std::optional<QList<VORATucao>> loadTucaoWithFile(const QString &path);

    // --- Keyed archives ---
    // Replaces the file atomically with an archive holding `object` under
    // `key`; a failed write keeps the old file. Errors are ignored.
    static void saveObject(const QCborValue &object, const QString &key, const QString &path);
    // Undefined when the file is missing or unreadable, or lacks the key.
    static QCborValue loadObject(const QString &key, const QString &path);

    // Theme lists under the "photo" directory: key "Theme" / "SmallTheme".
    static void saveSkinFile(const QCborArray &themes, const QString &name);
    static QCborArray loadSkinWithSkin(const QString &name);
    static void saveSmallSkinFile(const QCborArray &themes, const QString &name);
    static QCborArray loadSkinWithSmallSkin(const QString &name);

    // --- Search history ("SearchHistory.txt", key "History") ---
    VORAHistory *loadSearchHistory();
    void saveSearchHistory();
    VORAHistory *history() { return &m_history; }

    VORADatabaseManager *databaseManager() const { return m_databaseManager; }

private:
    VORAPersistenceManager();
    VORAPersistenceManager(const VORAPersistenceManager &) = delete;
    VORAPersistenceManager &operator=(const VORAPersistenceManager &) = delete;

    VORAHistory m_history;
    VORADatabaseManager *m_databaseManager = nullptr;
};
