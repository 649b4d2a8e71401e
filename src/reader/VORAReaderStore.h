#pragma once

#include "net/VORAChapterInfoDTO.h"
#include "net/VORAComicInfoDTO.h"
#include "net/VORAPageInfoDTO.h"

#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QTimer>

#include <functional>

// The reader's store work, run in order on a worker thread of its own so that
// no page turn waits for SQLite: the reading position (due a while after the
// last page change, and at once on leaving), bookmarks, and removing damaged
// page files from the cache. Its signals come back on the main thread.
class VORAReaderStore : public QObject
{
    Q_OBJECT
public:
    // The position is also saved this long after the last page change.
    static constexpr int positionSaveDelayMs = 1000;

    explicit VORAReaderStore(QObject *parent = nullptr);
    // Waits for the work under way.
    ~VORAReaderStore() override;

    // A page change: the position becomes due after the delay.
    void schedulePositionSave();
    void cancelPositionSave();
    bool isPositionSavePending() const { return m_positionTimer.isActive(); }
    void setPositionSaveDelay(int ms) { m_positionTimer.setInterval(ms); }

    // Reading history and recent reading for this page; readingPositionSaved()
    // follows.
    void saveReadingPosition(const VORAComicInfoDTO &comic, const VORAChapterInfoDTO &chapter,
                             const VORAPageInfoDTO &page);
    // A bookmark of this page unless one of the same page id exists (of any
    // comic); bookmarkAdded() tells which.
    void addBookmark(const VORAComicInfoDTO &comic, const VORAChapterInfoDTO &chapter, const VORAPageInfoDTO &page);
    void removeFile(const QString &path);
    // Runs after everything queued before it, then calls done on the main thread.
    void afterQueuedWork(std::function<void()> done);

signals:
    void positionSaveDue();
    void readingPositionSaved(const QString &comicId);
    // added is false when the page was bookmarked already.
    void bookmarkAdded(bool added);

private:
    void run(std::function<void()> job);

    QTimer m_positionTimer;
    QThreadPool m_pool;
};
