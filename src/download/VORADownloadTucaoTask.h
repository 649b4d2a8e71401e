#pragma once

#include "download/VORADownloadFileTask.h"

#include <memory>

// Fetches the first batch (at most 100) of one page's tucao, three attempts,
// and keeps it in {comicId}/{chapterId}/{pageId}.txt under the key "Tucao".
class VORADownloadTucaoTask : public VORADownloadFileTask
{
public:
    using VORADownloadFileTask::VORADownloadFileTask;
    static std::shared_ptr<VORADownloadTucaoTask> initWithDownloadChapter(const VORADownloadChapterInfoDTO &chapter,
                                                                          const VORAPageInfoDTO &page);

    static constexpr int attempts = 3;
    static constexpr int pageSize = 100;

protected:
    bool storeFile() override;
    FileKind kind() const override { return FileKind::Tucao; }
};
