#pragma once

#include "net/VORAChapterInfoDTO.h"
#include "net/VORAComicInfoDTO.h"
#include "net/VORAPageInfoDTO.h"

class VORADatabaseManager;

// What the reader writes on every page change and on leaving: the comic's
// recent-reading entry (updated, or added with the oldest entry dropped when
// 30 or more were held) and its reading position.
class ReadingPositionRecorder
{
public:
    static constexpr int maxRecentRead = 30;

    static void saveReadingPosition(VORADatabaseManager &db, const VORAComicInfoDTO &comic,
                                    const VORAChapterInfoDTO &chapter, const VORAPageInfoDTO &page);
};
