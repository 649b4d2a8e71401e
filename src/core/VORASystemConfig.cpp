#include "core/VORASystemConfig.h"

#include "VORABuildInfo.h"

#include <QUrl>

namespace {

QString baseFrom(const char *variable, const char *fallback)
{
    QString base = qEnvironmentVariable(variable).trimmed();
    if (base.isEmpty())
        base = QString::fromUtf8(fallback);
    if (!base.endsWith(QLatin1Char('/')))
        base += QLatin1Char('/');
    return base;
}

} // namespace

QString VORASystemConfig::getWebServiceUrlBase()
{
    return baseFrom("QUORIN_API_BASE", QUORIN_API_BASE_DEFAULT);
}

QString VORASystemConfig::getPayWebServiceUrlBase()
{
    return baseFrom("QUORIN_PAY_BASE", QUORIN_PAY_BASE_DEFAULT);
}

QString VORASystemConfig::getWebServiceVersion()
{
    return buildVersion();
}

int VORASystemConfig::getComicCacheMaxCount()
{
    return 10;
}

int VORASystemConfig::getMaxBookshelfCapacity()
{
    return 500;
}

QString VORASystemConfig::buildVersion()
{
    return QStringLiteral(QUORIN_BUILD_VERSION);
}

QString VORASystemConfig::appVersion()
{
    return QStringLiteral(QUORIN_APP_VERSION);
}

QString VORASystemConfig::bundleIdentifier()
{
    return QStringLiteral(QUORIN_BUNDLE_ID);
}

QString VORASystemConfig::bundleName()
{
    return QStringLiteral(QUORIN_BUNDLE_NAME);
}

QString VORASystemConfig::displayName()
{
    return QStringLiteral(QUORIN_DISPLAY_NAME);
}

QString VORASystemConfig::webHostName()
{
    return QUrl(getWebServiceUrlBase()).host();
}

quint16 VORASystemConfig::webHostPort()
{
    const QUrl url(getWebServiceUrlBase());
    const int fallback = url.scheme() == QLatin1String("https") ? 443 : 80;
    const int port = url.port(fallback);
    return port > 0 && port <= 65535 ? quint16(port) : quint16(fallback);
}
