#pragma once

#include "store/VORADownloadChapterInfoDTO.h"

#include <QList>
#include <QString>

// Deleting downloaded or downloading chapters of one comic, as the downloads
// screens do it: queued chapters are stopped first, the records and the
// comic's counters change together under the store lock, and the chapter
// directories are removed off the main thread. The comic's record, its
// directory and its "comicInfo.txt" stay.
class VORADownloadChapterDeletion
{
public:
    enum class Section { Downloading, Finished };

    // For the downloading section the comic's downloadingChapterCount drops by
    // the chapters deleted, and downloadingPageCount / downloadingPageSize are
    // set to the sums of imageCount / imageSize over the deleted chapters (set,
    // not reduced: the screens have always shown it so). The finished section
    // does the same with downloadChapterCount, downloadPageCount and
    // downloadPageSize, and stops nothing.
    static void deleteChapters(const QString &comicId, const QList<VORADownloadChapterInfoDTO> &chapters,
                               Section section);
};
