#include "StoreCoordinator.h"

#include "SqliteDatabase.h"
#include "SqliteStatement.h"
#include "StoreLogging.h"
#include "StoreModel.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QMutexLocker>

#include <sqlite3.h>

StoreCoordinator &StoreCoordinator::instance()
{
    // Never destroyed: worker threads may still lock it while the process exits.
    static StoreCoordinator *coordinator = new StoreCoordinator;
    return *coordinator;
}

StoreCoordinator::Check StoreCoordinator::checkAndMigrate(const QString &path, QString *reason)
{
    SqliteDatabase db;
    if (!db.open(path)) {
        *reason = db.lastError();
        // A file that exists but cannot be opened as a database is damaged;
        // a directory we cannot create files in is not.
        return QFileInfo::exists(path) && db.lastErrorCode() != SQLITE_CANTOPEN ? Check::Damaged
                                                                                : Check::Unavailable;
    }
    db.setBusyTimeout(10000);
    // Nothing is written before the file has proved readable and of a known
    // schema, so a file that is set aside keeps the bytes it had.
    SqliteStatement check = db.prepare(QStringLiteral("PRAGMA quick_check"));
    if (!check.isValid()) {
        *reason = db.lastError();
        return db.lastErrorCode() == SQLITE_BUSY ? Check::Unavailable : Check::Damaged;
    }
    const auto step = check.step();
    if (step != SqliteStatement::Row || check.columnText(0) != QLatin1String("ok")) {
        *reason = step == SqliteStatement::Row ? check.columnText(0) : db.lastError();
        return db.lastErrorCode() == SQLITE_BUSY ? Check::Unavailable : Check::Damaged;
    }
    check = SqliteStatement();
    const int version = db.userVersion();
    if (version > StoreModel::schemaVersion()) {
        *reason = QStringLiteral("schema version %1 is newer than %2").arg(version).arg(StoreModel::schemaVersion());
        return Check::Damaged;
    }
    if (!db.exec(QStringLiteral("PRAGMA journal_mode=WAL"))) {
        *reason = db.lastError();
        return Check::Unavailable;
    }

    switch (StoreModel::migrate(db, reason)) {
    case StoreModel::MigrationResult::Migrated:
        return Check::Usable;
    case StoreModel::MigrationResult::NewerThanKnown:
        return Check::Damaged;
    case StoreModel::MigrationResult::Failed:
        // A migration that cannot be applied to this file leaves it unusable
        // for this version of the code; a fresh file can still be made.
        return Check::Damaged;
    }
    return Check::Unavailable;
}

QString StoreCoordinator::setAside(const QString &path)
{
    const QString stamp = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString target = path + QStringLiteral(".damaged-") + stamp;
    for (int n = 1; QFileInfo::exists(target); ++n)
        target = path + QStringLiteral(".damaged-%1-%2").arg(stamp).arg(n);
    if (!QFile::rename(path, target))
        return QString();
    // The journal files belong to the damaged file; keep them next to it.
    for (const char *suffix : {"-wal", "-shm"}) {
        const QString side = path + QLatin1String(suffix);
        if (QFileInfo::exists(side) && !QFile::rename(side, target + QLatin1String(suffix)))
            QFile::remove(side);
    }
    return target;
}

bool StoreCoordinator::prepareStore(const QString &path)
{
    QMutexLocker locker(&m_prepareMutex);
    const auto known = m_prepared.constFind(path);
    if (known != m_prepared.constEnd())
        return known.value();

    QString reason;
    Check result = checkAndMigrate(path, &reason);
    if (result == Check::Damaged) {
        const QString target = setAside(path);
        if (target.isEmpty()) {
            qCWarning(lcStore).noquote() << "store file" << path << "is unusable (" + reason
                    + ") and could not be moved aside; the store runs empty";
            result = Check::Unavailable;
        } else {
            m_setAside.insert(path, target);
            qCWarning(lcStore).noquote() << "store file" << path << "is unusable (" + reason
                    + "); moved it aside to" << target << "and started a new one";
            result = checkAndMigrate(path, &reason);
        }
    }
    if (result != Check::Usable)
        qCWarning(lcStore).noquote() << "store file" << path << "cannot be used:" << reason;
    // Only success is remembered: an unavailable file is tried again by the
    // next instance that opens the store.
    const bool usable = result == Check::Usable;
    if (usable)
        m_prepared.insert(path, true);
    return usable;
}

QString StoreCoordinator::setAsidePath(const QString &path)
{
    QMutexLocker locker(&m_prepareMutex);
    return m_setAside.value(path);
}
