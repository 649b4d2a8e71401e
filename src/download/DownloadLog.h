#pragma once

#include <QLoggingCategory>

// Logging category of offline downloads ("quorin.download").
Q_DECLARE_LOGGING_CATEGORY(lcDownload)
