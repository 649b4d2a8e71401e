#include "platform/Reachability.h"
#include "platform/NotificationCenter.h"
#include "platform/PlatformLog.h"

#include <QCoreApplication>
#include <QHash>
#include <QMutexLocker>
#include <QTcpSocket>
#include <QThread>

#include <chrono>

namespace {

struct Registry
{
    QMutex mutex;
    QHash<QString, Reachability *> monitors;
    bool postRoutineAdded = false;
};

Registry &registry()
{
    static Registry *r = new Registry;
    return *r;
}

} // namespace

Reachability *Reachability::reachabilityWithHostName(const QString &host, quint16 port)
{
    Registry &r = registry();
    Reachability *monitor = nullptr;
    bool created = false;
    {
        QMutexLocker lock(&r.mutex);
        const QString id = host + QLatin1Char(':') + QString::number(port);
        monitor = r.monitors.value(id);
        if (!monitor) {
            monitor = new Reachability(host, port);
            created = true;
            // Changes are announced on the main thread, whichever thread asked first.
            if (QCoreApplication::instance())
                monitor->moveToThread(QCoreApplication::instance()->thread());
            r.monitors.insert(id, monitor);
            if (!r.postRoutineAdded && QCoreApplication::instance()) {
                // Stop the probing threads before the application object goes away.
                qAddPostRoutine(&Reachability::stopAll);
                r.postRoutineAdded = true;
            }
        }
    }
    if (created) {
        // The first probe runs on the asking thread, bounded by firstProbeWait, so
        // the first answer is a real one (a loopback connect takes microseconds).
        monitor->record(monitor->probe(firstProbeWait));
        {
            std::lock_guard<std::mutex> lock(monitor->m_wakeMutex);
            monitor->m_probed = true;
        }
        monitor->m_wake.notify_all();
        monitor->m_thread = QThread::create([monitor] { monitor->run(); });
        monitor->m_thread->setObjectName(QStringLiteral("reachability %1:%2").arg(host).arg(port));
        monitor->m_thread->start();
    } else if (!monitor->m_probed) {
        // Another thread is running the first probe: wait for it as long as it may take.
        std::unique_lock<std::mutex> lock(monitor->m_wakeMutex);
        monitor->m_wake.wait_for(lock, std::chrono::milliseconds(firstProbeWait + 100),
                                 [monitor] { return monitor->m_probed.load(); });
    }
    return monitor;
}

Reachability::Reachability(const QString &host, quint16 port)
    : m_host(host)
    , m_port(port)
{
}

Reachability::~Reachability()
{
    stop();
}

int Reachability::currentReachabilityStatus() const
{
    requestProbe();
    return m_status.load();
}

void Reachability::requestProbe() const
{
    {
        std::lock_guard<std::mutex> lock(m_wakeMutex);
        m_probeRequested = true;
    }
    m_wake.notify_all();
}

bool Reachability::probe(int timeout) const
{
    if (m_host.isEmpty() || m_port == 0)
        return false;
    QTcpSocket socket;
    socket.connectToHost(m_host, m_port);
    const bool ok = socket.waitForConnected(timeout);
    socket.abort();
    return ok;
}

void Reachability::record(bool reachable)
{
    const int status = reachable ? ReachableViaWiFi : NotReachable;
    const int previous = m_status.exchange(status);
    if (previous != status) {
        qCInfo(lcPlatform) << "reachability of" << m_host << m_port << "is now" << status;
        // Announce on the monitor's own thread, never on the probing thread.
        QMetaObject::invokeMethod(this, &Reachability::announceChange, Qt::QueuedConnection);
    }
}

void Reachability::run()
{
    using Clock = std::chrono::steady_clock;
    Clock::time_point probedAt = Clock::now();
    for (;;) {
        {
            std::unique_lock<std::mutex> lock(m_wakeMutex);
            m_wake.wait_until(lock, probedAt + std::chrono::milliseconds(probeInterval),
                              [this] { return m_stopping || m_probeRequested; });
            if (m_stopping)
                return;
            if (m_probeRequested) {
                // Questions come in bursts: probe at most every minProbeGap ms.
                m_wake.wait_until(lock, probedAt + std::chrono::milliseconds(minProbeGap),
                                  [this] { return m_stopping; });
                if (m_stopping)
                    return;
            }
            m_probeRequested = false;
        }
        probedAt = Clock::now();
        record(probe(probeTimeout));
    }
}

void Reachability::announceChange()
{
    NotificationCenter::defaultCenter().post(
        QString::fromLatin1(changedNotification), this,
        {{QStringLiteral("status"), m_status.load()}});
}

void Reachability::stop()
{
    {
        std::lock_guard<std::mutex> lock(m_wakeMutex);
        m_stopping = true; // a thread started after this returns at once
    }
    m_wake.notify_all();
    if (!m_thread)
        return;
    m_thread->wait();
    delete m_thread;
    m_thread = nullptr;
}

void Reachability::stopAll()
{
    Registry &r = registry();
    QMutexLocker lock(&r.mutex);
    for (Reachability *monitor : std::as_const(r.monitors))
        monitor->stop();
    r.postRoutineAdded = false;
}
