#include "SqliteTransaction.h"

#include "SqliteDatabase.h"

SqliteTransaction::SqliteTransaction(SqliteDatabase &db)
    : m_db(db)
{
    m_active = m_db.exec(QStringLiteral("BEGIN IMMEDIATE"));
}

SqliteTransaction::~SqliteTransaction()
{
    rollback();
}

bool SqliteTransaction::commit()
{
    if (!m_active)
        return false;
    if (!m_db.exec(QStringLiteral("COMMIT"))) {
        rollback();
        return false;
    }
    m_active = false;
    return true;
}

void SqliteTransaction::rollback()
{
    if (m_active) {
        m_db.exec(QStringLiteral("ROLLBACK"));
        m_active = false;
    }
}
