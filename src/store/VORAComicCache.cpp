#include "store/VORAComicCache.h"

#include "core/VORASystemConfig.h"
#include "core/VORAUtility.h"
#include "store/StoreLogging.h"
#include "store/VORAPersistenceManager.h"

#include <QCborMap>
#include <QDir>
#include <QFile>
#include <QMutex>
#include <QMutexLocker>

namespace {
QMutex &cacheLock()
{
    static QMutex lock;
    return lock;
}
const QString comicKey = QStringLiteral("comic");
} // namespace

VORAComicCache::VORAComicCache()
    : m_maxCacheCount(VORASystemConfig::getComicCacheMaxCount())
{
}

VORAComicCache *VORAComicCache::shareComicCacheObj()
{
    static VORAComicCache instance;
    return &instance;
}

QString VORAComicCache::cacheFileWithComicId(const QString &comicId)
{
    if (comicId.isEmpty() || !VORAPersistenceManager::isSafePathComponent(comicId))
        return {};
    return VORAUtility::comicCacheDirectory() + comicId + QStringLiteral(".txt");
}

std::optional<VORAComicInfoDTO> VORAComicCache::getComicWithComicId(const QString &comicId) const
{
    const QString path = cacheFileWithComicId(comicId);
    if (path.isEmpty())
        return std::nullopt;
    QMutexLocker locker(&cacheLock());
    const QCborValue value = VORAPersistenceManager::loadObject(comicKey, path);
    if (!value.isMap())
        return std::nullopt;
    VORAComicInfoDTO comic = VORAComicInfoDTO::fromArchive(value.toMap());
    if (comic.comicId.isEmpty())
        comic.comicId = comicId;
    return comic;
}

void VORAComicCache::cacheComic(const VORAComicInfoDTO &comic)
{
    const QString path = cacheFileWithComicId(comic.comicId);
    if (path.isEmpty()) {
        qCWarning(lcStore) << "comic cache: unsafe comic id, not cached:" << comic.comicId;
        return;
    }
    QMutexLocker locker(&cacheLock());
    const QString dirPath = VORAUtility::comicCacheDirectory();
    VORAUtility::createDir(dirPath);
    QDir dir(dirPath);
    const QStringList entries = dir.entryList(QDir::Files | QDir::NoDotAndDotDot, QDir::Name);
    if (entries.size() > m_maxCacheCount && !QFile::exists(path))
        QFile::remove(dir.filePath(entries.first()));
    VORAPersistenceManager::saveObject(comic.toArchive(), comicKey, path);
}
