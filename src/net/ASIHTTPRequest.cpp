#include "net/ASIHTTPRequest.h"

#include "net/ASIHTTPRequestDelegate.h"
#include "net/NetLog.h"
#include "net/PersistentCookieJar.h"

#include "core/VORASystemConfig.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QLocale>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSysInfo>
#include <QThread>
#include <QThreadStorage>
#include <QTimer>

namespace {

std::atomic_int g_defaultTimeOutSeconds{15};

// Errors that QNAM derives from the HTTP status of a complete answer. For the
// engine they are answers like any other.
bool isHttpStatusError(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::ContentAccessDenied:
    case QNetworkReply::ContentOperationNotPermittedError:
    case QNetworkReply::ContentNotFoundError:
    case QNetworkReply::ContentReSendError:
    case QNetworkReply::ContentConflictError:
    case QNetworkReply::ContentGoneError:
    case QNetworkReply::UnknownContentError:
    case QNetworkReply::ProtocolInvalidOperationError:
    case QNetworkReply::InternalServerError:
    case QNetworkReply::OperationNotImplementedError:
    case QNetworkReply::ServiceUnavailableError:
    case QNetworkReply::UnknownServerError:
        return true;
    default:
        return false;
    }
}

// An answer whose connection closed before all the bytes its Content-Length
// announced had come. QNAM may finish such a reply without an error: when the
// close is seen while the last bytes still wait in the socket, it reads them
// and takes the close for the end of the answer. (A body inflated on the fly
// has no Content-Length left to compare with.)
bool cutShort(const QNetworkReply &reply, qint64 received)
{
    bool known = false;
    const qint64 announced = reply.header(QNetworkRequest::ContentLengthHeader).toLongLong(&known);
    return known && received < announced;
}

} // namespace

ASIHTTPRequest::ASIHTTPRequest(const QUrl &url, QObject *parent)
    : QObject(parent)
    , m_url(url)
{
}

ASIHTTPRequest::~ASIHTTPRequest()
{
    {
        QMutexLocker lock(&m_lock);
        m_delegate = nullptr;
    }
    detachReply();
}

ASIHTTPRequest *ASIHTTPRequest::requestWithURL(const QUrl &url)
{
    return new ASIHTTPRequest(url);
}

void ASIHTTPRequest::addRequestHeader(const QByteArray &name, const QByteArray &value)
{
    m_requestHeaders.append({name, value});
}

void ASIHTTPRequest::setDelegate(ASIHTTPRequestDelegate *delegate)
{
    QMutexLocker lock(&m_lock);
    m_delegate = delegate;
}

ASIHTTPRequestDelegate *ASIHTTPRequest::delegate() const
{
    QMutexLocker lock(&m_lock);
    return m_delegate;
}

int ASIHTTPRequest::defaultTimeOutSeconds()
{
    return g_defaultTimeOutSeconds.load();
}

void ASIHTTPRequest::setDefaultTimeOutSeconds(int seconds)
{
    g_defaultTimeOutSeconds.store(seconds > 0 ? seconds : 15);
}

QByteArray ASIHTTPRequest::userAgent()
{
    static const QByteArray agent = QStringLiteral("%1 %2 (%3; %4 %5; %6)")
                                        .arg(VORASystemConfig::displayName(),
                                             VORASystemConfig::appVersion(),
                                             QSysInfo::currentCpuArchitecture(),
                                             QSysInfo::productType(),
                                             QSysInfo::productVersion(),
                                             QLocale::system().name())
                                        .toUtf8();
    return agent;
}

QNetworkAccessManager *ASIHTTPRequest::networkAccessManagerForCurrentThread()
{
    // Deleted with the thread (for the main thread: with the application).
    static QThreadStorage<QNetworkAccessManager *> managers;
    if (!managers.hasLocalData()) {
        auto *nam = new QNetworkAccessManager;
        nam->setRedirectPolicy(QNetworkRequest::NoLessSafeRedirectPolicy);
        nam->setCookieJar(new PersistentCookieJar(nam));
        managers.setLocalData(nam);
    }
    return managers.localData();
}

