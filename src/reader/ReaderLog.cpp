#include "reader/ReaderLog.h"

Q_LOGGING_CATEGORY(lcReader, "quorin.reader")
