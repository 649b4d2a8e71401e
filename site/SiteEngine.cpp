#include "SiteEngine.h"

#include "QuorinSiteFaults.h"
#include "SiteAccountApi.h"
#include "SiteCatalogue.h"
#include "SiteCatalogueApi.h"
#include "SiteCommunityApi.h"
#include "SiteContext.h"
#include "SiteDatabase.h"
#include "SiteHttpServer.h"
#include "SiteImageStore.h"
#include "SiteLog.h"
#include "SitePaymentApi.h"
#include "SiteReaderApi.h"
#include "SiteRequestLog.h"
#include "SiteRouter.h"
#include "SiteTucaoApi.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

QJsonObject requestCounts(const QHash<QString, int> &counts)
{
    QJsonObject object;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        object.insert(it.key(), it.value());
    return object;
}

} // namespace

SiteEngine::SiteEngine(const QuorinSiteOptions &options, QuorinSiteFaults *faults, SiteRequestLog *log)
    : m_options(options), m_faults(faults), m_log(log)
{
}

SiteEngine::~SiteEngine()
{
    m_http.reset();
    m_images.reset();
    m_context.reset();
    m_db.reset(); // closes the database before a temporary data directory goes
}

bool SiteEngine::start()
{
    QString dir = m_options.dataDir;
    if (dir.isEmpty()) {
        // No data directory given: a private temporary one, removed with the site.
        m_tempDir = std::make_unique<QTemporaryDir>();
        if (!m_tempDir->isValid()) {
            qCWarning(lcSite) << "cannot create a temporary data directory";
            return false;
        }
        dir = m_tempDir->path();
    }
    if (!QDir().mkpath(dir)) {
        qCWarning(lcSite) << "cannot create the data directory" << dir;
        return false;
    }
    m_db = std::make_unique<SiteDatabase>();
    // A catalogue of another shape has page ids of its own: its state and images
    // live in files of their own.
    const QString shape = m_options.longChapterPages == 60
        ? QString::number(m_options.seed)
        : QStringLiteral("%1-l%2").arg(m_options.seed).arg(m_options.longChapterPages);
    const QString dbFile = QDir(dir).filePath(QStringLiteral("quorin-site-s%1.sqlite").arg(shape));
    if (!m_db->open(dbFile)) {
        qCWarning(lcSite) << "cannot open" << dbFile << m_db->lastError();
        return false;
    }
    const qint64 anchor = SiteContext::storedAnchor(*m_db);
    if (anchor < 0) {
        qCWarning(lcSite) << "cannot use" << dbFile << "as the site's database:" << m_db->lastError();
        return false;
    }
    m_catalogue = std::make_unique<SiteCatalogue>(m_options.seed, anchor, m_options.longChapterPages);
    m_context = std::make_unique<SiteContext>(*m_catalogue, *m_db, QStringLiteral("http://127.0.0.1/"));
    m_context->initSchema();
    m_context->seedIfNeeded();
    m_router = std::make_unique<SiteRouter>();
    m_account = std::make_unique<SiteAccountApi>(*m_context);
    m_account->registerRoutes(*m_router);
    m_catalogueApi = std::make_unique<SiteCatalogueApi>(*m_context);
    m_catalogueApi->registerRoutes(*m_router);
    m_reader = std::make_unique<SiteReaderApi>(*m_context);
    m_reader->registerRoutes(*m_router);
    m_tucao = std::make_unique<SiteTucaoApi>(*m_context);
    m_tucao->registerRoutes(*m_router);
    m_community = std::make_unique<SiteCommunityApi>(*m_context);
    m_community->registerRoutes(*m_router);
    m_payment = std::make_unique<SitePaymentApi>(*m_context);
    m_payment->registerRoutes(*m_router);
    // Who this site is: an app that embeds the site reuses one already on its port
    // only when it serves the app's own data directory.
    const QString dataDir = QFileInfo(dir).canonicalFilePath();
    m_router->add(identityPath, [this, dataDir](const SiteHttpRequest &) {
        return SiteHttpResponse::json({{QStringLiteral("dataDir"), dataDir},
                                       {QStringLiteral("pid"), QCoreApplication::applicationPid()},
                                       {QStringLiteral("requests"), requestCounts(m_log->counts())}});
    });
    m_images = std::make_unique<SiteImageStore>(*m_catalogue, QDir(dir).filePath(QStringLiteral("cache-s%1").arg(shape)));
    m_http = std::make_unique<SiteHttpServer>(m_faults, m_options.logRequests);
    m_http->setRecorder([this](const SiteHttpRequest &r) { m_log->record(r); });
    m_http->setHandler([this](const SiteHttpRequest &r, const SiteHttpServer::Responder &respond) { handle(r, respond); });
    return true;
}

quint16 SiteEngine::listen(const QHostAddress &address, quint16 port)
{
    if (!m_http)
        return 0;
    const quint16 bound = m_http->listen(address, port);
    if (bound && m_context) {
        const QString host = address.protocol() == QAbstractSocket::IPv6Protocol
            ? QStringLiteral("[%1]").arg(address.toString())
            : (address == QHostAddress::Any ? QStringLiteral("127.0.0.1") : address.toString());
        m_context->setFallbackBase(QStringLiteral("http://%1:%2/").arg(host).arg(bound));
    }
    return bound;
}

void SiteEngine::handle(const SiteHttpRequest &request, const std::function<void(const SiteHttpResponse &)> &respond)
{
    if (request.method != "GET" && request.method != "POST" && request.method != "HEAD") {
        SiteHttpResponse r = SiteContext::phpRefusal(QStringLiteral("不支持的请求方法"));
        r.status = 405;
        r.headers.append(qMakePair(QByteArray("Allow"), QByteArray("GET, POST, HEAD")));
        respond(r);
        return;
    }
    if (request.path.startsWith(QLatin1String("images/"))) {
        if (!m_images->fetch(request.path, respond)) {
            SiteHttpResponse r = SiteContext::phpRefusal(QStringLiteral("图片不存在"));
            r.status = 404;
            respond(r);
        }
        return;
    }
    if (request.path.isEmpty() || request.path.startsWith(QLatin1String("web/"))) {
        const QString title = request.path.isEmpty() ? QStringLiteral("Quorin 参考站点") : QStringLiteral("Quorin 活动页");
        const QByteArray html = QStringLiteral("<!doctype html><html><head><meta charset=\"utf-8\"><title>%1</title></head>"
                                               "<body><h1>%1</h1><p>%2</p></body></html>")
                                    .arg(title, request.path.toHtmlEscaped())
                                    .toUtf8();
        respond(SiteHttpResponse::bytes(html, "text/html; charset=utf-8"));
        return;
    }
    const SiteRouter::Handler *handler = m_router->find(request.path);
    if (!handler) {
        SiteHttpResponse r = request.path.startsWith(QLatin1String("v3/app/"))
            ? SiteContext::v3Refusal(QStringLiteral("没有这个接口"))
            : SiteContext::phpRefusal(QStringLiteral("没有这个接口"));
        r.status = 404;
        respond(r);
        return;
    }
    respond((*handler)(request));
}
