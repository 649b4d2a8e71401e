#pragma once

#include <atomic>
#include <memory>

// One unit of work of the download queue. Cancelling only marks it: an
// operation looks at the mark when it starts, so one already under way
// finishes its current file.
class VORADownloadOperation : public std::enable_shared_from_this<VORADownloadOperation>
{
public:
    virtual ~VORADownloadOperation() = default;

    // The work, run on a worker thread of the queue.
    virtual void main() = 0;

    void cancel() { m_cancelled = true; }
    bool isCancelled() const { return m_cancelled; }

private:
    std::atomic_bool m_cancelled{false};
};
