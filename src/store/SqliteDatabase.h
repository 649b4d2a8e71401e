#pragma once

#include <QString>

struct sqlite3;
class SqliteStatement;

// One SQLite connection, closed when the object goes away. Every call reports
// failure through its return value and keeps the engine's message in
// lastError(); nothing throws.
class SqliteDatabase
{
public:
    SqliteDatabase() = default;
    ~SqliteDatabase();
    SqliteDatabase(const SqliteDatabase &) = delete;
    SqliteDatabase &operator=(const SqliteDatabase &) = delete;
    SqliteDatabase(SqliteDatabase &&other) noexcept;
    SqliteDatabase &operator=(SqliteDatabase &&other) noexcept;

    // Opens (creating when missing) the file read-write.
    bool open(const QString &path);
    void close();
    bool isOpen() const { return m_db != nullptr; }
    QString path() const { return m_path; }

    // Runs one or more statements that return no rows of interest.
    bool exec(const QString &sql);
    SqliteStatement prepare(const QString &sql);

    // The result of the last failed call, and its primary SQLite result code.
    QString lastError() const { return m_lastError; }
    int lastErrorCode() const { return m_lastErrorCode; }

    void setBusyTimeout(int milliseconds);
    // PRAGMA user_version; -1 when it cannot be read (not a database, damaged).
    int userVersion();
    bool setUserVersion(int version);
    qint64 lastInsertRowId() const;
    sqlite3 *handle() const { return m_db; }

    void recordError(int code);

private:
    sqlite3 *m_db = nullptr;
    QString m_path;
    QString m_lastError;
    int m_lastErrorCode = 0;
};
