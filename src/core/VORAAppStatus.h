#pragma once

#include "core/VORARequestIdentity.h"

#include <QCborMap>
#include <QDateTime>
#include <QString>

// The persisted application status ("AppStatus.txt", key "AppStatus").
//
// Archive keys are the field names, except fromAppStore which is archived as
// "fromAppStroe" (files written by earlier versions use that key). autoUpdate
// is not archived and is 0 after loading.
class VORAAppStatus
{
public:
    qint64 appOpenCount() const { return m_appOpenCount; }
    void setAppOpenCount(qint64 v) { m_appOpenCount = v; }
    qint64 appHelpFirstPageCount() const { return m_appHelpFirstPageCount; }
    void setAppHelpFirstPageCount(qint64 v) { m_appHelpFirstPageCount = v; }
    qint64 appHelpBookshelfCount() const { return m_appHelpBookshelfCount; }
    void setAppHelpBookshelfCount(qint64 v) { m_appHelpBookshelfCount = v; }
    QDateTime bookshelfUpdateTime() const { return m_bookshelfUpdateTime; }
    void setBookshelfUpdateTime(const QDateTime &v) { m_bookshelfUpdateTime = v; }
    QString deviceId() const { return m_deviceId.get(); }
    void setDeviceId(const QString &v) { m_deviceId.set(v); }
    // From now on every change of the device id is reported to identity.
    void reportDeviceIdTo(VORARequestIdentity *identity) { m_deviceId.reportTo(identity); }
    QString backgroundString() const { return m_backgroundString; }
    void setBackgroundString(const QString &v) { m_backgroundString = v; }
    qint64 fromAppStore() const { return m_fromAppStore; }
    void setFromAppStore(qint64 v) { m_fromAppStore = v; }
    qint64 autoUpdate() const { return m_autoUpdate; }
    void setAutoUpdate(qint64 v) { m_autoUpdate = v; }

    QCborMap encodeWithCoder() const;
    // Entries of the wrong type are ignored (the field keeps its initial value).
    static VORAAppStatus initWithCoder(const QCborMap &coder);

private:
    qint64 m_appOpenCount = 0;
    qint64 m_appHelpFirstPageCount = 0;
    qint64 m_appHelpBookshelfCount = 0;
    QDateTime m_bookshelfUpdateTime;
    VORAIdentityField<QString, &VORARequestIdentity::setDeviceId> m_deviceId;
    QString m_backgroundString;
    qint64 m_fromAppStore = 0;
    qint64 m_autoUpdate = 0;
};
