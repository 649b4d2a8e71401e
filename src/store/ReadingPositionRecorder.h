#pragma once

#include "net/VORAChapterInfoDTO.h"
#include "net/VORAComicInfoDTO.h"
#include "net/VORAPageInfoDTO.h"

class VORADatabaseManager;

// What the reader writes on every page change and on leaving: the comic's
// reading position (updated or added), then its recent-reading entries (every
// one of the comic updated; else one added, and the last of the list dropped
// when 30 or more were held). Store work: call it on a worker thread with a
// store instance made there.
class ReadingPositionRecorder
{
public:
    static constexpr int maxRecentRead = 30;

    static void saveReadingPosition(VORADatabaseManager &db, const VORAComicInfoDTO &comic,
                                    const VORAChapterInfoDTO &chapter, const VORAPageInfoDTO &page);
};
