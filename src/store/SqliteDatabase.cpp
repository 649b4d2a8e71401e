#include "SqliteDatabase.h"

#include "SqliteStatement.h"

#include <sqlite3.h>

#include <utility>

SqliteDatabase::~SqliteDatabase()
{
    close();
}

SqliteDatabase::SqliteDatabase(SqliteDatabase &&other) noexcept
    : m_db(std::exchange(other.m_db, nullptr))
    , m_path(std::move(other.m_path))
    , m_lastError(std::move(other.m_lastError))
    , m_lastErrorCode(other.m_lastErrorCode)
{
}

SqliteDatabase &SqliteDatabase::operator=(SqliteDatabase &&other) noexcept
{
    if (this != &other) {
        close();
        m_db = std::exchange(other.m_db, nullptr);
        m_path = std::move(other.m_path);
        m_lastError = std::move(other.m_lastError);
        m_lastErrorCode = other.m_lastErrorCode;
    }
    return *this;
}

bool SqliteDatabase::open(const QString &path)
{
    close();
    m_path = path;
    sqlite3 *db = nullptr;
    const int rc = sqlite3_open_v2(path.toUtf8().constData(), &db,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                                   nullptr);
    if (rc != SQLITE_OK) {
        m_lastErrorCode = rc;
        m_lastError = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(rc));
        sqlite3_close_v2(db);
        return false;
    }
    m_db = db;
    sqlite3_extended_result_codes(m_db, 0);
    return true;
}

void SqliteDatabase::close()
{
    if (m_db) {
        // close_v2 defers the real close until every statement is finalised,
        // so a statement that outlives the connection object stays harmless.
        sqlite3_close_v2(m_db);
        m_db = nullptr;
    }
}

void SqliteDatabase::recordError(int code)
{
    m_lastErrorCode = code & 0xff;
    m_lastError = m_db ? QString::fromUtf8(sqlite3_errmsg(m_db)) : QString::fromUtf8(sqlite3_errstr(code));
}

bool SqliteDatabase::exec(const QString &sql)
{
    if (!m_db) {
        m_lastErrorCode = SQLITE_MISUSE;
        m_lastError = QStringLiteral("database is not open");
        return false;
    }
    char *message = nullptr;
    const int rc = sqlite3_exec(m_db, sql.toUtf8().constData(), nullptr, nullptr, &message);
    if (rc != SQLITE_OK) {
        m_lastErrorCode = rc & 0xff;
        m_lastError = message ? QString::fromUtf8(message) : QString::fromUtf8(sqlite3_errstr(rc));
        sqlite3_free(message);
        return false;
    }
    return true;
}

SqliteStatement SqliteDatabase::prepare(const QString &sql)
{
    if (!m_db) {
        m_lastErrorCode = SQLITE_MISUSE;
        m_lastError = QStringLiteral("database is not open");
        return SqliteStatement();
    }
    sqlite3_stmt *stmt = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    const int rc = sqlite3_prepare_v2(m_db, utf8.constData(), int(utf8.size()), &stmt, nullptr);
    if (rc != SQLITE_OK) {
        recordError(rc);
        sqlite3_finalize(stmt);
        return SqliteStatement();
    }
    return SqliteStatement(this, stmt);
}

void SqliteDatabase::setBusyTimeout(int milliseconds)
{
    if (m_db)
        sqlite3_busy_timeout(m_db, milliseconds);
}

int SqliteDatabase::userVersion()
{
    SqliteStatement statement = prepare(QStringLiteral("PRAGMA user_version"));
    if (!statement.isValid() || statement.step() != SqliteStatement::Row)
        return -1;
    return int(statement.columnInt64(0));
}

bool SqliteDatabase::setUserVersion(int version)
{
    return exec(QStringLiteral("PRAGMA user_version = %1").arg(version));
}

qint64 SqliteDatabase::lastInsertRowId() const
{
    return m_db ? sqlite3_last_insert_rowid(m_db) : 0;
}
