#include "StoreSaveNotifier.h"

StoreSaveNotifier::StoreSaveNotifier()
{
    qRegisterMetaType<StoreSaveNotice>("StoreSaveNotice");
}

StoreSaveNotifier *StoreSaveNotifier::instance()
{
    // Never destroyed: saves may still be posted from worker threads at exit.
    static StoreSaveNotifier *notifier = new StoreSaveNotifier;
    return notifier;
}
