#include "VORARecendReadDTO.h"

VORARecendReadDTO VORARecendReadDTO::fromRecord(const RecentReadInfo &record)
{
    VORARecendReadDTO row;
    row.comicId = record.comicId();
    row.comicName = record.comicName();
    row.coverUrl = record.coverUrl();
    row.chapterId = record.chapterId();
    row.chapterName = record.chapterName();
    row.chapterIndex = record.chapterIndex();
    row.pageId = record.pageId();
    row.pageIndex = record.pageIndex();
    row.readTime = record.readTime();
    return row;
}
