#include "StoreContext.h"

#include "Bookmark.h"
#include "Bookshelf.h"
#include "DownloadChapter.h"
#include "DownloadComic.h"
#include "ReadHistory.h"
#include "RecentReadInfo.h"
#include "SqliteTransaction.h"
#include "StoreModel.h"
#include "StoreSaveNotifier.h"

#include <QJsonArray>
#include <QJsonDocument>
#include "StoreLogging.h"

#include <algorithm>
#include <cmath>



namespace {

QVariant dateToSql(const QDateTime &date)
{
    if (!date.isValid())
        return QVariant();
    return double(date.toMSecsSinceEpoch()) / 1000.0;
}

QDateTime dateFromSql(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(std::llround(seconds * 1000.0)), Qt::UTC);
}

bool lessThan(const QVariant &a, const QVariant &b)
{
    if (a.typeId() == QMetaType::QDateTime) {
        const QDateTime da = a.toDateTime();
        const QDateTime db = b.toDateTime();
        const qint64 ma = da.isValid() ? da.toMSecsSinceEpoch() : std::numeric_limits<qint64>::min();
        const qint64 mb = db.isValid() ? db.toMSecsSinceEpoch() : std::numeric_limits<qint64>::min();
        return ma < mb;
    }
    if (a.typeId() == QMetaType::QString)
        return a.toString() < b.toString();
    return a.toLongLong() < b.toLongLong();
}

} // namespace

std::shared_ptr<StoreContext> StoreContext::create(const QString &path)
{
    return std::shared_ptr<StoreContext>(new StoreContext(path));
}

StoreContext::StoreContext(const QString &path)
    : m_path(path)
{
    if (path.isEmpty())
        return;
    if (!m_db.open(path)) {
        qCWarning(lcStore) << "cannot open store" << path << m_db.lastError();
        return;
    }
    m_db.setBusyTimeout(10000);
    if (!m_db.exec(QStringLiteral("PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;")))
        qCWarning(lcStore) << "cannot set journal mode on" << path << m_db.lastError();
}

StoreContext::~StoreContext()
{
    m_statements.clear(); // finalise before the connection closes
}

StoreRecordPtr StoreContext::makeRecord(StoreEntityKind kind)
{
    switch (kind) {
    case StoreEntityKind::Bookshelf:
        return std::make_shared<Bookshelf>();
    case StoreEntityKind::Bookmark:
        return std::make_shared<Bookmark>();
    case StoreEntityKind::RecentReadInfo:
        return std::make_shared<RecentReadInfo>();
    case StoreEntityKind::ReadHistory:
        return std::make_shared<ReadHistory>();
    case StoreEntityKind::DownloadComic:
        return std::make_shared<DownloadComic>();
    case StoreEntityKind::DownloadChapter:
        return std::make_shared<DownloadChapter>();
    }
    return nullptr;
}

SqliteStatement *StoreContext::statement(const QString &sql)
{
    if (!m_db.isOpen())
        return nullptr;
    auto it = m_statements.find(sql);
    if (it == m_statements.end()) {
        SqliteStatement prepared = m_db.prepare(sql);
        if (!prepared.isValid()) {
            qCWarning(lcStore) << "cannot prepare" << sql << m_db.lastError();
            return nullptr;
        }
        it = m_statements.emplace(sql, std::move(prepared)).first;
    }
    it->second.reset();
    return &it->second;
}

bool StoreContext::loadRow(SqliteStatement &statement, StoreRecord &record) const
{
    const auto &entity = StoreModel::entity(record.m_kind);
    for (int i = 0; i < entity.attributes.size(); ++i) {
        const int column = i + 1;
        switch (entity.attributes.at(i).type) {
        case StoreModel::AttributeType::Text:
            record.m_values[i] = statement.columnText(column);
            break;
        case StoreModel::AttributeType::Integer:
            record.m_values[i] = statement.columnInt64(column);
            break;
        case StoreModel::AttributeType::Boolean:
            record.m_values[i] = statement.columnInt64(column) != 0;
            break;
        case StoreModel::AttributeType::Date:
            record.m_values[i] = statement.columnIsNull(column) ? QDateTime()
                                                                : dateFromSql(statement.columnDouble(column));
            break;
        }
    }
    return true;
}

bool StoreContext::reload(StoreRecord &record)
{
    if (record.m_rowId <= 0)
        return false;
    SqliteStatement *select = statement(StoreModel::selectByRowIdSql(record.m_kind));
    if (!select)
        return false;
    select->bind(1, record.m_rowId);
    const auto result = select->step();
    if (result == SqliteStatement::Row)
        loadRow(*select, record);
    select->reset();
    if (result == SqliteStatement::Done) {
        // The row is gone: another context deleted it.
        record.m_deleted = true;
        m_registered.remove(Key(int(record.m_kind), record.m_rowId));
    }
    return result == SqliteStatement::Row;
}

