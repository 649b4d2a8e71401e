#pragma once

// The reference site in-process, with the client pointed at it and a fresh
// app home, for the tests of the web service layer.

#include "TestHome.h"
#include "QuorinSite.h"
#include "QuorinSiteFaults.h"

#include "net/ASIHTTPRequest.h"
#include "net/ASIHTTPRequestDelegate.h"
#include "net/NetError.h"
#include "net/VORAHttpBaseWebService.h"
#include "net/VORAHttpBaseWebServiceDelegate.h"

#include <QByteArray>
#include <QObject>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>

class NetTestSite
{
public:
    NetTestSite()
    {
        site = std::make_unique<QuorinSite>(QuorinSiteOptions{siteData.path()});
        port = site->listen();
        const QByteArray base = site->baseUrl().toString().toUtf8();
        qputenv("QUORIN_API_BASE", base);
        qputenv("QUORIN_PAY_BASE", base);
    }
    ~NetTestSite()
    {
        site.reset();
        qunsetenv("QUORIN_API_BASE");
        qunsetenv("QUORIN_PAY_BASE");
    }

    QuorinSiteFaults &faults() { return site->faults(); }

    static QByteArray header(const QuorinSiteRequestRecord &record, const QByteArray &name)
    {
        for (const auto &h : record.headers) {
            if (h.first.compare(name, Qt::CaseInsensitive) == 0)
                return h.second;
        }
        return QByteArray();
    }

    TestHome home;
    QTemporaryDir siteData;
    std::unique_ptr<QuorinSite> site;
    quint16 port = 0;
};

// Counts what an engine request reports.
class RequestRecorder : public ASIHTTPRequestDelegate
{
public:
    void requestFinished(ASIHTTPRequest *) override { ++finished; }
    void requestFailed(ASIHTTPRequest *request) override
    {
        ++failed;
        lastError = request->error();
    }
    int finished = 0;
    int failed = 0;
    std::optional<NetError> lastError;
};

// Counts what a service reports to its delegate.
class ServiceRecorder : public QObject, public VORAHttpBaseWebServiceDelegate
{
public:
    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override
    {
        ++calls;
        lastError = error ? std::optional<NetError>(*error) : std::nullopt;
        if (onFinish)
            onFinish(service);
    }
    int calls = 0;
    std::optional<NetError> lastError;
    std::function<void(VORAHttpBaseWebService *)> onFinish;
};
