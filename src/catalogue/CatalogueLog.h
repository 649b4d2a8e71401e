#pragma once

#include <QLoggingCategory>

// Logging category of the catalogue screens ("quorin.catalogue").
Q_DECLARE_LOGGING_CATEGORY(lcCatalogue)
