#pragma once

#include <QObject>
#include <QProcess>
#include <QTimer>

#include <functional>

// The reference site as a child process, for the out-of-the-box run: started
// when the API base is the built-in default, stopped with this object.
// ready() is emitted once the port answers (or the wait gave up).
class VORAEmbeddedSite : public QObject
{
    Q_OBJECT
public:
    static constexpr int readyTimeoutMs = 20000;
    static constexpr int pollIntervalMs = 100;

    explicit VORAEmbeddedSite(QObject *parent = nullptr);
    ~VORAEmbeddedSite() override;

    // True when the API base is the embedded default (no QUORIN_API_BASE override).
    static bool isEmbeddedDefault();
    // $QUORIN_SITE_BIN, then next to the app, then the build tree.
    static QString findBinary();

    // Starts quorin-site on the default port with its data under the app home,
    // unless something already answers there. Emits ready() in every case.
    void start();
    void stop();
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

signals:
    void ready(bool answering);

private:
    // Asks, without blocking, whether the port answers; calls back with the outcome.
    void probe(std::function<void(bool)> done);
    void startProcess();
    void poll();
    QProcess m_process;
    QTimer m_poll;
    int m_waited = 0;
    bool m_done = false;
    bool m_probing = false;
};
