#include "QuorinSiteFaults.h"

#include <QMutexLocker>

namespace {
const QString kAnyPath = QStringLiteral("*");

QString normalised(QString path)
{
    while (path.startsWith(QLatin1Char('/')))
        path.remove(0, 1);
    return path;
}
}

void QuorinSiteFaults::setLatencyMs(int ms)
{
    QMutexLocker lock(&m_mutex);
    m_latencyMs = qMax(0, ms);
}

void QuorinSiteFaults::setStall(const QString &path, bool on)
{
    QMutexLocker lock(&m_mutex);
    if (on)
        m_stall.insert(normalised(path));
    else
        m_stall.remove(normalised(path));
}

void QuorinSiteFaults::setErrorStatus(const QString &path, int status, const QByteArray &body)
{
    QMutexLocker lock(&m_mutex);
    if (status <= 0)
        m_errors.remove(normalised(path));
    else
        m_errors.insert(normalised(path), ErrorStatus{status, body});
}

void QuorinSiteFaults::setMalformed(const QString &path, const QByteArray &body)
{
    QMutexLocker lock(&m_mutex);
    m_malformed.insert(normalised(path), body);
}

void QuorinSiteFaults::setDropMidBody(const QString &path, bool on)
{
    QMutexLocker lock(&m_mutex);
    if (on)
        m_drop.insert(normalised(path));
    else
        m_drop.remove(normalised(path));
}

void QuorinSiteFaults::setGzip(bool on)
{
    QMutexLocker lock(&m_mutex);
    m_gzip = on;
}

void QuorinSiteFaults::clear()
{
    QMutexLocker lock(&m_mutex);
    m_latencyMs = 0;
    m_gzip = false;
    m_stall.clear();
    m_drop.clear();
    m_errors.clear();
    m_malformed.clear();
}

int QuorinSiteFaults::latencyMs() const
{
    QMutexLocker lock(&m_mutex);
    return m_latencyMs;
}

bool QuorinSiteFaults::gzip() const
{
    QMutexLocker lock(&m_mutex);
    return m_gzip;
}

bool QuorinSiteFaults::stalls(const QString &path) const
{
    QMutexLocker lock(&m_mutex);
    return m_stall.contains(path) || m_stall.contains(kAnyPath);
}

bool QuorinSiteFaults::dropsMidBody(const QString &path) const
{
    QMutexLocker lock(&m_mutex);
    return m_drop.contains(path) || m_drop.contains(kAnyPath);
}

bool QuorinSiteFaults::errorStatus(const QString &path, ErrorStatus *out) const
{
    QMutexLocker lock(&m_mutex);
    auto it = m_errors.constFind(path);
    if (it == m_errors.constEnd())
        it = m_errors.constFind(kAnyPath);
    if (it == m_errors.constEnd())
        return false;
    if (out)
        *out = *it;
    return true;
}

bool QuorinSiteFaults::malformed(const QString &path, QByteArray *out) const
{
    QMutexLocker lock(&m_mutex);
    auto it = m_malformed.constFind(path);
    if (it == m_malformed.constEnd())
        it = m_malformed.constFind(kAnyPath);
    if (it == m_malformed.constEnd())
        return false;
    if (out)
        *out = *it;
    return true;
}
