#include "download/DownloadLog.h"

Q_LOGGING_CATEGORY(lcDownload, "quorin.download")
