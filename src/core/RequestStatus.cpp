#include "core/RequestStatus.h"

#include "core/VORAUtility.h"

const QString RequestStatus::noNetworkText = QStringLiteral("网络断开，检查网络设置");

bool RequestStatus::set(bool busy, const QString &message)
{
    if (busy == m_busy && message == m_message)
        return false;
    m_busy = busy;
    m_message = message;
    return true;
}

QString RequestStatus::transportFailure(const QString &whenReachable)
{
    return VORAUtility::isExistenceNetwork() ? whenReachable : noNetworkText;
}
