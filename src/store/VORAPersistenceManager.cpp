#include "VORAPersistenceManager.h"

#include "StoreSaveNotifier.h"
#include "VORADatabaseManager.h"

#include "core/VORAArchiveNames.h"
#include "core/VORAUtility.h"
#include "platform/KeyedArchive.h"

#include <QCborArray>
#include <QCborMap>
#include <QCoreApplication>
#include <QDir>
#include <QThread>

namespace {

QString inDirectory(const QString &directory, const QString &fileName)
{
    QDir().mkpath(directory);
    return QDir(directory).filePath(fileName);
}

QString namedFile(const QString &directory, const QString &name, const char *extension)
{
    if (!VORAPersistenceManager::isSafePathComponent(name))
        return QString();
    return inDirectory(directory, name + QLatin1String(extension));
}

} // namespace

VORAPersistenceManager *VORAPersistenceManager::getPersistenceManager()
{
    static VORAPersistenceManager *manager = new VORAPersistenceManager;
    return manager;
}

VORAPersistenceManager::VORAPersistenceManager()
{
    m_databaseManager = new VORADatabaseManager;
    if (QCoreApplication *app = QCoreApplication::instance()) {
        if (m_databaseManager->thread() != app->thread())
            m_databaseManager->moveToThread(app->thread());
    }
    // `dataUpdate`: every other instance's committed save is merged here, on
    // the main thread, whichever thread saved.
    VORADatabaseManager *mainInstance = m_databaseManager;
    QObject::connect(
        StoreSaveNotifier::instance(), &StoreSaveNotifier::contextDidSave, mainInstance,
        [mainInstance](const StoreSaveNotice &notice) { mainInstance->mergeChangesFromContextDidSave(notice); },
        Qt::QueuedConnection);
}

bool VORAPersistenceManager::isSafePathComponent(const QString &name)
{
    if (name.isEmpty() || name == QLatin1String(".") || name.contains(QLatin1String("..")))
        return false;
    for (const QChar c : name) {
        if (c == QLatin1Char('/') || c == QLatin1Char('\\') || c.unicode() < 0x20 || c.unicode() == 0x7f)
            return false;
    }
    return true;
}

QString VORAPersistenceManager::appStatusFile()
{
    return inDirectory(VORAUtility::getUserDataDirectory(), QLatin1String(VORAArchiveNames::appStatusFile));
}

QString VORAPersistenceManager::userFile()
{
    return inDirectory(VORAUtility::getUserDataDirectory(), QLatin1String(VORAArchiveNames::userFile));
}

QString VORAPersistenceManager::searchHistoryFile()
{
    return inDirectory(VORAUtility::getUserDataDirectory(), QLatin1String(VORAArchiveNames::searchHistoryFile));
}

QString VORAPersistenceManager::dbFile()
{
    return inDirectory(VORAUtility::getUserDataDirectory(), QLatin1String(VORAArchiveNames::storeFile));
}

QString VORAPersistenceManager::photoSkinWithString(const QString &name)
{
    return namedFile(VORAUtility::photoSkinDirectory(), name, ".txt");
}

QString VORAPersistenceManager::themeWallpapers(const QString &name)
{
    return namedFile(VORAUtility::getUserWallPapersDirectory(), name, ".png");
}

QString VORAPersistenceManager::themeWallpapersTmp(const QString &name)
{
    return namedFile(VORAUtility::getUserWallPapersDirectoryTem(), name, ".png");
}

QString VORAPersistenceManager::pageCacheFileWithPageId(const QString &pageId)
{
    return namedFile(VORAUtility::pageCacheDirectory(), pageId, ".png");
}

QString VORAPersistenceManager::comicDirWithComicId(const QString &comicId)
{
    if (!isSafePathComponent(comicId))
        return QString();
    return VORAUtility::comicBookDirectory() + comicId + QLatin1Char('/');
}

QString VORAPersistenceManager::comicInfoFileWithComicId(const QString &comicId)
{
    const QString dir = comicDirWithComicId(comicId);
    return dir.isEmpty() ? QString() : dir + QLatin1String("comicInfo.txt");
}

QString VORAPersistenceManager::chapterDirWithComicId(const QString &comicId, const QString &chapterId)
{
    const QString dir = comicDirWithComicId(comicId);
    if (dir.isEmpty() || !isSafePathComponent(chapterId))
        return QString();
    return dir + chapterId + QLatin1Char('/');
}

QString VORAPersistenceManager::chapterInfoFileWithComicId(const QString &comicId, const QString &chapterId)
{
    const QString dir = chapterDirWithComicId(comicId, chapterId);
    return dir.isEmpty() ? QString() : dir + QLatin1String("chapterInfo.txt");
}

