#pragma once

#include <QLoggingCategory>

// Logging category of the tucao overlay and editor ("quorin.tucao").
Q_DECLARE_LOGGING_CATEGORY(lcTucao)
