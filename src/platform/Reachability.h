#pragma once

#include <QMutex>
#include <QObject>
#include <QString>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>

class QThread;

// Reachability of one host:port, kept current in the background.
//
// Nobody who asks ever waits. currentReachabilityStatus() first tries a connect
// that does not wait, which settles what the kernel knows at once (a loopback
// port that is open or closed); otherwise it answers from the last known state
// and asks the worker thread for a fresh probe. The worker probes with a TCP
// connect at once, then every probeInterval ms and when asked. A host that
// needs a lookup or a remote handshake counts as not reachable until the
// worker's first probe says otherwise.
//
// On every change of state, changedNotification is posted on the main thread
// (sender = the monitor, userInfo "status" = the new status).
class Reachability : public QObject
{
    Q_OBJECT
public:
    enum Status { NotReachable = 0, ReachableViaWiFi = 1, ReachableViaWWAN = 2 };

    // The platform sits below the core: VORANotificationNames refers to this name.
    static constexpr char changedNotification[] = "kNetworkReachabilityChangedNotification";

    static constexpr int probeInterval = 3000;
    static constexpr int probeTimeout = 1500;
    static constexpr int minProbeGap = 250;

    // One cached monitor per host:port, never destroyed before the application.
    static Reachability *reachabilityWithHostName(const QString &host, quint16 port = 80);

    int currentReachabilityStatus() const;
    QString hostName() const { return m_host; }
    quint16 port() const { return m_port; }

    // Asks the worker for a probe now (does not wait).
    void requestProbe() const;

    ~Reachability() override;

private:
    Reachability(const QString &host, quint16 port);
    void run();
    bool probe(int timeout) const;
    // A connect that does not wait: true or false when the answer is known at
    // once, nullopt when it would take a wait (a lookup, a remote handshake).
    std::optional<bool> probeWithoutWaiting() const;
    void record(bool reachable);
    void stop();
    void announceChange();
    static void stopAll();

    const QString m_host;
    const quint16 m_port;
    std::atomic_int m_status{NotReachable};

    mutable std::mutex m_wakeMutex;
    mutable std::condition_variable m_wake;
    mutable bool m_probeRequested = false;
    bool m_stopping = false;
    QThread *m_thread = nullptr;
};
