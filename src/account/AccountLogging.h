#pragma once

#include <QLoggingCategory>

// Logging category of account handling ("quorin.account").
Q_DECLARE_LOGGING_CATEGORY(lcAccount)
