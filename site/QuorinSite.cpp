#include "QuorinSite.h"

#include "QuorinSiteFaults.h"
#include "SiteEngine.h"
#include "SiteLog.h"
#include "SiteRequestLog.h"

#include <QThread>

QuorinSite::QuorinSite(const QuorinSiteOptions &options, QObject *parent)
    : QObject(parent), m_options(options), m_faults(new QuorinSiteFaults), m_log(new SiteRequestLog)
{
    m_thread = new QThread;
    m_thread->setObjectName(QStringLiteral("quorin-site"));
    m_thread->start();
    m_engine = new SiteEngine(m_options, m_faults, m_log);
    m_engine->moveToThread(m_thread);
    bool started = false;
    SiteEngine *engine = m_engine;
    QMetaObject::invokeMethod(engine, [engine, &started] { started = engine->start(); }, Qt::BlockingQueuedConnection);
    if (!started)
        qCWarning(lcSite) << "the site could not start in" << m_options.dataDir;
}

QuorinSite::~QuorinSite()
{
    SiteEngine *engine = m_engine;
    QMetaObject::invokeMethod(engine, [engine] { delete engine; }, Qt::BlockingQueuedConnection);
    m_thread->quit();
    m_thread->wait();
    delete m_thread;
    delete m_log;
    delete m_faults;
}

quint16 QuorinSite::listen(const QHostAddress &address, quint16 port)
{
    quint16 bound = 0;
    SiteEngine *engine = m_engine;
    QMetaObject::invokeMethod(engine, [engine, &bound, address, port] { bound = engine->listen(address, port); },
                              Qt::BlockingQueuedConnection);
    m_port = bound;
    m_address = address;
    return bound;
}

QUrl QuorinSite::baseUrl() const
{
    if (!m_port)
        return {};
    QString host = QStringLiteral("127.0.0.1");
    if (m_address.protocol() == QAbstractSocket::IPv6Protocol && m_address != QHostAddress::LocalHostIPv6)
        host = QStringLiteral("[%1]").arg(m_address.toString());
    else if (m_address.protocol() == QAbstractSocket::IPv6Protocol)
        host = QStringLiteral("[::1]");
    else if (m_address != QHostAddress::Any && m_address != QHostAddress::AnyIPv4 && m_address != QHostAddress::LocalHost)
        host = m_address.toString();
    return QUrl(QStringLiteral("http://%1:%2/").arg(host).arg(m_port));
}

QuorinSiteFaults &QuorinSite::faults()
{
    return *m_faults;
}

QuorinSiteRequestRecord QuorinSite::lastRequest(const QString &path) const
{
    return m_log->last(path);
}

int QuorinSite::requestCount(const QString &path) const
{
    return m_log->count(path);
}
