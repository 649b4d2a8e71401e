#pragma once

#include "download/VORADownloadOperation.h"

#include <QList>
#include <QMutex>
#include <QThreadPool>

#include <memory>

// A first-in first-out queue of cancellable operations run by a small pool of
// worker threads (two for the download manager).
class VORADownloadOperationQueue
{
public:
    explicit VORADownloadOperationQueue(int maxConcurrentOperationCount);
    // Cancels what waits and waits for what runs.
    ~VORADownloadOperationQueue();
    VORADownloadOperationQueue(const VORADownloadOperationQueue &) = delete;
    VORADownloadOperationQueue &operator=(const VORADownloadOperationQueue &) = delete;

    void addOperation(const std::shared_ptr<VORADownloadOperation> &operation);
    // Marks every waiting and running operation cancelled.
    void cancelAllOperations();

    // Operations added and not yet ended (cancelled ones included).
    int operationCount() const;
    // The most operations that ever ran at once.
    int peakRunningCount() const;

private:
    QThreadPool m_pool;
    mutable QMutex m_mutex;
    QList<std::shared_ptr<VORADownloadOperation>> m_operations;
    int m_running = 0;
    int m_peakRunning = 0;
};
