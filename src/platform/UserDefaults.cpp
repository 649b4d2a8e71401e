#include "platform/UserDefaults.h"
#include "platform/AppDirectories.h"
#include "platform/PlatformLog.h"

#include <QMutexLocker>
#include <QSettings>

#ifndef QUORIN_BUNDLE_ID
#define QUORIN_BUNDLE_ID "com.quorin.reader"
#endif

UserDefaults &UserDefaults::standard()
{
    static UserDefaults instance;
    return instance;
}

UserDefaults::UserDefaults(const QString &filePath)
    : m_fixedPath(filePath)
{
}

UserDefaults::~UserDefaults()
{
    QMutexLocker lock(&m_mutex);
    if (m_settings)
        m_settings->sync();
}

QString UserDefaults::standardFilePath()
{
    return AppDirectories::preferences() + QLatin1Char('/') + QStringLiteral(QUORIN_BUNDLE_ID)
        + QStringLiteral(".ini");
}

QString UserDefaults::filePath() const
{
    return m_fixedPath.isEmpty() ? standardFilePath() : m_fixedPath;
}

QSettings &UserDefaults::settingsLocked() const
{
    const QString path = filePath();
    if (!m_settings || path != m_currentPath) {
        if (m_settings)
            m_settings->sync();
        m_settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
        m_currentPath = path;
    }
    return *m_settings;
}

bool UserDefaults::contains(const QString &key) const
{
    QMutexLocker lock(&m_mutex);
    return settingsLocked().contains(key);
}

QVariant UserDefaults::value(const QString &key) const
{
    QMutexLocker lock(&m_mutex);
    return settingsLocked().value(key);
}

void UserDefaults::setValue(const QString &key, const QVariant &value)
{
    QMutexLocker lock(&m_mutex);
    QSettings &settings = settingsLocked();
    settings.setValue(key, value);
    settings.sync();
    if (settings.status() != QSettings::NoError)
        qCWarning(lcPlatform) << "cannot write the user defaults" << m_currentPath;
}

void UserDefaults::remove(const QString &key)
{
    QMutexLocker lock(&m_mutex);
    QSettings &settings = settingsLocked();
    settings.remove(key);
    settings.sync();
    if (settings.status() != QSettings::NoError)
        qCWarning(lcPlatform) << "cannot write the user defaults" << m_currentPath;
}

bool UserDefaults::boolForKey(const QString &key) const
{
    const QVariant v = value(key);
    if (!v.isValid())
        return false;
    // The INI file keeps booleans as text; numbers count as true when non-zero.
    if (v.typeId() == QMetaType::QString) {
        const QString s = v.toString().trimmed().toLower();
        if (s == QLatin1String("true") || s == QLatin1String("yes"))
            return true;
        bool ok = false;
        const double d = s.toDouble(&ok);
        return ok && d != 0.0;
    }
    return v.toBool();
}

double UserDefaults::doubleForKey(const QString &key) const
{
    bool ok = false;
    const double d = value(key).toDouble(&ok);
    return ok ? d : 0.0;
}

QVariantMap UserDefaults::dictionaryForKey(const QString &key) const
{
    const QVariant v = value(key);
    if (v.typeId() == QMetaType::QVariantMap)
        return v.toMap();
    if (v.typeId() == QMetaType::QVariantHash) {
        QVariantMap map;
        const QVariantHash hash = v.toHash();
        for (auto it = hash.cbegin(); it != hash.cend(); ++it)
            map.insert(it.key(), it.value());
        return map;
    }
    return {};
}

void UserDefaults::synchronize()
{
    QMutexLocker lock(&m_mutex);
    settingsLocked().sync();
}
