#pragma once

#include <QHash>
#include <QMutex>
#include <QRecursiveMutex>
#include <QString>

// The process-wide coordinator of the store file. It prepares a store file
// once per path and process (integrity check, schema migration, setting a
// damaged file aside), and its recursive mutex is the store-wide lock that
// every read-modify-write of download bookkeeping runs under.
class StoreCoordinator
{
public:
    static StoreCoordinator &instance();

    void lock() { m_mutex.lock(); }
    void unlock() { m_mutex.unlock(); }
    bool tryLock() { return m_mutex.tryLock(); }

    // Makes the file at `path` usable: creates it when missing, migrates it to
    // the current schema, and moves a damaged file (or one written by a newer
    // schema) aside before starting a new one. False when no usable file could
    // be made (the store then runs empty and loses what it is asked to save).
    bool prepareStore(const QString &path);

    // Where prepareStore last moved a damaged file at `path` (empty if never).
    QString setAsidePath(const QString &path);

private:
    StoreCoordinator() = default;
    enum class Check { Usable, Damaged, Unavailable };
    Check checkAndMigrate(const QString &path, QString *reason);
    QString setAside(const QString &path);

    QRecursiveMutex m_mutex;  // the store-wide lock
    QMutex m_prepareMutex;    // guards preparation only, so opening an instance never waits on the lock
    QHash<QString, bool> m_prepared;
    QHash<QString, QString> m_setAside;
};
