#include "SqliteStatement.h"

#include "SqliteDatabase.h"

#include <sqlite3.h>

#include <utility>

SqliteStatement::SqliteStatement(SqliteDatabase *db, sqlite3_stmt *stmt)
    : m_db(db)
    , m_stmt(stmt)
{
}

SqliteStatement::~SqliteStatement()
{
    finalize();
}

SqliteStatement::SqliteStatement(SqliteStatement &&other) noexcept
    : m_db(std::exchange(other.m_db, nullptr))
    , m_stmt(std::exchange(other.m_stmt, nullptr))
{
}

SqliteStatement &SqliteStatement::operator=(SqliteStatement &&other) noexcept
{
    if (this != &other) {
        finalize();
        m_db = std::exchange(other.m_db, nullptr);
        m_stmt = std::exchange(other.m_stmt, nullptr);
    }
    return *this;
}

void SqliteStatement::finalize()
{
    if (m_stmt) {
        sqlite3_finalize(m_stmt);
        m_stmt = nullptr;
    }
}

bool SqliteStatement::bind(int index, const QVariant &value)
{
    if (!m_stmt)
        return false;
    int rc = SQLITE_OK;
    if (!value.isValid() || value.isNull()) {
        rc = sqlite3_bind_null(m_stmt, index);
    } else {
        switch (value.typeId()) {
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::LongLong:
        case QMetaType::Short:
        case QMetaType::Char:
            rc = sqlite3_bind_int64(m_stmt, index, value.toLongLong());
            break;
        case QMetaType::Double:
        case QMetaType::Float:
            rc = sqlite3_bind_double(m_stmt, index, value.toDouble());
            break;
        default: {
            const QByteArray utf8 = value.toString().toUtf8();
            rc = sqlite3_bind_text(m_stmt, index, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
            break;
        }
        }
    }
    if (rc != SQLITE_OK && m_db)
        m_db->recordError(rc);
    return rc == SQLITE_OK;
}

bool SqliteStatement::bind(const char *name, const QVariant &value)
{
    if (!m_stmt)
        return false;
    const int index = sqlite3_bind_parameter_index(m_stmt, name);
    return index > 0 && bind(index, value);
}

int SqliteStatement::parameterCount() const
{
    return m_stmt ? sqlite3_bind_parameter_count(m_stmt) : 0;
}

SqliteStatement::StepResult SqliteStatement::step()
{
    if (!m_stmt)
        return Error;
    const int rc = sqlite3_step(m_stmt);
    if (rc == SQLITE_ROW)
        return Row;
    if (rc == SQLITE_DONE)
        return Done;
    if (m_db)
        m_db->recordError(rc);
    return Error;
}

bool SqliteStatement::run()
{
    StepResult result;
    while ((result = step()) == Row) {
    }
    return result == Done;
}

void SqliteStatement::reset()
{
    if (m_stmt) {
        sqlite3_reset(m_stmt);
        sqlite3_clear_bindings(m_stmt);
    }
}

int SqliteStatement::columnCount() const
{
    return m_stmt ? sqlite3_column_count(m_stmt) : 0;
}

bool SqliteStatement::columnIsNull(int column) const
{
    return !m_stmt || sqlite3_column_type(m_stmt, column) == SQLITE_NULL;
}

qint64 SqliteStatement::columnInt64(int column) const
{
    return m_stmt ? sqlite3_column_int64(m_stmt, column) : 0;
}

double SqliteStatement::columnDouble(int column) const
{
    return m_stmt ? sqlite3_column_double(m_stmt, column) : 0.0;
}

QString SqliteStatement::columnText(int column) const
{
    if (!m_stmt)
        return QString();
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(m_stmt, column));
    const int bytes = sqlite3_column_bytes(m_stmt, column);
    return text ? QString::fromUtf8(text, bytes) : QString();
}
