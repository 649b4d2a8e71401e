#pragma once

#include <QNetworkAccessManager>
#include <QObject>
#include <QProcess>
#include <QTimer>

#include <functional>

// The reference site as a child process, for the out-of-the-box run: started
// when the API base is the built-in default, supervised while the app runs and
// stopped with this object.
//
// A site already on the port is reused only when it serves this app home's
// data directory (it says so on "site/identity"); anything else on the port is
// reported through failed() and left alone. The child also dies with the app
// when the app is killed (parent-death signal on Linux). When the child exits
// unexpectedly, at start-up or later, it is started again, at most maxRestarts
// times in all; restarted() follows each return after ready(), failed() the
// last give-up.
class VORAEmbeddedSite : public QObject
{
    Q_OBJECT
public:
    static constexpr int readyTimeoutMs = 20000;
    static constexpr int maxRestarts = 3;

    explicit VORAEmbeddedSite(QObject *parent = nullptr);
    ~VORAEmbeddedSite() override;

    // True when the API base is the embedded default, or QUORIN_SITE_EMBED=1
    // asks for the site on the host and port of QUORIN_API_BASE.
    static bool isEmbeddedDefault();
    // $QUORIN_SITE_BIN, then next to the app, then the build tree.
    static QString findBinary();
    // The site's data under the app home.
    static QString dataDirectory();

    // How often the port is asked while the site starts (a seam for tests).
    void setPollInterval(int ms) { m_poll.setInterval(ms); }

    // Reuses the site of this app home on the port or starts one. Emits ready()
    // once in every case.
    void start();
    void stop();
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

signals:
    void ready(bool answering);
    void restarted();
    void failed(const QString &message);

private:
    enum class Identity { Nobody, Ours, Stranger };
    // Asks the port, without blocking, who serves there.
    void identify(std::function<void(Identity)> done);
    void startProcess();
    void poll();
    void onFinished();
    void settle(bool answering);
    void giveUp(const QString &message, const QString &detail);

    QNetworkAccessManager m_network;
    QProcess m_process;
    QTimer m_poll;
    int m_waited = 0;
    int m_restarts = 0;
    bool m_readyEmitted = false;
    bool m_starting = false;
    bool m_asking = false;
    bool m_stopping = false;
};
