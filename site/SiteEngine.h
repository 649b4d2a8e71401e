#pragma once

#include "QuorinSite.h"

#include <QHostAddress>
#include <QObject>

#include <memory>

class QTemporaryDir;
class QuorinSiteFaults;
class SiteAccountApi;
class SiteCatalogue;
class SiteCatalogueApi;
class SiteCommunityApi;
class SiteContext;
class SiteDatabase;
class SiteHttpServer;
class SiteImageStore;
class SitePaymentApi;
class SiteReaderApi;
class SiteRequestLog;
class SiteRouter;
class SiteTucaoApi;
struct SiteHttpRequest;
struct SiteHttpResponse;

// Everything of the site that lives on the server thread: created, used and
// destroyed there.
class SiteEngine : public QObject
{
    Q_OBJECT
public:
    SiteEngine(const QuorinSiteOptions &options, QuorinSiteFaults *faults, SiteRequestLog *log);
    ~SiteEngine() override;

    // "dataDir" (canonical), "pid" and "requests" (the count per path so far).
    static inline const QString identityPath = QStringLiteral("site/identity");

    bool start();
    quint16 listen(const QHostAddress &address, quint16 port);

private:
    void handle(const SiteHttpRequest &request, const std::function<void(const SiteHttpResponse &)> &respond);

    QuorinSiteOptions m_options;
    QuorinSiteFaults *m_faults;
    SiteRequestLog *m_log;
    QString m_fallbackBase;
    std::unique_ptr<QTemporaryDir> m_tempDir;
    std::unique_ptr<SiteDatabase> m_db;
    std::unique_ptr<SiteCatalogue> m_catalogue;
    std::unique_ptr<SiteContext> m_context;
    std::unique_ptr<SiteRouter> m_router;
    std::unique_ptr<SiteAccountApi> m_account;
    std::unique_ptr<SiteCatalogueApi> m_catalogueApi;
    std::unique_ptr<SiteReaderApi> m_reader;
    std::unique_ptr<SiteTucaoApi> m_tucao;
    std::unique_ptr<SiteCommunityApi> m_community;
    std::unique_ptr<SitePaymentApi> m_payment;
    // Created on the server thread by start(); destroyed before the database.
    std::unique_ptr<SiteImageStore> m_images;
    std::unique_ptr<SiteHttpServer> m_http;
};
