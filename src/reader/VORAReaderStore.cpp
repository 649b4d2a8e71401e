#include "reader/VORAReaderStore.h"

#include "store/ReadingPositionRecorder.h"
#include "store/VORADatabaseManager.h"

#include <QFile>

VORAReaderStore::VORAReaderStore(QObject *parent)
    : QObject(parent)
{
    m_pool.setMaxThreadCount(1);
    m_pool.setExpiryTimeout(5000);
    m_positionTimer.setSingleShot(true);
    m_positionTimer.setInterval(positionSaveDelayMs);
    connect(&m_positionTimer, &QTimer::timeout, this, &VORAReaderStore::positionSaveDue);
}

VORAReaderStore::~VORAReaderStore()
{
    m_positionTimer.stop();
    m_pool.waitForDone();
}

void VORAReaderStore::schedulePositionSave()
{
    m_positionTimer.start();
}

void VORAReaderStore::cancelPositionSave()
{
    m_positionTimer.stop();
}

void VORAReaderStore::saveReadingPosition(const VORAComicInfoDTO &comic, const VORAChapterInfoDTO &chapter,
                                          const VORAPageInfoDTO &page)
{
    m_positionTimer.stop();
    run([this, comic, chapter, page]() {
        VORADatabaseManager db;
        ReadingPositionRecorder::saveReadingPosition(db, comic, chapter, page);
        const QString comicId = comic.comicId;
        QMetaObject::invokeMethod(this, [this, comicId]() { emit readingPositionSaved(comicId); },
                                  Qt::QueuedConnection);
    });
}

void VORAReaderStore::addBookmark(const VORAComicInfoDTO &comic, const VORAChapterInfoDTO &chapter,
                                  const VORAPageInfoDTO &page)
{
    run([this, comic, chapter, page]() {
        VORADatabaseManager db;
        bool exists = false;
        // Page ids are compared across every comic.
        for (const BookmarkPtr &bookmark : db.getBookmark()) {
            if (bookmark && bookmark->pageId() == page.pageId) {
                exists = true;
                break;
            }
        }
        if (!exists) {
            db.addBookmarkWithComic(comic, chapter, page);
            db.save();
        }
        QMetaObject::invokeMethod(this, [this, exists]() { emit bookmarkAdded(!exists); }, Qt::QueuedConnection);
    });
}

void VORAReaderStore::removeFile(const QString &path)
{
    run([path]() { QFile::remove(path); });
}

void VORAReaderStore::afterQueuedWork(std::function<void()> done)
{
    run([this, done = std::move(done)]() { QMetaObject::invokeMethod(this, done, Qt::QueuedConnection); });
}

void VORAReaderStore::run(std::function<void()> job)
{
    // The destructor waits for the queue, so `this` outlives every job.
    m_pool.start(std::move(job));
}
