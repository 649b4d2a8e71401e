#include "core/VORARequestIdentity.h"

#include <QMutexLocker>

VORARequestIdentity::Snapshot VORARequestIdentity::snapshot() const
{
    QMutexLocker lock(&m_mutex);
    return m_snapshot;
}

void VORARequestIdentity::setKey(const std::optional<QString> &key)
{
    QMutexLocker lock(&m_mutex);
    m_snapshot.key = key;
}

void VORARequestIdentity::setDeviceId(const QString &deviceId)
{
    QMutexLocker lock(&m_mutex);
    m_snapshot.deviceId = deviceId;
}
