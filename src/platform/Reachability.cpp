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
    {
        QMutexLocker lock(&r.mutex);
        const QString id = host + QLatin1Char(':') + QString::number(port);
        monitor = r.monitors.value(id);
        if (monitor)
            return monitor;
        monitor = new Reachability(host, port);
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
    // Give the first probe a short time, so an early question gets a real answer.
    std::unique_lock<std::mutex> lock(monitor->m_wakeMutex);
    monitor->m_wake.wait_for(lock, std::chrono::milliseconds(firstProbeWait),
                             [monitor] { return monitor->m_probed.load(); });
    return monitor;
}

Reachability::Reachability(const QString &host, quint16 port)
    : m_host(host)
    , m_port(port)
{
    m_thread = QThread::create([this] { run(); });
    m_thread->setObjectName(QStringLiteral("reachability %1:%2").arg(host).arg(port));
    m_thread->start();
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

bool Reachability::probe() const
{
    if (m_host.isEmpty() || m_port == 0)
        return false;
    QTcpSocket socket;
    socket.connectToHost(m_host, m_port);
    const bool ok = socket.waitForConnected(probeTimeout);
    socket.abort();
    return ok;
}

void Reachability::run()
{
    using Clock = std::chrono::steady_clock;
    for (;;) {
        const Clock::time_point probedAt = Clock::now();
        const int status = probe() ? ReachableViaWiFi : NotReachable;
        const int previous = m_status.exchange(status);
        const bool first = !m_probed.exchange(true);
        if (first) {
            std::lock_guard<std::mutex> lock(m_wakeMutex);
            m_wake.notify_all(); // wakes a creator waiting for the first answer
        }
        if (previous != status) {
            qCInfo(lcPlatform) << "reachability of" << m_host << m_port << "is now" << status;
            // Announce on the monitor's own thread, never on the probing thread.
            QMetaObject::invokeMethod(this, &Reachability::announceChange, Qt::QueuedConnection);
        }

        std::unique_lock<std::mutex> lock(m_wakeMutex);
        m_wake.wait_for(lock, std::chrono::milliseconds(probeInterval),
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
}

void Reachability::announceChange()
{
    NotificationCenter::defaultCenter().post(
        QStringLiteral("kNetworkReachabilityChangedNotification"), this,
        {{QStringLiteral("status"), m_status.load()}});
}

void Reachability::stop()
{
    if (!m_thread)
        return;
    {
        std::lock_guard<std::mutex> lock(m_wakeMutex);
        m_stopping = true;
    }
    m_wake.notify_all();
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
