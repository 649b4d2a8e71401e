#pragma once

#include "store/VORADownloadChapterInfoDTO.h"
#include "store/VORADownloadComicInfoDTO.h"

#include <QList>
#include <QString>

// The store side of queueing and deleting chapters, as the detail page and the
// downloads screens do it: records and the comic's counters change together
// under the store lock.
class VORADownloadRecords
{
public:
    enum class Section { Downloading, Finished };

    // Makes the comic's record when missing (all counters 0); each chapter
    // without a record gets one, with empty completion lists, and adds 1 /
    // imageCount / imageSize to the comic's downloadingChapterCount /
    // downloadingPageCount / downloadingPageSize. Then every chapter (recorded
    // before or not) is passed to the download manager in the given order.
    static void queueChapters(const VORADownloadComicInfoDTO &comic, const QList<VORADownloadChapterInfoDTO> &chapters);

    // Deletes chapters of one comic: queued ones are stopped first, the chapter
    // directories are removed off the main thread; the comic's record, its
    // directory and its "comicInfo.txt" stay.
    // For the downloading section the comic's downloadingChapterCount drops by
    // the chapters deleted, and downloadingPageCount / downloadingPageSize are
    // set to the sums of imageCount / imageSize over the deleted chapters (set,
    // not reduced: the screens have always shown it so). The finished section
    // does the same with downloadChapterCount, downloadPageCount and
    // downloadPageSize, and stops nothing.
    static void deleteChapters(const QString &comicId, const QList<VORADownloadChapterInfoDTO> &chapters,
                               Section section);
};
