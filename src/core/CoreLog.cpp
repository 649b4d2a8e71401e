#include "core/CoreLog.h"

Q_LOGGING_CATEGORY(lcCore, "quorin.core")
