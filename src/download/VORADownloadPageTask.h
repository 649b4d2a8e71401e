#pragma once

#include "download/VORADownloadFileTask.h"

#include <QByteArray>

#include <memory>
#include <optional>

// Fetches one page image (three attempts) and writes it, as fetched, to
// {comicId}/{chapterId}/{pageId}.png of the downloaded-comics tree.
class VORADownloadPageTask : public VORADownloadFileTask
{
public:
    using VORADownloadFileTask::VORADownloadFileTask;
    static std::shared_ptr<VORADownloadPageTask> initWithDownloadChapter(const VORADownloadChapterInfoDTO &chapter,
                                                                         const VORAPageInfoDTO &page);

    static constexpr int attempts = 3;

protected:
    bool storeFile() override;
    FileKind kind() const override { return FileKind::Page; }
};
