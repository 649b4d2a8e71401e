#pragma once

#include "StoreSaveNotice.h"

#include <QObject>

// The process-wide channel on which every store context announces its
// committed saves. Emitted on the saving thread; receivers in other threads
// connect with Qt::QueuedConnection.
class StoreSaveNotifier : public QObject
{
    Q_OBJECT
public:
    static StoreSaveNotifier *instance();

    void post(const StoreSaveNotice &notice) { emit contextDidSave(notice); }

signals:
    void contextDidSave(const StoreSaveNotice &notice);

private:
    StoreSaveNotifier();
};
