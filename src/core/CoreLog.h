#pragma once

#include <QLoggingCategory>

// Logging category of the application core ("quorin.core").
Q_DECLARE_LOGGING_CATEGORY(lcCore)
