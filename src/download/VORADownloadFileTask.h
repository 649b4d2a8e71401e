#pragma once

#include "download/VORADownloadTask.h"

#include "net/VORAPageInfoDTO.h"
#include "store/VORADownloadChapterInfoDTO.h"

#include <QString>

// What the page task and the comment task share: the chapter copy, the page,
// a unique operation name, and the recording of one finished file.
class VORADownloadFileTask : public VORADownloadTask
{
public:
    enum class FileKind { Page, Tucao };

    VORADownloadFileTask(const VORADownloadChapterInfoDTO &chapter, const VORAPageInfoDTO &page);

    void main() override;

    VORADownloadChapterInfoDTO downloadChapter;
    VORAPageInfoDTO page;
    QString operataionName;

    // Under the store lock: appends `pageId` to the chapter's completion list of
    // `kind` and moves the comic's counters; marks the chapter finished when it
    // reaches 100 per cent (the counters then move by `chapter`'s imageCount and
    // imageSize). True when this file finished the chapter. A chapter without a
    // record records nothing; a page already listed is not counted twice.
    static bool recordFile(const VORADownloadChapterInfoDTO &chapter, const QString &pageId, FileKind kind);

protected:
    // Fetches and writes the file; false when it could not.
    virtual bool storeFile() = 0;
    virtual FileKind kind() const = 0;
};
