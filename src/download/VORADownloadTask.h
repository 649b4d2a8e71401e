#pragma once

#include "download/VORADownloadOperation.h"

#include <QMetaObject>
#include <QPointer>

#include <functional>

class VORADownloadManager;

// A download operation that reports to its target, the download manager, on
// the manager's (main) thread without waiting. The target is not owned.
class VORADownloadTask : public VORADownloadOperation
{
public:
    VORADownloadManager *target() const;
    void setTarget(VORADownloadManager *target);

protected:
    // Queues `call` to run on the target's thread; nothing when there is no target.
    void reportToTarget(std::function<void(VORADownloadManager *)> call) const;

private:
    QPointer<VORADownloadManager> m_target;
};
