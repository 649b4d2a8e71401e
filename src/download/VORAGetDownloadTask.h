#pragma once

#include "download/VORADownloadTask.h"

#include "net/VORAPageInfoDTO.h"
#include "store/VORADownloadChapterInfoDTO.h"

#include <QList>

#include <optional>

// Prepares one chapter: learns its page list (from "chapterInfo.txt" when that
// holds one, else from the site, then keeps it there) and splits what the store
// has not recorded yet into pages to fetch and pages whose tucao to fetch.
class VORAGetDownloadTask : public VORADownloadTask
{
public:
    explicit VORAGetDownloadTask(const VORADownloadChapterInfoDTO &chapter);
    static std::shared_ptr<VORAGetDownloadTask> initWithDownloadChapter(const VORADownloadChapterInfoDTO &chapter);

    void main() override;
    // The chapter's pages; none when the site gave no answer or the chapter's
    // identifiers name no safe directory.
    std::optional<QList<VORAPageInfoDTO>> getPageInfo() const;

    VORADownloadChapterInfoDTO downloadChapterInfoDTO;
    // Filled by main() before it reports getDownloadTaskFinish; read by the
    // manager on the main thread after that.
    QList<VORAPageInfoDTO> pageTaskList;
    QList<VORAPageInfoDTO> tucaoTaskList;

private:
    void prepare();
};
