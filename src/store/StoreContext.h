#pragma once

#include "SqliteDatabase.h"
#include "SqliteStatement.h"
#include "StoreRecord.h"
#include "StoreSaveNotice.h"

#include <QHash>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>

// One working context over the store file: its own SQLite connection, the
// records it has fetched (one object per row, so a second fetch hands back the
// same object), and the pending inserts, changes and deletions that the next
// save() writes in one transaction. Used on one thread only.
//
// A fetch re-reads the values of the records it returns unless they have
// unsaved changes; records the caller merely holds keep their values until they
// are fetched again, refreshed (refreshRecord) or merged (mergeChanges).
class StoreContext : public std::enable_shared_from_this<StoreContext>
{
public:
    static std::shared_ptr<StoreContext> create(const QString &path);
    ~StoreContext();

    bool isOpen() const { return m_db.isOpen(); }
    QString path() const { return m_path; }

    // Runs a named fetch template. `id` binds ID, `idList` binds ID_LIST.
    // Pending inserts of this context that match are included; pending
    // deletions are not. An unknown template or a failing query gives nothing.
    QList<StoreRecordPtr> fetch(const QString &templateName, const QString &id = QString(),
                                const QStringList &idList = QStringList());
    template<class T>
    QList<std::shared_ptr<T>> fetchAs(const QString &templateName, const QString &id = QString(),
                                      const QStringList &idList = QStringList())
    {
        QList<std::shared_ptr<T>> out;
        const auto records = fetch(templateName, id, idList);
        out.reserve(records.size());
        for (const auto &record : records)
            out.append(std::static_pointer_cast<T>(record));
        return out;
    }

    void insertRecord(const StoreRecordPtr &record);
    void deleteRecord(const StoreRecordPtr &record);
    // Discards the record's unsaved values and reads it again from the file.
    void refreshRecord(const StoreRecordPtr &record);

    bool hasChanges() const;
    // Writes pending changes in one transaction. On failure everything stays
    // pending (and false is returned); on success the notice is posted on
    // StoreSaveNotifier.
    bool save();

    // Re-reads the records this context holds that another context's save
    // changed, and drops the ones it deleted. Records with unsaved changes here
    // keep them. Returns true when any held record was touched.
    bool mergeChanges(const StoreSaveNotice &notice);

    // The live records of one kind that this context currently holds.
    QList<StoreRecordPtr> registeredRecords(StoreEntityKind kind) const;

    // Called by StoreRecord when one of its fields is set.
    void recordDidChange(const StoreRecordPtr &record);

    static StoreRecordPtr makeRecord(StoreEntityKind kind);

private:
    explicit StoreContext(const QString &path);

    using Key = QPair<int, qint64>;
    SqliteStatement *statement(const QString &sql);
    StoreRecordPtr adopt(const StoreRecordPtr &record);
    bool loadRow(SqliteStatement &statement, StoreRecord &record) const;
    bool reload(StoreRecord &record);
    void bindValues(SqliteStatement &statement, const StoreRecord &record) const;

    QString m_path;
    SqliteDatabase m_db;
    std::map<QString, SqliteStatement> m_statements;
    // The records this context has fetched or saved, for its whole life
    // (one object per row); deleted rows leave it.
    QHash<Key, StoreRecordPtr> m_registered;
    QList<StoreRecordPtr> m_inserted;
    QHash<StoreRecord *, StoreRecordPtr> m_updated;
    QHash<StoreRecord *, StoreRecordPtr> m_deleted;
};
