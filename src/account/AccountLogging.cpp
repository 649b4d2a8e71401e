#include "AccountLogging.h"

Q_LOGGING_CATEGORY(lcAccount, "quorin.account")
