#include "platform/PlatformLog.h"

Q_LOGGING_CATEGORY(lcPlatform, "quorin.platform")
