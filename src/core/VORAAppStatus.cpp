#include "core/VORAAppStatus.h"

namespace {

const QString kAppOpenCount = QStringLiteral("appOpenCount");
const QString kAppHelpFirstPageCount = QStringLiteral("appHelpFirstPageCount");
const QString kAppHelpBookshelfCount = QStringLiteral("appHelpBookshelfCount");
const QString kBookshelfUpdateTime = QStringLiteral("bookshelfUpdateTime");
const QString kDeviceId = QStringLiteral("deviceId");
const QString kBackgroundString = QStringLiteral("backgroundString");
const QString kFromAppStroe = QStringLiteral("fromAppStroe");

void readInteger(const QCborMap &coder, const QString &key, qint64 &field)
{
    const QCborValue v = coder.value(key);
    if (v.isInteger())
        field = v.toInteger();
}

void readString(const QCborMap &coder, const QString &key, QString &field)
{
    const QCborValue v = coder.value(key);
    if (v.isString())
        field = v.toString();
}

} // namespace

QCborMap VORAAppStatus::encodeWithCoder() const
{
    QCborMap coder;
    coder.insert(kAppOpenCount, m_appOpenCount);
    coder.insert(kAppHelpFirstPageCount, m_appHelpFirstPageCount);
    coder.insert(kAppHelpBookshelfCount, m_appHelpBookshelfCount);
    if (m_bookshelfUpdateTime.isValid())
        coder.insert(kBookshelfUpdateTime, QCborValue(m_bookshelfUpdateTime.toUTC()));
    if (!m_deviceId.get().isNull())
        coder.insert(kDeviceId, m_deviceId.get());
    if (!m_backgroundString.isNull())
        coder.insert(kBackgroundString, m_backgroundString);
    coder.insert(kFromAppStroe, m_fromAppStore);
    return coder;
}

VORAAppStatus VORAAppStatus::initWithCoder(const QCborMap &coder)
{
    VORAAppStatus status;
    readInteger(coder, kAppOpenCount, status.m_appOpenCount);
    readInteger(coder, kAppHelpFirstPageCount, status.m_appHelpFirstPageCount);
    readInteger(coder, kAppHelpBookshelfCount, status.m_appHelpBookshelfCount);
    const QCborValue time = coder.value(kBookshelfUpdateTime);
    if (time.isDateTime())
        status.m_bookshelfUpdateTime = time.toDateTime();
    QString deviceId;
    readString(coder, kDeviceId, deviceId);
    status.m_deviceId.set(deviceId);
    readString(coder, kBackgroundString, status.m_backgroundString);
    readInteger(coder, kFromAppStroe, status.m_fromAppStore);
    status.m_autoUpdate = 0; // set anew by the version check on every launch
    return status;
}
