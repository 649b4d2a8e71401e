#include "net/NetLog.h"

Q_LOGGING_CATEGORY(lcNet, "quorin.net")
