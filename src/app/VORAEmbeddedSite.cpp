#include "VORAEmbeddedSite.h"

#include "AppLog.h"
#include "VORABuildInfo.h"
#include "core/VORASystemConfig.h"
#include "platform/AppDirectories.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTcpSocket>

#ifndef QUORIN_SITE_BUILD_PATH
#define QUORIN_SITE_BUILD_PATH ""
#endif

VORAEmbeddedSite::VORAEmbeddedSite(QObject *parent)
    : QObject(parent)
{
    m_poll.setInterval(pollIntervalMs);
    connect(&m_poll, &QTimer::timeout, this, &VORAEmbeddedSite::poll);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.setStandardOutputFile(QProcess::nullDevice());
}

VORAEmbeddedSite::~VORAEmbeddedSite()
{
    stop();
}

bool VORAEmbeddedSite::isEmbeddedDefault()
{
    return VORASystemConfig::getWebServiceUrlBase() == QLatin1String(QUORIN_API_BASE_DEFAULT);
}

QString VORAEmbeddedSite::findBinary()
{
    const QString env = qEnvironmentVariable("QUORIN_SITE_BIN");
    if (!env.isEmpty())
        return env;
    const QString dir = QCoreApplication::applicationDirPath();
    for (const QString &candidate : {dir + QLatin1String("/quorin-site"), dir + QLatin1String("/../../site/quorin-site"),
                                     QString::fromUtf8(QUORIN_SITE_BUILD_PATH)}) {
        if (!candidate.isEmpty() && QFileInfo(candidate).isExecutable())
            return QFileInfo(candidate).absoluteFilePath();
    }
    return {};
}

void VORAEmbeddedSite::probe(std::function<void(bool)> done)
{
    auto *socket = new QTcpSocket(this);
    auto finish = [socket, done](bool answering) {
        socket->disconnect();
        socket->abort();
        socket->deleteLater();
        done(answering);
    };
    connect(socket, &QTcpSocket::connected, this, [finish] { finish(true); });
    connect(socket, &QTcpSocket::errorOccurred, this, [finish] { finish(false); });
    socket->connectToHost(VORASystemConfig::webHostName(), VORASystemConfig::webHostPort());
}

void VORAEmbeddedSite::start()
{
    probe([this](bool answering) {
        const quint16 port = VORASystemConfig::webHostPort();
        if (answering) {
            qCInfo(lcApp) << "a site already answers on port" << port << "- using it";
            m_done = true;
            emit ready(true);
            return;
        }
        startProcess();
    });
}

void VORAEmbeddedSite::startProcess()
{
    const quint16 port = VORASystemConfig::webHostPort();
    const QString binary = findBinary();
    if (binary.isEmpty()) {
        qCWarning(lcApp) << "quorin-site not found (set QUORIN_SITE_BIN); the feed will report no network";
        m_done = true;
        emit ready(false);
        return;
    }
    const QString dataDir = AppDirectories::home() + QLatin1String("/site-data");
    qCInfo(lcApp) << "starting" << binary << "on port" << port << "with data in" << dataDir;
    m_process.start(binary, {QStringLiteral("--port"), QString::number(port), QStringLiteral("--data"), dataDir});
    m_waited = 0;
    m_poll.start();
}

void VORAEmbeddedSite::poll()
{
    if (m_done || m_probing)
        return;
    m_probing = true;
    probe([this](bool answering) {
        m_probing = false;
        if (m_done)
            return;
        m_waited += pollIntervalMs;
        if (!answering && m_process.state() == QProcess::NotRunning) {
            qCWarning(lcApp) << "quorin-site stopped at start-up, exit code" << m_process.exitCode();
        } else if (!answering && m_waited < readyTimeoutMs) {
            return;
        }
        m_poll.stop();
        m_done = true;
        emit ready(answering);
    });
}

void VORAEmbeddedSite::stop()
{
    m_poll.stop();
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(3000)) {
        m_process.kill();
        m_process.waitForFinished(1000);
    }
}