void ASIHTTPRequest::buildPostBody()
{
}

bool ASIHTTPRequest::startReply()
{
    const QString scheme = m_url.scheme().toLower();
    if (!m_url.isValid() || m_url.host().isEmpty()
        || (scheme != QLatin1String("http") && scheme != QLatin1String("https"))) {
        qCWarning(lcNet) << "cannot start a request for" << netLogSafe(m_url);
        return false;
    }
    buildPostBody();

    QNetworkRequest request(m_url);
    request.setHeader(QNetworkRequest::UserAgentHeader, userAgent());
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    for (const auto &header : std::as_const(m_requestHeaders))
        request.setRawHeader(header.first, header.second);

    QNetworkAccessManager *nam = networkAccessManagerForCurrentThread();
    QNetworkReply *reply = nullptr;
    if (m_method == "GET")
        reply = nam->get(request);
    else if (m_method == "POST")
        reply = nam->post(request, m_postBody);
    else
        reply = nam->sendCustomRequest(request, m_method, m_postBody);
    if (!reply)
        return false;
    m_reply = reply;

    m_timeOutSeconds = defaultTimeOutSeconds();
    m_timer = new QTimer(this);
    m_timer->setSingleShot(true);
    m_timer->setInterval(m_timeOutSeconds * 1000);
    connect(m_timer, &QTimer::timeout, this, &ASIHTTPRequest::onTimeOut);
    connect(reply, &QNetworkReply::finished, this, &ASIHTTPRequest::onReplyFinished);
    connect(reply, &QNetworkReply::readyRead, this, &ASIHTTPRequest::onProgress);
    connect(reply, &QNetworkReply::uploadProgress, this, &ASIHTTPRequest::onProgress);
    connect(reply, &QNetworkReply::metaDataChanged, this, &ASIHTTPRequest::onProgress);
    m_timer->start();
    return true;
}

void ASIHTTPRequest::startAsynchronous()
{
    if (m_started.exchange(true) || m_complete.load())
        return;
    m_synchronous = false;
    if (qApp && QThread::currentThread() != qApp->thread())
        qCWarning(lcNet) << "asynchronous request started off the main thread:" << netLogSafe(m_url);
    if (!startReply()) {
        // Reported from the event loop, as any other outcome.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (!m_complete.load())
                    failWithError(NetError::asiError(NetError::InternalErrorWhileBuildingRequestType));
            },
            Qt::QueuedConnection);
    }
}

void ASIHTTPRequest::startSynchronous()
{
    if (m_started.exchange(true) || m_complete.load())
        return;
    m_synchronous = true;
    if (!startReply()) {
        failWithError(NetError::asiError(NetError::InternalErrorWhileBuildingRequestType));
        return;
    }
    QEventLoop loop;
    m_loop = &loop;
    if (!m_complete.load())
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    m_loop = nullptr;
    // Not inside any of the reply's signals here: free it now rather than
    // leaving it to an event loop this thread may never run again.
    if (m_reply) {
        disconnect(m_reply, nullptr, this, nullptr);
        delete m_reply.data();
    }
}

void ASIHTTPRequest::cancel()
{
    if (QThread::currentThread() != thread()) {
        QMetaObject::invokeMethod(this, &ASIHTTPRequest::cancelOnOwnThread, Qt::QueuedConnection);
        return;
    }
    cancelOnOwnThread();
}

void ASIHTTPRequest::clearDelegatesAndCancel()
{
    setDelegate(nullptr);
    cancel();
}

void ASIHTTPRequest::cancelOnOwnThread()
{
    if (m_complete.load())
        return;
    m_cancelled = true;
    detachReply();
    failWithError(NetError::asiError(NetError::RequestCancelledErrorType));
}

void ASIHTTPRequest::onProgress()
{
    if (m_reply && m_reply->isOpen() && m_reply->bytesAvailable() > 0) {
        m_responseData += m_reply->readAll();
        if (m_responseData.size() > maxResponseSize) {
            qCWarning(lcNet) << "answer too large, dropped:" << netLogSafe(m_url);
            detachReply();
            m_responseData.clear();
            failWithError(NetError::asiError(NetError::ConnectionFailureErrorType));
            return;
        }
    }
    if (m_timer && !m_complete.load())
        m_timer->start();
}

