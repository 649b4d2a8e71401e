#include "platform/AppDirectories.h"
#include "platform/PlatformLog.h"

#include <QDir>
#include <QStandardPaths>

QString AppDirectories::home()
{
    QString path = qEnvironmentVariable("QUORIN_HOME");
    if (path.isEmpty())
        path = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    path = QDir::cleanPath(path);
    if (path.size() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    return path;
}

QString AppDirectories::documents()
{
    return home() + QStringLiteral("/Documents");
}

QString AppDirectories::caches()
{
    return home() + QStringLiteral("/Library/Caches");
}

QString AppDirectories::applicationSupport()
{
    return home() + QStringLiteral("/Library/Application Support");
}

QString AppDirectories::preferences()
{
    return home() + QStringLiteral("/Library/Preferences");
}

void AppDirectories::ensureLayout()
{
    const QString dirs[] = {home(), documents(), caches(), applicationSupport(), preferences()};
    for (const QString &dir : dirs) {
        if (!QDir().mkpath(dir))
            qCWarning(lcPlatform) << "cannot create directory" << dir;
    }
}
