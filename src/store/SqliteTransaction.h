#pragma once

class SqliteDatabase;

// BEGIN IMMEDIATE on construction; rolled back on destruction unless commit()
// succeeded. IMMEDIATE takes the write lock up front, so two connections never
// deadlock upgrading a read transaction.
class SqliteTransaction
{
public:
    explicit SqliteTransaction(SqliteDatabase &db);
    ~SqliteTransaction();
    SqliteTransaction(const SqliteTransaction &) = delete;
    SqliteTransaction &operator=(const SqliteTransaction &) = delete;

    bool isActive() const { return m_active; }
    bool commit();
    void rollback();

private:
    SqliteDatabase &m_db;
    bool m_active = false;
};
