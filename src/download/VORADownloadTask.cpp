#include "download/VORADownloadTask.h"

#include "download/VORADownloadManager.h"

VORADownloadManager *VORADownloadTask::target() const
{
    return m_target.data();
}

void VORADownloadTask::setTarget(VORADownloadManager *target)
{
    m_target = target;
}

void VORADownloadTask::reportToTarget(std::function<void(VORADownloadManager *)> call) const
{
    const QPointer<VORADownloadManager> target = m_target;
    if (!target)
        return;
    QMetaObject::invokeMethod(
        target.data(),
        [target, call = std::move(call)]() {
            if (target)
                call(target.data());
        },
        Qt::QueuedConnection);
}
