#include "SiteLog.h"

Q_LOGGING_CATEGORY(lcSite, "quorin.site")
