#include "tucao/TucaoLog.h"

Q_LOGGING_CATEGORY(lcTucao, "quorin.tucao")
