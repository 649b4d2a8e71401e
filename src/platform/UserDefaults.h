#pragma once

#include <QMutex>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <memory>

class QSettings;

// The user-defaults store: an INI file read and written through QSettings.
//
// standard() is the file preferences() + "/" + bundle id + ".ini"; it follows the
// app home when $QUORIN_HOME changes between calls. Every change is synced to
// disk at once. All operations are thread-safe.
class UserDefaults
{
public:
    static UserDefaults &standard();

    // A store over a fixed file (tests, tools). An empty path means "follow the
    // app home" as standard() does.
    explicit UserDefaults(const QString &filePath = {});
    ~UserDefaults();
    UserDefaults(const UserDefaults &) = delete;
    UserDefaults &operator=(const UserDefaults &) = delete;

    static QString standardFilePath();
    QString filePath() const;

    bool contains(const QString &key) const;
    QVariant value(const QString &key) const;
    void setValue(const QString &key, const QVariant &value);
    void remove(const QString &key);

    bool boolForKey(const QString &key) const;          // false when absent
    double doubleForKey(const QString &key) const;      // 0.0 when absent or not a number
    QVariantMap dictionaryForKey(const QString &key) const; // empty when absent or not a map

    void synchronize();

private:
    QSettings &settingsLocked() const;

    QString m_fixedPath;
    mutable QMutex m_mutex;
    mutable QString m_currentPath;
    mutable std::unique_ptr<QSettings> m_settings;
};