void ASIHTTPRequest::onTimeOut()
{
    if (m_complete.load())
        return;
    qCInfo(lcNet) << "request timed out after" << m_timeOutSeconds << "s:" << netLogSafe(m_url);
    m_timedOut = true;
    if (m_reply)
        m_reply->abort(); // finishes the reply at once
    if (!m_complete.load()) {
        detachReply();
        failWithError(NetError::asiError(NetError::RequestTimedOutErrorType));
    }
}

void ASIHTTPRequest::onReplyFinished()
{
    QNetworkReply *reply = m_reply;
    if (!reply || m_complete.load())
        return;
    if (m_timer)
        m_timer->stop();
    if (reply->isOpen())
        m_responseData += reply->readAll();
    m_responseStatusCode = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    m_responseHeaders = reply->rawHeaderPairs();
    const QNetworkReply::NetworkError error = reply->error();
    const bool truncated = cutShort(*reply, m_responseData.size());
    if (!m_synchronous)
        reply->deleteLater();
    if (m_synchronous) {
        // startSynchronous() frees it after its loop.
    } else {
        m_reply = nullptr;
    }

    if (m_timedOut) {
        failWithError(NetError::asiError(NetError::RequestTimedOutErrorType));
    } else if (truncated && (error == QNetworkReply::NoError || isHttpStatusError(error))) {
        qCInfo(lcNet) << "answer cut short:" << netLogSafe(m_url);
        failWithError(NetError::asiError(NetError::ConnectionFailureErrorType));
    } else if (error == QNetworkReply::NoError
               || (m_responseStatusCode > 0 && isHttpStatusError(error))) {
        finishWithData();
    } else if (error == QNetworkReply::AuthenticationRequiredError
               || error == QNetworkReply::ProxyAuthenticationRequiredError) {
        failWithError(NetError::asiError(NetError::AuthenticationErrorType));
    } else if (error == QNetworkReply::TimeoutError) {
        failWithError(NetError::asiError(NetError::RequestTimedOutErrorType));
    } else if (error == QNetworkReply::OperationCanceledError) {
        failWithError(NetError::asiError(NetError::RequestCancelledErrorType));
    } else if (error == QNetworkReply::ProtocolUnknownError) {
        failWithError(NetError::asiError(NetError::InternalErrorWhileBuildingRequestType));
    } else {
        qCInfo(lcNet) << "request failed:" << netLogSafe(m_url) << error;
        failWithError(NetError::asiError(NetError::ConnectionFailureErrorType));
    }
}

void ASIHTTPRequest::detachReply()
{
    if (m_timer)
        m_timer->stop();
    if (!m_reply)
        return;
    QNetworkReply *reply = m_reply;
    disconnect(reply, nullptr, this, nullptr);
    if (reply->isRunning())
        reply->abort();
    if (m_synchronous && m_loop) {
        // startSynchronous() frees it once its loop has returned.
        return;
    }
    m_reply = nullptr;
    reply->deleteLater();
}

void ASIHTTPRequest::finishWithData()
{
    m_error.reset();
    m_complete = true;
    if (m_loop) {
        m_loop->quit();
        return;
    }
    if (!m_synchronous)
        reportFinished();
}

void ASIHTTPRequest::failWithError(const NetError &error)
{
    if (m_complete.exchange(true))
        return;
    m_error = error;
    if (m_loop) {
        m_loop->quit();
        return;
    }
    if (!m_synchronous)
        reportFailed();
}

void ASIHTTPRequest::reportFinished()
{
    ASIHTTPRequestDelegate *d = delegate();
    if (d)
        d->requestFinished(this); // may delete this request: nothing after it
}

void ASIHTTPRequest::reportFailed()
{
    ASIHTTPRequestDelegate *d = delegate();
    if (d)
        d->requestFailed(this); // may delete this request: nothing after it
}
