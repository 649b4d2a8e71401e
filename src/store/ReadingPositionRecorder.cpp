#include "ReadingPositionRecorder.h"

#include "VORADatabaseManager.h"

void ReadingPositionRecorder::saveReadingPosition(VORADatabaseManager &db, const VORAComicInfoDTO &comic,
                                                  const VORAChapterInfoDTO &chapter, const VORAPageInfoDTO &page)
{
    if (const RecentReadInfoPtr recent = db.getRecentReadInfoWithComic(comic.comicId)) {
        db.updateRecentReadInfo(recent, chapter, page);
    } else {
        const auto before = db.getRecentReadInfo(); // newest first
        db.addRecentReadInfoWithComic(comic, chapter, page);
        if (before.size() >= maxRecentRead)
            db.deleteRecentReadInfo(before.last());
    }

    if (const ReadHistoryPtr history = db.getReadHistoryWithComic(comic.comicId))
        db.updateReadHistory(history, chapter, page);
    else
        db.addReadHistoryWithComic(comic, chapter, page);
}
