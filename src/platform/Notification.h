#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

// One named notification as delivered by NotificationCenter.
struct Notification
{
    QString name;
    QObject *sender = nullptr;
    QVariantMap userInfo;
};
