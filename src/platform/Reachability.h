#pragma once

#include <QMutex>
#include <QObject>
#include <QString>

#include <atomic>
#include <condition_variable>
#include <mutex>

class QThread;

// Reachability of one host:port, kept current in the background.
//
// A worker thread probes with a TCP connect every probeInterval ms, and sooner
// when someone asks (currentReachabilityStatus() requests a fresh probe but
// answers at once from the last known state). The first probe runs when the
// monitor is created, on the creating thread, for at most firstProbeWait ms.
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
    static constexpr int firstProbeWait = 300;
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
    void record(bool reachable);
    void stop();
    void announceChange();
    static void stopAll();

    const QString m_host;
    const quint16 m_port;
    std::atomic_int m_status{NotReachable};
    std::atomic_bool m_probed{false};

    mutable std::mutex m_wakeMutex;
    mutable std::condition_variable m_wake;
    mutable bool m_probeRequested = false;
    bool m_stopping = false;
    QThread *m_thread = nullptr;
};
