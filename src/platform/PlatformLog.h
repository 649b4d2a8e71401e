#pragma once

#include <QLoggingCategory>

// Logging category of the platform layer ("quorin.platform").
Q_DECLARE_LOGGING_CATEGORY(lcPlatform)
