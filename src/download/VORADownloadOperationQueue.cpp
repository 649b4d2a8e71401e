#include "download/VORADownloadOperationQueue.h"

#include <QMutexLocker>

VORADownloadOperationQueue::VORADownloadOperationQueue(int maxConcurrentOperationCount)
{
    m_pool.setMaxThreadCount(maxConcurrentOperationCount);
}

VORADownloadOperationQueue::~VORADownloadOperationQueue()
{
    cancelAllOperations();
    m_pool.waitForDone();
}

void VORADownloadOperationQueue::addOperation(const std::shared_ptr<VORADownloadOperation> &operation)
{
    {
        QMutexLocker locker(&m_mutex);
        m_operations.append(operation);
    }
    m_pool.start([this, operation]() {
        {
            QMutexLocker locker(&m_mutex);
            m_peakRunning = qMax(m_peakRunning, ++m_running);
        }
        if (!operation->isCancelled())
            operation->main();
        QMutexLocker locker(&m_mutex);
        --m_running;
        m_operations.removeOne(operation);
    });
}

void VORADownloadOperationQueue::cancelAllOperations()
{
    QMutexLocker locker(&m_mutex);
    for (const auto &operation : std::as_const(m_operations))
        operation->cancel();
}

int VORADownloadOperationQueue::operationCount() const
{
    QMutexLocker locker(&m_mutex);
    return int(m_operations.size());
}

int VORADownloadOperationQueue::peakRunningCount() const
{
    QMutexLocker locker(&m_mutex);
    return m_peakRunning;
}
