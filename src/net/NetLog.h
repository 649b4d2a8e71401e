#pragma once

#include <QLoggingCategory>

// Logging category of the web service layer ("quorin.net").
Q_DECLARE_LOGGING_CATEGORY(lcNet)
