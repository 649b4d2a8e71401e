#include "ReadingPositionRecorder.h"

#include "VORADatabaseManager.h"

void ReadingPositionRecorder::saveReadingPosition(VORADatabaseManager &db, const VORAComicInfoDTO &comic,
                                                  const VORAChapterInfoDTO &chapter, const VORAPageInfoDTO &page)
{
    if (const ReadHistoryPtr history = db.getReadHistoryWithComic(comic.comicId))
        db.updateReadHistory(history, chapter, page);
    else
        db.addReadHistoryWithComic(comic, chapter, page);

    // Every entry of the comic follows (there may be more than one); a comic
    // not listed yet is added and, when 30 or more were held, the last one goes.
    const auto before = db.getRecentReadInfo(); // newest first
    bool matched = false;
    for (const RecentReadInfoPtr &entry : before) {
        if (entry->comicId() == comic.comicId) {
            db.updateRecentReadInfo(entry, chapter, page);
            matched = true;
        }
    }
    if (matched)
        return;
    db.addRecentReadInfoWithComic(comic, chapter, page);
    if (before.size() >= maxRecentRead)
        db.deleteRecentReadInfo(before.last());
}
