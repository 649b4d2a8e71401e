#pragma once

#include "QuorinSite.h"
#include "SiteHttpRequest.h"

#include <QHash>
#include <QMutex>

// The last request and the request count per path, readable from any thread.
class SiteRequestLog
{
public:
    void record(const SiteHttpRequest &request);
    QuorinSiteRequestRecord last(const QString &path) const;
    int count(const QString &path) const;
    QHash<QString, int> counts() const; // per path

private:
    mutable QMutex m_mutex;
    QHash<QString, QuorinSiteRequestRecord> m_last;
    QHash<QString, int> m_count;
};
