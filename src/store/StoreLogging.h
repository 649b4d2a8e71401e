#pragma once

#include <QLoggingCategory>

// Logging category of the local store ("quorin.store").
Q_DECLARE_LOGGING_CATEGORY(lcStore)
