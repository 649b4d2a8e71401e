#include "VORAEmbeddedSite.h"

#include "AppLog.h"
#include "VORABuildInfo.h"
#include "core/VORASystemConfig.h"
#include "platform/AppDirectories.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkProxy>
#include <QNetworkReply>

#ifdef Q_OS_LINUX
#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>
#endif

#ifndef QUORIN_SITE_BUILD_PATH
#define QUORIN_SITE_BUILD_PATH ""
#endif

namespace {

constexpr int pollIntervalMs = 100;
constexpr int identifyTimeoutMs = 3000;

QString canonicalDataDirectory()
{
    const QFileInfo info(VORAEmbeddedSite::dataDirectory());
    return info.exists() ? info.canonicalFilePath() : QDir::cleanPath(info.absoluteFilePath());
}

} // namespace

VORAEmbeddedSite::VORAEmbeddedSite(QObject *parent)
    : QObject(parent)
{
    m_network.setProxy(QNetworkProxy::NoProxy);
    m_poll.setInterval(pollIntervalMs);
    connect(&m_poll, &QTimer::timeout, this, &VORAEmbeddedSite::poll);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.setStandardOutputFile(QProcess::nullDevice());
    connect(&m_process, &QProcess::finished, this, &VORAEmbeddedSite::onFinished);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            onFinished();
    });
#ifdef Q_OS_LINUX
    // The site goes with the app even when the app is killed outright.
    const pid_t app = ::getpid();
    m_process.setChildProcessModifier([app] {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (::getppid() != app) // the app died before the line above
            ::_exit(1);
    });
#endif
}

VORAEmbeddedSite::~VORAEmbeddedSite()
{
    stop();
}

bool VORAEmbeddedSite::isEmbeddedDefault()
{
    return VORASystemConfig::getWebServiceUrlBase() == QLatin1String(QUORIN_API_BASE_DEFAULT)
        || qEnvironmentVariableIntValue("QUORIN_SITE_EMBED") == 1;
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

QString VORAEmbeddedSite::dataDirectory()
{
    return AppDirectories::home() + QLatin1String("/site-data");
}

void VORAEmbeddedSite::identify(std::function<void(Identity)> done)
{
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    url.setHost(VORASystemConfig::webHostName());
    url.setPort(VORASystemConfig::webHostPort());
    url.setPath(QStringLiteral("/site/identity"));
    QNetworkRequest request(url);
    request.setTransferTimeout(identifyTimeoutMs);
    QNetworkReply *reply = m_network.get(request);
    connect(reply, &QNetworkReply::finished, this, [reply, done] {
        reply->deleteLater();
        if (!reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid()) {
            // No HTTP answer: nobody listens, or something that is not a web site.
            done(reply->error() == QNetworkReply::ConnectionRefusedError ? Identity::Nobody : Identity::Stranger);
            return;
        }
        const QJsonObject identity = QJsonDocument::fromJson(reply->readAll()).object();
        const QString dataDir = identity.value(QLatin1String("dataDir")).toString();
        done(!dataDir.isEmpty() && dataDir == canonicalDataDirectory() ? Identity::Ours : Identity::Stranger);
    });
}

void VORAEmbeddedSite::start()
{
    m_stopping = false;
    identify([this](Identity who) {
        const quint16 port = VORASystemConfig::webHostPort();
        if (who == Identity::Nobody) {
            startProcess();
        } else if (who == Identity::Ours) {
            qCInfo(lcApp) << "the site of this app home already answers on port" << port << "- using it";
            settle(true);
        } else {
            giveUp(QStringLiteral("端口 %1 已被另一个程序占用（不是本应用的演示服务器），演示服务器无法启动。请结束占用该端口的程序后重新打开应用。")
                       .arg(port),
                   QStringLiteral("port %1 answers, but not as the site of this app home (%2); not using it")
                       .arg(port)
                       .arg(canonicalDataDirectory()));
        }
    });
}

void VORAEmbeddedSite::startProcess()
{
    const quint16 port = VORASystemConfig::webHostPort();
    const QString binary = findBinary();
    if (binary.isEmpty()) {
        giveUp(QStringLiteral("找不到演示服务器程序 quorin-site。"),
               QStringLiteral("quorin-site not found (set QUORIN_SITE_BIN)"));
        return;
    }
    qCInfo(lcApp) << "starting" << binary << "on port" << port << "with data in" << dataDirectory();
    m_process.start(binary, {QStringLiteral("--port"), QString::number(port), QStringLiteral("--data"), dataDirectory()});
    m_starting = true;
    m_waited = 0;
    m_poll.start();
}

void VORAEmbeddedSite::poll()
{
    if (!m_starting || m_asking)
        return;
    m_asking = true;
    identify([this](Identity who) {
        m_asking = false;
        if (!m_starting)
            return;
        if (who == Identity::Ours) {
            m_starting = false;
            m_poll.stop();
            if (m_readyEmitted) {
                qCInfo(lcApp) << "quorin-site is back";
                emit restarted();
            } else {
                settle(true);
            }
            return;
        }
        m_waited += m_poll.interval();
        if (m_waited >= readyTimeoutMs && m_process.state() != QProcess::NotRunning) {
            qCWarning(lcApp) << "quorin-site did not answer within" << readyTimeoutMs << "ms";
            m_process.kill(); // onFinished() decides what next
        }
    });
}

void VORAEmbeddedSite::onFinished()
{
    if (m_stopping)
        return;
    m_poll.stop();
    m_starting = false;
    const QString how = m_process.exitStatus() == QProcess::CrashExit
        ? QStringLiteral("was killed or crashed")
        : QStringLiteral("exited with code %1").arg(m_process.exitCode());
    if (m_restarts >= maxRestarts) {
        if (m_readyEmitted)
            giveUp(QStringLiteral("演示服务器已停止运行，请重新打开应用。"),
                   QStringLiteral("quorin-site %1 after %2 restarts; not starting it any more").arg(how).arg(m_restarts));
        else
            giveUp(QStringLiteral("演示服务器没能启动。"), QStringLiteral("quorin-site %1 at start-up; giving up").arg(how));
        return;
    }
    ++m_restarts;
    qCWarning(lcApp).noquote() << QStringLiteral("quorin-site %1 - starting it again (%2 of %3)")
                                      .arg(how)
                                      .arg(m_restarts)
                                      .arg(maxRestarts);
    startProcess();
}

void VORAEmbeddedSite::settle(bool answering)
{
    m_readyEmitted = true;
    emit ready(answering);
}

void VORAEmbeddedSite::giveUp(const QString &message, const QString &detail)
{
    qCWarning(lcApp).noquote() << detail;
    if (!m_readyEmitted)
        settle(false);
    emit failed(message);
}

void VORAEmbeddedSite::stop()
{
    m_stopping = true;
    m_starting = false;
    m_poll.stop();
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(3000)) {
        m_process.kill();
        m_process.waitForFinished(1000);
    }
}
