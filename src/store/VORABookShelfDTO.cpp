#include "VORABookShelfDTO.h"

VORABookShelfDTO VORABookShelfDTO::fromBookShelf(const VORABookShelf &entry)
{
    VORABookShelfDTO row;
    row.comicId = entry.comicId;
    row.comicName = entry.comicName;
    row.nameFirstLetter = entry.nameFirstletter;
    row.coverUrl = entry.coverUrl;
    row.latestChapterId = entry.latestUpdateChapterId;
    row.latestChapterName = entry.latestUpdateChapterName;
    row.latestReadChapterId = entry.latestReadChapterId;
    row.latestReadChapterName = entry.latestReadChapterName;
    row.updateTime = entry.updateTime;
    row.adddateTime = entry.adddateTime;
    row.isNotRead = entry.isNotRead;
    row.isHasUpdate = entry.isHasUpdate;
    return row;
}
