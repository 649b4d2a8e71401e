#include "StoreLogging.h"

Q_LOGGING_CATEGORY(lcStore, "quorin.store")
