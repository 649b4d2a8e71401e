#include "platform/Reachability.h"
#include "platform/NotificationCenter.h"
#include "platform/PlatformLog.h"

#include <QCoreApplication>
#include <QHash>
#include <QHostAddress>
#include <QMutexLocker>
#include <QTcpSocket>
#include <QThread>

#include <chrono>
#include <cstring>

#ifdef Q_OS_UNIX
#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

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
    QMutexLocker lock(&r.mutex);
    const QString id = host + QLatin1Char(':') + QString::number(port);
    if (Reachability *known = r.monitors.value(id))
        return known;
    auto *monitor = new Reachability(host, port);
    // Changes are announced on the main thread, whichever thread asked first.
    if (QCoreApplication::instance())
        monitor->moveToThread(QCoreApplication::instance()->thread());
    if (!r.postRoutineAdded && QCoreApplication::instance()) {
        // Stop the probing threads before the application object goes away.
        qAddPostRoutine(&Reachability::stopAll);
        r.postRoutineAdded = true;
    }
    // Settled before anyone else sees the monitor, so every first answer is the same.
    if (const std::optional<bool> answer = monitor->probeWithoutWaiting())
        monitor->record(*answer);
    monitor->m_thread = QThread::create([monitor] { monitor->run(); });
    monitor->m_thread->setObjectName(QStringLiteral("reachability %1:%2").arg(host).arg(port));
    monitor->m_thread->start();
    r.monitors.insert(id, monitor);
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
    // What the kernel knows at once is always current; the rest comes from the worker.
    if (const std::optional<bool> answer = probeWithoutWaiting()) {
        const_cast<Reachability *>(this)->record(*answer);
        return *answer ? ReachableViaWiFi : NotReachable;
    }
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

std::optional<bool> Reachability::probeWithoutWaiting() const
{
    if (m_host.isEmpty() || m_port == 0)
        return false;
#ifdef Q_OS_UNIX
    // Only a numeric address: a host name would need a lookup, which may wait.
    const QHostAddress address(m_host);
    if (address.isNull())
        return std::nullopt;
    sockaddr_storage storage{};
    socklen_t length = 0;
    if (address.protocol() == QAbstractSocket::IPv4Protocol) {
        auto *in = reinterpret_cast<sockaddr_in *>(&storage);
        in->sin_family = AF_INET;
        in->sin_port = htons(m_port);
        in->sin_addr.s_addr = htonl(address.toIPv4Address());
        length = sizeof(sockaddr_in);
    } else {
        auto *in6 = reinterpret_cast<sockaddr_in6 *>(&storage);
        in6->sin6_family = AF_INET6;
        in6->sin6_port = htons(m_port);
        const Q_IPV6ADDR bytes = address.toIPv6Address();
        std::memcpy(&in6->sin6_addr, bytes.c, sizeof(bytes.c));
        length = sizeof(sockaddr_in6);
    }
    const int fd = ::socket(storage.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return std::nullopt;
    std::optional<bool> answer;
    if (::connect(fd, reinterpret_cast<sockaddr *>(&storage), length) == 0) {
        answer = true;
    } else if (errno == EINPROGRESS) {
        // A loopback handshake (or refusal) is usually over by now; never wait for it.
        pollfd p{fd, POLLOUT, 0};
        if (::poll(&p, 1, 0) == 1) {
            int error = 0;
            socklen_t size = sizeof(error);
            if (::getsockopt(fd, SOL_SOCKET, SO_ERROR, &error, &size) == 0)
                answer = error == 0;
        }
    } else if (errno == ECONNREFUSED || errno == ENETUNREACH || errno == EHOSTUNREACH) {
        answer = false;
    }
    ::close(fd);
    return answer;
#else
    return std::nullopt;
#endif
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
    // The first probe at once, later ones on the interval or when asked.
    record(probe(probeTimeout));
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
