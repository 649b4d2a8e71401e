#include "SiteRequestLog.h"

#include <QMutexLocker>

namespace {
QString normalised(QString path)
{
    while (path.startsWith(QLatin1Char('/')))
        path.remove(0, 1);
    return path;
}
}

void SiteRequestLog::record(const SiteHttpRequest &request)
{
    QuorinSiteRequestRecord r;
    r.method = request.method;
    r.path = request.path;
    r.query = request.query;
    r.headers = request.headers;
    r.body = request.body;
    r.valid = true;
    QMutexLocker lock(&m_mutex);
    m_last.insert(request.path, r);
    ++m_count[request.path];
}

QuorinSiteRequestRecord SiteRequestLog::last(const QString &path) const
{
    QMutexLocker lock(&m_mutex);
    return m_last.value(normalised(path));
}

int SiteRequestLog::count(const QString &path) const
{
    QMutexLocker lock(&m_mutex);
    return m_count.value(normalised(path));
}

QHash<QString, int> SiteRequestLog::counts() const
{
    QMutexLocker lock(&m_mutex);
    return m_count;
}
