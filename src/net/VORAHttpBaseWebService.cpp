#include "net/VORAHttpBaseWebService.h"

#include "net/ASIFormDataRequest.h"
#include "net/ASIHTTPRequest.h"
#include "net/NetLog.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORASystemConfig.h"
#include "core/VORAUtility.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QThread>
#include <QUrl>

VORAHttpBaseWebService::VORAHttpBaseWebService(QObject *parent)
    : QObject(parent)
{
}

VORAHttpBaseWebService::~VORAHttpBaseWebService()
{
    // A late completion must never reach this object or its delegate.
    m_delegate.clear();
    dropRequest();
}

QString VORAHttpBaseWebService::path() const
{
    return QString();
}

int VORAHttpBaseWebService::q42HttpMethod() const
{
    return 0;
}

QString VORAHttpBaseWebService::baseUrl() const
{
    return VORASystemConfig::getWebServiceUrlBase();
}

VORAHttpBaseWebService::Parameters VORAHttpBaseWebService::parameter() const
{
    return {};
}

void VORAHttpBaseWebService::parseResponseString(const QString &)
{
}

void VORAHttpBaseWebService::reset()
{
    m_responseData.clear();
    m_error.reset();
    dropRequest();
}

qint64 VORAHttpBaseWebService::timestamp()
{
    return QDateTime::currentMSecsSinceEpoch() / 1000;
}

int VORAHttpBaseWebService::getRequestMethod() const
{
    return q42HttpMethod() == 1 ? 1 : 0;
}

QString VORAHttpBaseWebService::getRequestUrl() const
{
    QString url = baseUrl() + path() + QLatin1Char('?');
    // A locked copy: page loaders and the shelf check build requests on worker
    // threads while the main thread signs in and out.
    const VORARequestIdentity::Snapshot identity = VORAAppGlobalData::shareAppGlobalData()->requestIdentity();
    if (identity.key)
        url += QLatin1String("key=") + *identity.key + QLatin1Char('&');
    url += QLatin1String("version=") + VORASystemConfig::getWebServiceVersion() + QLatin1Char('&');
    url += QLatin1String("android_id=") + identity.deviceId + QLatin1Char('&');
    url += QLatin1String("time=") + QString::number(timestamp()) + QLatin1Char('&');
    if (getRequestMethod() == 0) {
        const Parameters params = parameter();
        for (const auto &p : params)
            url += p.first + QLatin1Char('=') + p.second + QLatin1Char('&');
    }
    qCDebug(lcNet).noquote() << "requestUrl =" << netLogSafe(url);
    return url;
}

std::optional<VORAHttpBaseWebService::Parameters> VORAHttpBaseWebService::getPostData() const
{
    if (q42HttpMethod() != 1)
        return std::nullopt;
    const Parameters params = parameter();
    if (lcNet().isDebugEnabled()) {
        Parameters shown = params;
        for (auto &p : shown) {
            if (p.first.compare(QLatin1String("password"), Qt::CaseInsensitive) == 0)
                p.second = QStringLiteral("***");
        }
        qCDebug(lcNet) << "getPostData" << shown;
    }
    return params;
}

ASIHTTPRequest *VORAHttpBaseWebService::getRequest() const
{
    const QString text = getRequestUrl();
    const QUrl url(text);
    if (!url.isValid() || url.host().isEmpty()) {
        qCWarning(lcNet) << "not a valid URL, nothing sent:" << netLogSafe(text);
        return nullptr;
    }
    ASIHTTPRequest *request = nullptr;
    if (getRequestMethod() == 1) {
        auto *form = new ASIFormDataRequest(url);
        const Parameters fields = getPostData().value_or(Parameters());
        for (const auto &field : fields)
            form->setPostValue(field.second, field.first);
        request = form;
    } else {
        request = new ASIHTTPRequest(url);
    }
    request->setShowAccurateProgress(true);
    return request;
}

ASIHTTPRequest *VORAHttpBaseWebService::request() const
{
    QMutexLocker lock(&m_requestLock);
    return m_request;
}

void VORAHttpBaseWebService::synchronousRequest()
{
    reset();
    ASIHTTPRequest *request = getRequest();
    if (!request)
        return;
    {
        QMutexLocker lock(&m_requestLock);
        m_request = request;
    }
    request->startSynchronous();
    if (request->error())
        m_error = *request->error();
    else
        handleResponseData(m_responseData = request->responseData());
    {
        QMutexLocker lock(&m_requestLock);
        m_request = nullptr;
    }
    delete request;
}

void VORAHttpBaseWebService::asynchronousRequestWithDelegate(QObject *delegate)
{
    reset();
    m_delegate = delegate;
    ASIHTTPRequest *request = getRequest();
    if (!request)
        return;
    {
        QMutexLocker lock(&m_requestLock);
        m_request = request;
    }
    request->setDelegate(this);
    request->startAsynchronous();
}

void VORAHttpBaseWebService::cancel()
{
    QMutexLocker lock(&m_requestLock);
    ASIHTTPRequest *request = m_request;
    if (!request)
        return;
    if (request->thread() != QThread::currentThread()) {
        // Only posts the cancellation to the request's thread; the lock keeps
        // that thread from freeing the request meanwhile.
        request->cancel();
        return;
    }
    lock.unlock();
    request->cancel(); // reports through requestFailed: nothing after this
}

void VORAHttpBaseWebService::cancelRequest()
{
    QMutexLocker lock(&m_requestLock);
    if (m_request)
        m_request->clearDelegatesAndCancel();
}

QString VORAHttpBaseWebService::urlParameterEscape(const QString &text)
{
    return VORAUtility::urlParameterEscape(text);
}

void VORAHttpBaseWebService::requestFinished(ASIHTTPRequest *request)
{
    if (request != this->request())
        return;
    m_responseData = request->responseData();
    m_error.reset();
    handleResponseData(m_responseData);
    notifyDelegate();
}

void VORAHttpBaseWebService::requestFailed(ASIHTTPRequest *request)
{
    if (request != this->request())
        return;
    m_error = request->error().value_or(NetError::asiError(NetError::ConnectionFailureErrorType));
    notifyDelegate();
}

bool VORAHttpBaseWebService::handleResponseData(const QByteArray &data)
{
    qCDebug(lcNet) << "handleResponseData{";
    const QString text = QString::fromUtf8(data);
    qCDebug(lcNet).noquote() << "responseString{" << text;
    parseResponseString(text);
    qCDebug(lcNet) << "handleResponseData}";
    return true;
}

std::optional<QJsonObject> VORAHttpBaseWebService::jsonObjectFromString(const QString &text)
{
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson(text.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject())
        return std::nullopt;
    return doc.object();
}

void VORAHttpBaseWebService::dropRequest()
{
    ASIHTTPRequest *request = nullptr;
    {
        QMutexLocker lock(&m_requestLock);
        request = m_request;
        m_request = nullptr;
    }
    if (!request)
        return;
    request->clearDelegatesAndCancel();
    // The request may be the one whose callback is running right now.
    request->deleteLater();
}

void VORAHttpBaseWebService::notifyDelegate()
{
    auto *d = dynamic_cast<VORAHttpBaseWebServiceDelegate *>(m_delegate.data());
    if (d)
        d->requestDidFinishWithService(this, error()); // may delete this service
}
