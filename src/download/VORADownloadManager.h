#pragma once

#include "download/VORADownloadOperationQueue.h"

#include "store/StoreSaveNotice.h"
#include "store/VORADownloadChapterInfoDTO.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>

class VORAGetDownloadTask;

// The process-wide download queue. Chapters wait in `downloadChaperList`; the
// head is downloaded: its preparation task, then one task per missing page
// image and one per missing page tucao, run two at a time on `taskQueue`. The
// tasks record every file in the store as it lands, so a stopped or failed
// chapter resumes where it left off; the queue itself is not kept.
//
// Lives on the main thread; every operation and every callback runs there
// (the tasks queue their callbacks to it).
class VORADownloadManager : public QObject
{
    Q_OBJECT
public:
    enum DownloadStatus { Downloading = 1, Waiting = 2, Stopped = 3, Finished = 4 };

    // Which screens that follow downloads are on screen, asked at each event:
    // the comic detail page, and the downloads detail screen showing
    // downloading chapters (not its finished-downloads mode).
    struct ShownScreens
    {
        bool comicHomePage = false;
        bool downloadDetailDownloading = false;
    };

    static VORADownloadManager *shareDownloadManagerObj();

    // The app shell answers this; without it no screen counts as shown.
    void setShownScreensQuery(std::function<ShownScreens()> query);

    void beginDownloadChapter(const VORADownloadChapterInfoDTO &chapter);
    // Appends (no check for chapters already queued); starts the head when the
    // queue was empty.
    void beginDownloadChapterList(const QList<VORADownloadChapterInfoDTO> &list);
    void stopDownloadChapter(const VORADownloadChapterInfoDTO &chapter);
    // Removes every queued entry of these chapters; stopping the head cancels
    // its tasks and starts the next chapter.
    void stopDownloadChapterList(const QList<VORADownloadChapterInfoDTO> &list);
    // Cancels every task and empties the queue; stored progress stays.
    void cancelAllDownload();
    int getDownloadStatusWithDownloadChapter(const VORADownloadChapterInfoDTO &chapter) const;
    void postDownloadCountChangeNotification();
    // Merges a worker store instance's committed save into the main-thread
    // store instance.
    void dataUpdate(const StoreSaveNotice &notice);

    const QList<VORADownloadChapterInfoDTO> &downloadChaperList() const { return m_downloadChaperList; }
    const VORADownloadOperationQueue &taskQueue() const { return *m_taskQueue; }

    // --- Callbacks of the tasks (main thread) ---
    void getDownloadTaskFinish(const std::shared_ptr<VORAGetDownloadTask> &task);
    void getDownloadTaskFail(const VORADownloadChapterInfoDTO &chapter);
    void downloadPageTaskFinish(const VORADownloadChapterInfoDTO &chapter);
    void downloadPageTaskFail(const VORADownloadChapterInfoDTO &chapter);
    void downloadTucaoTaskFinish(const VORADownloadChapterInfoDTO &chapter);
    void downloadTucaoTaskFail(const VORADownloadChapterInfoDTO &chapter);
    void downloadChapterTaskFinish(const VORADownloadChapterInfoDTO &chapter);

private:
    enum class Ending { Finished, PreparationFailed, PageFailed, TucaoFailed };

    VORADownloadManager();
    bool isHead(const VORADownloadChapterInfoDTO &chapter) const;
    void startHeadChapter();
    void endChapter(const VORADownloadChapterInfoDTO &chapter, Ending ending);
    void postFileUpdate(const VORADownloadChapterInfoDTO &chapter, const char *type);
    void post(const char *name, const QVariantMap &userInfo);
    ShownScreens shownScreens() const;

    std::unique_ptr<VORADownloadOperationQueue> m_taskQueue;
    QList<VORADownloadChapterInfoDTO> m_downloadChaperList;
    std::shared_ptr<VORAGetDownloadTask> m_getDownloadTask;
    std::function<ShownScreens()> m_shownScreensQuery;
};
