#include "VORABookMarkDTO.h"

VORABookMarkDTO VORABookMarkDTO::fromRecord(const Bookmark &record)
{
    VORABookMarkDTO row;
    row.comicId = record.comicId();
    row.comicName = record.comicName();
    row.coverUrl = record.comicCover();
    row.chapterId = record.chapterId();
    row.chapterName = record.chapterName();
    row.chapterIndex = record.chapterIndex();
    row.pageId = record.pageId();
    row.pageIndex = record.pageIndex();
    row.addBookmarkTime = record.addBookmarkTime();
    return row;
}
