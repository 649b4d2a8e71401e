#pragma once

#include "net/ASIHTTPRequestDelegate.h"
#include "net/NetError.h"
#include "net/VORAHttpBaseWebServiceDelegate.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QMutex>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QString>

#include <optional>

class ASIHTTPRequest;

// The template every call to the site follows. A subclass states its path,
// method, parameters and (for the payment host) base address and parses the
// answer into its own results; this class builds the URL with the common
// parameters, the request on the engine, runs it and reports to the delegate.
//
// URL: baseUrl + path + "?" + ["key=<key>&" when signed in] + "version=<build
// version>&" + "android_id=<device id>&" + "time=<seconds>&" + [for GET every
// parameter as "name=value&", in the service's order, not escaped here]. A
// POST sends its parameters as a URL-encoded form body instead.
//
// A service object belongs to one thread at a time. asynchronousRequestWithDelegate()
// is called on the main thread and reports there; synchronousRequest() blocks a
// worker thread and reports nothing. cancel() and cancelRequest() may also be
// called from the main thread while a worker runs synchronousRequest().
class VORAHttpBaseWebService : public QObject, public ASIHTTPRequestDelegate
{
    Q_OBJECT
public:
    // Ordered (name, value) pairs.
    using Parameters = QList<QPair<QString, QString>>;

    explicit VORAHttpBaseWebService(QObject *parent = nullptr);
    ~VORAHttpBaseWebService() override;

    // --- What a service overrides ---
    virtual QString path() const;        // under the base address, no leading "/"
    virtual int q42HttpMethod() const;   // 0 GET, 1 POST; anything but 1 is GET
    virtual QString baseUrl() const;     // ends in "/"; the API host by default
    virtual Parameters parameter() const;
    virtual void parseResponseString(const QString &responseString);

    // --- The template ---
    void reset();
    static qint64 timestamp();
    int getRequestMethod() const;
    QString getRequestUrl() const;
    std::optional<Parameters> getPostData() const;
    // A new engine request for this service (owned by the caller), or null when
    // the URL text is not a valid URL.
    ASIHTTPRequest *getRequest() const;

    void synchronousRequest();
    void asynchronousRequestWithDelegate(QObject *delegate);
    void cancel();        // the delegate then hears a cancellation error
    void cancelRequest(); // nothing is reported

    static QString urlParameterEscape(const QString &text);

    QObject *delegate() const { return m_delegate.data(); }
    const NetError *error() const { return m_error ? &*m_error : nullptr; }
    QByteArray responseData() const { return m_responseData; }
    ASIHTTPRequest *request() const;

    // Engine callbacks.
    void requestFinished(ASIHTTPRequest *request) override;
    void requestFailed(ASIHTTPRequest *request) override;

protected:
    bool handleResponseData(const QByteArray &data);
    // The text as a JSON object; anything else (another type, bad or truncated
    // JSON) is no answer.
    static std::optional<QJsonObject> jsonObjectFromString(const QString &text);

private:
    void dropRequest();
    void notifyDelegate();

    QPointer<QObject> m_delegate;
    mutable QMutex m_requestLock; // guards m_request against cross-thread cancel
    ASIHTTPRequest *m_request = nullptr;
    std::optional<NetError> m_error;
    QByteArray m_responseData;
};
