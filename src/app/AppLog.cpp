#include "AppLog.h"

Q_LOGGING_CATEGORY(lcApp, "quorin.app")
