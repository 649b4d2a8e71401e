#pragma once

#include <QLoggingCategory>

// Logging category of the application shell ("quorin.app").
Q_DECLARE_LOGGING_CATEGORY(lcApp)
