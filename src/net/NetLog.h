#pragma once

#include <QLoggingCategory>
#include <QString>

class QUrl;

// Logging category of the web service layer ("quorin.net").
Q_DECLARE_LOGGING_CATEGORY(lcNet)

// A URL or query text fit for the log: the value of every "password" and
// "key" (the session key) parameter is replaced by "***".
QString netLogSafe(const QString &urlText);
QString netLogSafe(const QUrl &url);