QString VORAPersistenceManager::pageFileWithComicId(const QString &comicId, const QString &chapterId,
                                                    const QString &pageId)
{
    const QString dir = chapterDirWithComicId(comicId, chapterId);
    if (dir.isEmpty() || !isSafePathComponent(pageId))
        return QString();
    return dir + pageId + QLatin1String(".png");
}

QString VORAPersistenceManager::tucaoFileWithComicId(const QString &comicId, const QString &chapterId,
                                                     const QString &pageId)
{
    const QString dir = chapterDirWithComicId(comicId, chapterId);
    if (dir.isEmpty() || !isSafePathComponent(pageId))
        return QString();
    return dir + pageId + QLatin1String(".txt");
}

void VORAPersistenceManager::saveComicInfo(const VORAComicInfoDTO &comic, const QString &path)
{
    saveObject(comic.toArchive(), QStringLiteral("comic"), path);
}

std::optional<VORAComicInfoDTO> VORAPersistenceManager::loadComicInfoWithFile(const QString &path)
{
    const QCborValue stored = loadObject(QStringLiteral("comic"), path);
    if (!stored.isMap())
        return std::nullopt;
    return VORAComicInfoDTO::fromArchive(stored.toMap());
}

void VORAPersistenceManager::saveChapterInfo(const QList<VORAPageInfoDTO> &pages, const QString &path)
{
    QCborArray list;
    for (const VORAPageInfoDTO &page : pages)
        list.append(page.toArchive());
    saveObject(list, QStringLiteral("chapter"), path);
}

QList<VORAPageInfoDTO> VORAPersistenceManager::loadChapterInfoWithFile(const QString &path)
{
    QList<VORAPageInfoDTO> pages;
    const QCborValue stored = loadObject(QStringLiteral("chapter"), path);
    if (!stored.isArray())
        return pages;
    const QCborArray list = stored.toArray();
    for (const QCborValue &item : list) {
        if (item.isMap()) // a damaged entry is left out
            pages.append(VORAPageInfoDTO::fromArchive(item.toMap()));
    }
    return pages;
}

void VORAPersistenceManager::saveTucao(const QList<VORATucao> &tucao, const QString &path)
{
    QCborArray list;
    for (const VORATucao &t : tucao)
        list.append(t.toArchive());
    saveObject(list, QStringLiteral("Tucao"), path);
}

std::optional<QList<VORATucao>> VORAPersistenceManager::loadTucaoWithFile(const QString &path)
{
    const QCborValue stored = loadObject(QStringLiteral("Tucao"), path);
    if (!stored.isArray())
        return std::nullopt;
    QList<VORATucao> tucao;
    const QCborArray list = stored.toArray();
    for (const QCborValue &item : list) {
        if (item.isMap())
            tucao.append(VORATucao::fromArchive(item.toMap()));
    }
    return tucao;
}

void VORAPersistenceManager::saveObject(const QCborValue &object, const QString &key, const QString &path)
{
    if (path.isEmpty())
        return;
    // The archive replaces the old file atomically, so a failed write never
    // leaves the caller without the previous copy.
    KeyedArchive::save(path, key, object, path == userFile());
}

QCborValue VORAPersistenceManager::loadObject(const QString &key, const QString &path)
{
    if (path.isEmpty())
        return QCborValue();
    return KeyedArchive::load(path, key);
}

void VORAPersistenceManager::saveSkinFile(const QCborArray &themes, const QString &name)
{
    saveObject(themes, QStringLiteral("Theme"), photoSkinWithString(name));
}

QCborArray VORAPersistenceManager::loadSkinWithSkin(const QString &name)
{
    return loadObject(QStringLiteral("Theme"), photoSkinWithString(name)).toArray();
}

void VORAPersistenceManager::saveSmallSkinFile(const QCborArray &themes, const QString &name)
{
    saveObject(themes, QStringLiteral("SmallTheme"), photoSkinWithString(name));
}

QCborArray VORAPersistenceManager::loadSkinWithSmallSkin(const QString &name)
{
    return loadObject(QStringLiteral("SmallTheme"), photoSkinWithString(name)).toArray();
}

VORAHistory *VORAPersistenceManager::loadSearchHistory()
{
    const QCborValue stored =
        loadObject(QLatin1String(VORAArchiveNames::searchHistoryKey), searchHistoryFile());
    m_history = VORAHistory::initWithCoder(stored);
    return &m_history;
}

void VORAPersistenceManager::saveSearchHistory()
{
    saveObject(m_history.encodeWithCoder(), QLatin1String(VORAArchiveNames::searchHistoryKey),
               searchHistoryFile());
}
