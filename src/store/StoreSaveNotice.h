#pragma once

#include "StoreEntityKind.h"

#include <QHash>
#include <QMetaType>
#include <QSet>
#include <QString>

// What one committed save changed: row identifiers per entity. Posted by the
// saving context and merged by other contexts of the same store file.
struct StoreSaveNotice {
    const void *source = nullptr; // the saving context, so it can skip its own notice
    QString storePath;
    QHash<int, QSet<qint64>> inserted; // key: int(StoreEntityKind)
    QHash<int, QSet<qint64>> updated;
    QHash<int, QSet<qint64>> deleted;

    bool isEmpty() const { return inserted.isEmpty() && updated.isEmpty() && deleted.isEmpty(); }
    bool touches(StoreEntityKind kind) const
    {
        return inserted.contains(int(kind)) || updated.contains(int(kind)) || deleted.contains(int(kind));
    }
};

Q_DECLARE_METATYPE(StoreSaveNotice)
