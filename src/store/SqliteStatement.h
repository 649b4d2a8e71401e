#pragma once

#include <QString>
#include <QVariant>

struct sqlite3_stmt;
class SqliteDatabase;

// One prepared statement, finalised when the object goes away. Parameters are
// bound by name (":ID") or by 1-based index.
class SqliteStatement
{
public:
    enum StepResult { Row, Done, Error };

    SqliteStatement() = default;
    SqliteStatement(SqliteDatabase *db, sqlite3_stmt *stmt);
    ~SqliteStatement();
    SqliteStatement(const SqliteStatement &) = delete;
    SqliteStatement &operator=(const SqliteStatement &) = delete;
    SqliteStatement(SqliteStatement &&other) noexcept;
    SqliteStatement &operator=(SqliteStatement &&other) noexcept;

    bool isValid() const { return m_stmt != nullptr; }

    // Binds a QVariant: null → NULL, bool/integers → INTEGER, double → REAL,
    // anything else → TEXT. Returns false for an unknown name.
    bool bind(int index, const QVariant &value);
    bool bind(const char *name, const QVariant &value);
    int parameterCount() const;

    StepResult step();
    // Steps to the end; true when no step failed.
    bool run();
    void reset();

    int columnCount() const;
    bool columnIsNull(int column) const;
    qint64 columnInt64(int column) const;
    double columnDouble(int column) const;
    QString columnText(int column) const;

private:
    void finalize();

    SqliteDatabase *m_db = nullptr;
    sqlite3_stmt *m_stmt = nullptr;
};
