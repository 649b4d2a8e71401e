#include "SiteDatabase.h"

#include "SiteLog.h"

#include <sqlite3.h>

SiteDatabase::~SiteDatabase()
{
    for (sqlite3_stmt *stmt : std::as_const(m_statements))
        sqlite3_finalize(stmt);
    if (m_db)
        sqlite3_close(m_db);
}

bool SiteDatabase::open(const QString &file)
{
    const QByteArray name = file.toUtf8();
    if (sqlite3_open_v2(name.constData(), &m_db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                        nullptr) != SQLITE_OK) {
        m_error = m_db ? QString::fromUtf8(sqlite3_errmsg(m_db)) : QStringLiteral("out of memory");
        if (m_db)
            sqlite3_close(m_db);
        m_db = nullptr;
        return false;
    }
    sqlite3_busy_timeout(m_db, 2000);
    execScript("PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL; PRAGMA foreign_keys=OFF;");
    return true;
}

bool SiteDatabase::execScript(const char *sql)
{
    if (!m_db)
        return false;
    char *err = nullptr;
    if (sqlite3_exec(m_db, sql, nullptr, nullptr, &err) != SQLITE_OK) {
        m_error = QString::fromUtf8(err ? err : "error");
        qCWarning(lcSite) << "sqlite:" << m_error;
        sqlite3_free(err);
        return false;
    }
    return true;
}

sqlite3_stmt *SiteDatabase::prepare(const char *sql)
{
    if (!m_db)
        return nullptr;
    const QByteArray key(sql);
    auto it = m_statements.constFind(key);
    if (it != m_statements.constEnd())
        return *it;
    sqlite3_stmt *stmt = nullptr;
    if (sqlite3_prepare_v2(m_db, sql, -1, &stmt, nullptr) != SQLITE_OK) {
        m_error = QString::fromUtf8(sqlite3_errmsg(m_db));
        qCWarning(lcSite) << "sqlite prepare:" << m_error << sql;
        return nullptr;
    }
    m_statements.insert(key, stmt);
    return stmt;
}

bool SiteDatabase::bindAll(sqlite3_stmt *stmt, const QVariantList &binds)
{
    sqlite3_reset(stmt);
    sqlite3_clear_bindings(stmt);
    for (int i = 0; i < binds.size(); ++i) {
        const QVariant &v = binds.at(i);
        int rc = SQLITE_OK;
        if (v.isNull() || !v.isValid()) {
            rc = sqlite3_bind_null(stmt, i + 1);
        } else {
            switch (v.typeId()) {
            case QMetaType::Int:
            case QMetaType::UInt:
            case QMetaType::LongLong:
            case QMetaType::ULongLong:
            case QMetaType::Bool:
                rc = sqlite3_bind_int64(stmt, i + 1, v.toLongLong());
                break;
            case QMetaType::Double:
                rc = sqlite3_bind_double(stmt, i + 1, v.toDouble());
                break;
            case QMetaType::QByteArray: {
                const QByteArray b = v.toByteArray();
                rc = sqlite3_bind_blob(stmt, i + 1, b.constData(), int(b.size()), SQLITE_TRANSIENT);
                break;
            }
            default: {
                const QByteArray t = v.toString().toUtf8();
                rc = sqlite3_bind_text(stmt, i + 1, t.constData(), int(t.size()), SQLITE_TRANSIENT);
                break;
            }
            }
        }
        if (rc != SQLITE_OK) {
            m_error = QString::fromUtf8(sqlite3_errmsg(m_db));
            return false;
        }
    }
    return true;
}

QList<SiteDatabase::Row> SiteDatabase::select(const char *sql, const QVariantList &binds)
{
    QList<Row> rows;
    sqlite3_stmt *stmt = prepare(sql);
    if (!stmt || !bindAll(stmt, binds))
        return rows;
    int rc;
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
        const int n = sqlite3_column_count(stmt);
        Row row;
        row.reserve(n);
        for (int c = 0; c < n; ++c) {
            switch (sqlite3_column_type(stmt, c)) {
            case SQLITE_INTEGER:
                row.append(qint64(sqlite3_column_int64(stmt, c)));
                break;
            case SQLITE_FLOAT:
                row.append(sqlite3_column_double(stmt, c));
                break;
            case SQLITE_TEXT:
                row.append(QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(stmt, c)),
                                             sqlite3_column_bytes(stmt, c)));
                break;
            case SQLITE_BLOB:
                row.append(QByteArray(static_cast<const char *>(sqlite3_column_blob(stmt, c)),
                                      sqlite3_column_bytes(stmt, c)));
                break;
            default:
                row.append(QVariant());
                break;
            }
        }
        rows.append(row);
    }
    if (rc != SQLITE_DONE) {
        m_error = QString::fromUtf8(sqlite3_errmsg(m_db));
        qCWarning(lcSite) << "sqlite step:" << m_error << sql;
    }
    sqlite3_reset(stmt);
    return rows;
}

QVariant SiteDatabase::value(const char *sql, const QVariantList &binds, const QVariant &def)
{
    const QList<Row> rows = select(sql, binds);
    if (rows.isEmpty() || rows.first().isEmpty() || rows.first().first().isNull())
        return def;
    return rows.first().first();
}

bool SiteDatabase::run(const char *sql, const QVariantList &binds)
{
    sqlite3_stmt *stmt = prepare(sql);
    if (!stmt || !bindAll(stmt, binds))
        return false;
    int rc;
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
    }
    sqlite3_reset(stmt);
    if (rc != SQLITE_DONE) {
        m_error = QString::fromUtf8(sqlite3_errmsg(m_db));
        qCWarning(lcSite) << "sqlite step:" << m_error << sql;
        return false;
    }
    return true;
}

qint64 SiteDatabase::lastInsertId() const
{
    return m_db ? qint64(sqlite3_last_insert_rowid(m_db)) : -1;
}

int SiteDatabase::changes() const
{
    return m_db ? sqlite3_changes(m_db) : 0;
}
