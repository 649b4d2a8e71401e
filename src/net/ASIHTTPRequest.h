#pragma once

#include "net/NetError.h"

#include <QByteArray>
#include <QList>
#include <QMutex>
#include <QNetworkRequest>
#include <QObject>
#include <QPointer>
#include <QUrl>

#include <atomic>
#include <optional>

class ASIHTTPRequestDelegate;
class QNetworkAccessManager;
class QNetworkReply;
class QTimer;

// One HTTP request of the engine, on QNetworkAccessManager.
//
// Defaults that every request gets (the application sets none of its own):
// - time-out: the request fails with code 2 when no byte moves for
//   defaultTimeOutSeconds() (15 s), counted from the start; no retry;
// - persistent connections and automatic redirects (QNAM's own);
// - gzip advertised and inflated: Accept-Encoding is left to QNAM, which then
//   inflates the answer itself, so responseData() is always plain;
// - cookies in the shared persistent jar of the app home;
// - server certificates validated (SSL errors are never ignored);
// - the user agent "<display name> <version> (<model>; <os> <os version>; <locale>)".
//
// An HTTP status other than success is not an error: the body is delivered.
// Only 401 fails, as "Authentication needed" (code 3).
//
// startAsynchronous() runs on the calling thread's manager and reports to the
// delegate on that thread (the main thread for the services). startSynchronous()
// runs on a manager owned by the calling thread inside a local event loop and
// reports nothing. cancel() and clearDelegatesAndCancel() may be called from
// any thread.
class ASIHTTPRequest : public QObject
{
    Q_OBJECT
public:
    explicit ASIHTTPRequest(const QUrl &url, QObject *parent = nullptr);
    ~ASIHTTPRequest() override;

    static ASIHTTPRequest *requestWithURL(const QUrl &url);

    QUrl url() const { return m_url; }
    QByteArray requestMethod() const { return m_method; }
    void setRequestMethod(const QByteArray &method) { m_method = method; }
    void addRequestHeader(const QByteArray &name, const QByteArray &value);

    void setDelegate(ASIHTTPRequestDelegate *delegate);
    ASIHTTPRequestDelegate *delegate() const;

    void setShowAccurateProgress(bool on) { m_showAccurateProgress = on; }
    bool showAccurateProgress() const { return m_showAccurateProgress; }

    int timeOutSeconds() const { return m_timeOutSeconds; }
    int numberOfTimesToRetryOnTimeout() const { return 0; }
    QString defaultResponseEncoding() const { return QStringLiteral("ISO-8859-1"); }

    void startAsynchronous();
    void startSynchronous();
    void cancel();
    void clearDelegatesAndCancel();

    bool isFinished() const { return m_complete.load(); }
    bool isCancelled() const { return m_cancelled.load(); }
    bool isExecuting() const { return m_started.load() && !m_complete.load(); }

    QByteArray responseData() const { return m_responseData; }
    // The body decoded with the default response encoding (ISO Latin-1).
    QString responseString() const { return QString::fromLatin1(m_responseData); }
    int responseStatusCode() const { return m_responseStatusCode; }
    QList<QPair<QByteArray, QByteArray>> responseHeaders() const { return m_responseHeaders; }
    const std::optional<NetError> &error() const { return m_error; }

    // Seconds without a byte before a request fails. 15 unless changed; tests
    // shorten it. Read when a request starts.
    static int defaultTimeOutSeconds();
    static void setDefaultTimeOutSeconds(int seconds);

    // Answers larger than this fail as a connection failure instead of filling
    // the memory.
    static constexpr qint64 maxResponseSize = 256 * 1024 * 1024;

    static QByteArray userAgent();

    // The manager of the calling thread, created on first use and deleted when
    // the thread ends.
    static QNetworkAccessManager *networkAccessManagerForCurrentThread();

protected:
    // The outgoing body and its content type (form requests override).
    virtual void buildPostBody();
    QByteArray m_postBody;
    QByteArray m_method = "GET";

private:
    bool startReply();
    void cancelOnOwnThread();
    void onReplyFinished();
    void onTimeOut();
    void onProgress();
    void finishWithData();
    void failWithError(const NetError &error);
    void detachReply();
    void reportFinished();
    void reportFailed();

    const QUrl m_url;
    QList<QPair<QByteArray, QByteArray>> m_requestHeaders;
    bool m_showAccurateProgress = false;
    int m_timeOutSeconds = 15;
    bool m_synchronous = false;

    mutable QMutex m_lock; // guards m_delegate
    ASIHTTPRequestDelegate *m_delegate = nullptr;

    std::atomic_bool m_started{false};
    std::atomic_bool m_complete{false};
    std::atomic_bool m_cancelled{false};
    bool m_timedOut = false;

    QPointer<QNetworkReply> m_reply;
    QTimer *m_timer = nullptr;
    class QEventLoop *m_loop = nullptr;

    QByteArray m_responseData;
    int m_responseStatusCode = 0;
    QList<QPair<QByteArray, QByteArray>> m_responseHeaders;
    std::optional<NetError> m_error;
};
