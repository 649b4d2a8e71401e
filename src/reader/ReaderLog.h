#pragma once

#include <QLoggingCategory>

// Logging category of the reader ("quorin.reader").
Q_DECLARE_LOGGING_CATEGORY(lcReader)
