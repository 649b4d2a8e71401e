#pragma once

#include "StoreEntityKind.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QVariant>

#include <memory>

class StoreContext;

// A live record of one store context. Setting a field marks the record as
// changed and hands it to its context, which writes it at the next save. A
// record is used on the thread of its context only.
class StoreRecord : public std::enable_shared_from_this<StoreRecord>
{
public:
    virtual ~StoreRecord() = default;
    StoreRecord(const StoreRecord &) = delete;
    StoreRecord &operator=(const StoreRecord &) = delete;

    StoreEntityKind entityKind() const { return m_kind; }
    // 0 until the record has been saved.
    qint64 rowId() const { return m_rowId; }
    bool hasChanges() const { return m_changed; }
    bool isDeleted() const { return m_deleted; }

    // Generic access by attribute index (StoreModel order).
    QVariant value(int attribute) const { return m_values.value(attribute); }
    void setValue(int attribute, const QVariant &value);

protected:
    explicit StoreRecord(StoreEntityKind kind);

    QString text(int attribute) const { return m_values.value(attribute).toString(); }
    qint64 integer(int attribute) const { return m_values.value(attribute).toLongLong(); }
    bool boolean(int attribute) const { return m_values.value(attribute).toBool(); }
    QDateTime date(int attribute) const { return m_values.value(attribute).toDateTime(); }

private:
    friend class StoreContext;

    StoreEntityKind m_kind;
    qint64 m_rowId = 0;
    QList<QVariant> m_values;
    bool m_changed = false;
    bool m_deleted = false;
    std::weak_ptr<StoreContext> m_context;
};

using StoreRecordPtr = std::shared_ptr<StoreRecord>;
