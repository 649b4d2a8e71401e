#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QVariant>

struct sqlite3;
struct sqlite3_stmt;

// The site's per-user state: one SQLite file (C API), WAL journal. Used from the
// server thread only. Statements are prepared once and cached by their text.
class SiteDatabase
{
public:
    using Row = QVariantList;

    SiteDatabase() = default;
    ~SiteDatabase();
    SiteDatabase(const SiteDatabase &) = delete;
    SiteDatabase &operator=(const SiteDatabase &) = delete;

    bool open(const QString &file);
    bool isOpen() const { return m_db != nullptr; }
    QString lastError() const { return m_error; }

    // Runs one statement; returns the rows (empty for statements without results).
    QList<Row> select(const char *sql, const QVariantList &binds = {});
    // First column of the first row, or def when there is none.
    QVariant value(const char *sql, const QVariantList &binds = {}, const QVariant &def = {});
    // Runs one statement without results; false on failure.
    bool run(const char *sql, const QVariantList &binds = {});
    qint64 lastInsertId() const;
    int changes() const;
    bool execScript(const char *sql);

    bool begin() { return execScript("BEGIN IMMEDIATE"); }
    bool commit() { return execScript("COMMIT"); }
    void rollback() { execScript("ROLLBACK"); }

private:
    sqlite3_stmt *prepare(const char *sql);
    bool bindAll(sqlite3_stmt *stmt, const QVariantList &binds);

    sqlite3 *m_db = nullptr;
    QHash<QByteArray, sqlite3_stmt *> m_statements;
    QString m_error;
};
