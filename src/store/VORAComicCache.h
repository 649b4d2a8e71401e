#pragma once

#include "net/VORAComicInfoDTO.h"

#include <QString>

#include <optional>

// The comic information cache: Caches/appCache/comic/<comicId>.txt, one keyed
// archive holding the comic record under "comic". At most
// getComicCacheMaxCount() files are kept: before a write, when the directory
// holds more, the first entry of its listing goes.
//
// The operations read and write files: call them off the main thread. They are
// safe to call from several threads (one lock around each).
class VORAComicCache
{
public:
    static VORAComicCache *shareComicCacheObj();

    // The cached record, none when there is no file, the file is damaged or the
    // identifier is not a safe file name.
    std::optional<VORAComicInfoDTO> getComicWithComicId(const QString &comicId) const;
    // Replaces the comic's file (atomically); a comic with an unsafe identifier
    // is not written.
    void cacheComic(const VORAComicInfoDTO &comic);

    static QString cacheFileWithComicId(const QString &comicId);

    int maxCacheCount() const { return m_maxCacheCount; }

private:
    VORAComicCache();
    int m_maxCacheCount = 10;
};