QList<StoreRecordPtr> StoreContext::fetch(const QString &templateName, const QString &id,
                                          const QStringList &idList)
{
    const StoreModel::FetchTemplate *fetch = StoreModel::fetchTemplate(templateName);
    if (!fetch)
        return {};
    QList<StoreRecordPtr> results;
    if (SqliteStatement *select = statement(fetch->sql)) {
        if (!fetch->matchAttribute.isEmpty()) {
            if (fetch->listVariable)
                select->bind(":ID_LIST", QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(idList))
                                                                .toJson(QJsonDocument::Compact)));
            else
                select->bind(":ID", id);
        }
        SqliteStatement::StepResult step;
        while ((step = select->step()) == SqliteStatement::Row) {
            const qint64 rowId = select->columnInt64(0);
            const Key key(int(fetch->kind), rowId);
            StoreRecordPtr record = m_registered.value(key);
            if (record) {
                if (record->m_deleted)
                    continue;
                if (!record->m_changed)
                    loadRow(*select, *record);
            } else {
                record = makeRecord(fetch->kind);
                record->m_rowId = rowId;
                record->m_context = weak_from_this();
                loadRow(*select, *record);
                m_registered.insert(key, record);
            }
            results.append(record);
        }
        if (step == SqliteStatement::Error) {
            qCWarning(lcStore) << "fetch" << templateName << "failed:" << m_db.lastError();
            results.clear();
        }
        select->reset();
    }

    // Pending inserts take part in the fetch as they would after a save.
    const auto &entity = StoreModel::entity(fetch->kind);
    const int match = fetch->matchAttribute.isEmpty() ? -1 : entity.indexOf(fetch->matchAttribute);
    bool addedPending = false;
    for (const auto &record : std::as_const(m_inserted)) {
        if (record->m_kind != fetch->kind || record->m_deleted)
            continue;
        if (match >= 0) {
            const QString value = record->m_values.at(match).toString();
            if (fetch->listVariable ? !idList.contains(value) : value != id)
                continue;
        }
        results.append(record);
        addedPending = true;
    }
    if (addedPending && !fetch->orderAttribute.isEmpty()) {
        const int order = entity.indexOf(fetch->orderAttribute);
        const bool newestFirst = fetch->newestFirst;
        std::stable_sort(results.begin(), results.end(), [order, newestFirst](const auto &a, const auto &b) {
            return newestFirst ? lessThan(b->m_values.at(order), a->m_values.at(order))
                               : lessThan(a->m_values.at(order), b->m_values.at(order));
        });
    }
    return results;
}

StoreRecordPtr StoreContext::adopt(const StoreRecordPtr &record)
{
    if (!record)
        return nullptr;
    if (record->m_context.lock().get() == this)
        return record;
    // A record of another context: act on our own object for the same row.
    if (record->m_rowId <= 0)
        return nullptr;
    const Key key(int(record->m_kind), record->m_rowId);
    if (StoreRecordPtr own = m_registered.value(key))
        return own;
    StoreRecordPtr own = makeRecord(record->m_kind);
    own->m_rowId = record->m_rowId;
    own->m_context = weak_from_this();
    if (!reload(*own))
        return nullptr;
    m_registered.insert(key, own);
    return own;
}

void StoreContext::insertRecord(const StoreRecordPtr &record)
{
    if (!record || record->m_rowId != 0 || !record->m_context.expired())
        return;
    record->m_context = weak_from_this();
    record->m_changed = true;
    m_inserted.append(record);
}

void StoreContext::deleteRecord(const StoreRecordPtr &given)
{
    StoreRecordPtr record = adopt(given);
    if (!record || record->m_deleted)
        return;
    record->m_deleted = true;
    m_updated.remove(record.get());
    if (record->m_rowId == 0) {
        m_inserted.removeAll(record);
        return;
    }
    m_deleted.insert(record.get(), record);
}

void StoreContext::refreshRecord(const StoreRecordPtr &given)
{
    StoreRecordPtr record = adopt(given);
    if (!record || record->m_rowId == 0 || m_deleted.contains(record.get()))
        return;
    m_updated.remove(record.get());
    record->m_changed = false;
    reload(*record);
}

void StoreContext::recordDidChange(const StoreRecordPtr &record)
{
    if (record->m_rowId == 0)
        return; // a pending insert is written whole anyway
    m_updated.insert(record.get(), record);
}

bool StoreContext::hasChanges() const
{
    return !m_inserted.isEmpty() || !m_updated.isEmpty() || !m_deleted.isEmpty();
}

void StoreContext::bindValues(SqliteStatement &statement, const StoreRecord &record) const
{
    const auto &entity = StoreModel::entity(record.m_kind);
    for (int i = 0; i < entity.attributes.size(); ++i) {
        if (entity.attributes.at(i).type == StoreModel::AttributeType::Date)
            statement.bind(i + 1, dateToSql(record.m_values.at(i).toDateTime()));
        else
            statement.bind(i + 1, record.m_values.at(i));
    }
}

bool StoreContext::save()
{
    if (!hasChanges())
        return true;
    if (!m_db.isOpen())
        return false;

    StoreSaveNotice notice;
    notice.source = this;
    notice.storePath = m_path;
    QList<StoreRecordPtr> written;
    bool ok = true;
    {
        SqliteTransaction transaction(m_db);
        ok = transaction.isActive();
        for (const auto &record : std::as_const(m_inserted)) {
            if (!ok)
                break;
            SqliteStatement *insert = statement(StoreModel::insertSql(record->m_kind));
            ok = insert != nullptr;
            if (ok) {
                bindValues(*insert, *record);
                ok = insert->run();
            }
            if (ok) {
                record->m_rowId = m_db.lastInsertRowId();
                written.append(record);
                notice.inserted[int(record->m_kind)].insert(record->m_rowId);
            }
        }
        for (const auto &record : std::as_const(m_updated)) {
            if (!ok)
                break;
            const int columns = int(StoreModel::entity(record->m_kind).attributes.size());
            SqliteStatement *update = statement(StoreModel::updateSql(record->m_kind));
            ok = update != nullptr;
            if (ok) {
                bindValues(*update, *record);
                update->bind(columns + 1, record->m_rowId);
                ok = update->run();
            }
            if (ok)
                notice.updated[int(record->m_kind)].insert(record->m_rowId);
        }
        for (const auto &record : std::as_const(m_deleted)) {
            if (!ok)
                break;
            SqliteStatement *remove = statement(StoreModel::deleteSql(record->m_kind));
            ok = remove != nullptr;
            if (ok) {
                remove->bind(1, record->m_rowId);
                ok = remove->run();
            }
            if (ok)
                notice.deleted[int(record->m_kind)].insert(record->m_rowId);
        }
        if (ok)
            ok = transaction.commit();
        if (!ok)
            qCWarning(lcStore) << "save failed, changes stay pending:" << m_db.lastError();
    }
    if (!ok) {
        for (const auto &record : std::as_const(written))
            record->m_rowId = 0; // rolled back
        return false;
    }

    for (const auto &record : std::as_const(m_inserted)) {
        record->m_changed = false;
        m_registered.insert(Key(int(record->m_kind), record->m_rowId), record);
    }
    for (const auto &record : std::as_const(m_updated))
        record->m_changed = false;
    for (const auto &record : std::as_const(m_deleted)) {
        m_registered.remove(Key(int(record->m_kind), record->m_rowId));
        record->m_changed = false;
    }
    m_inserted.clear();
    m_updated.clear();
    m_deleted.clear();
    StoreSaveNotifier::instance()->post(notice);
    return true;
}

bool StoreContext::mergeChanges(const StoreSaveNotice &notice)
{
    if (notice.source == this || notice.storePath != m_path)
        return false;
    bool touched = false;
    for (auto it = notice.updated.cbegin(); it != notice.updated.cend(); ++it) {
        for (const qint64 rowId : it.value()) {
            StoreRecordPtr record = m_registered.value(Key(it.key(), rowId));
            if (!record || record->m_changed || record->m_deleted)
                continue;
            reload(*record);
            touched = true;
        }
    }
    for (auto it = notice.deleted.cbegin(); it != notice.deleted.cend(); ++it) {
        for (const qint64 rowId : it.value()) {
            const Key key(it.key(), rowId);
            StoreRecordPtr record = m_registered.value(key);
            m_registered.remove(key);
            if (!record)
                continue;
            record->m_deleted = true;
            m_updated.remove(record.get());
            touched = true;
        }
    }
    return touched;
}

QList<StoreRecordPtr> StoreContext::registeredRecords(StoreEntityKind kind) const
{
    QList<StoreRecordPtr> out;
    for (auto it = m_registered.cbegin(); it != m_registered.cend(); ++it) {
        if (it.key().first != int(kind))
            continue;
        out.append(it.value());
    }
    std::sort(out.begin(), out.end(), [](const auto &a, const auto &b) { return a->rowId() < b->rowId(); });
    return out;
}
