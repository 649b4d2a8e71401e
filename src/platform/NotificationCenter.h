#pragma once

#include "platform/Notification.h"

#include <QHash>
#include <QMetaObject>
#include <QMutex>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <vector>

// Named notifications with a dictionary, delivered synchronously on the posting
// thread to every observer registered for that name, in registration order.
//
// Registration is thread-safe. Handlers run without any lock held, so a handler
// may add or remove observers or post other notifications. An observer added
// while a notification is being delivered does not receive that notification;
// one removed during delivery receives nothing more. Observers are dropped when
// their QObject is destroyed.
class NotificationCenter
{
public:
    using Handler = std::function<void(const Notification &)>;

    static NotificationCenter &defaultCenter();

    NotificationCenter();
    ~NotificationCenter();
    NotificationCenter(const NotificationCenter &) = delete;
    NotificationCenter &operator=(const NotificationCenter &) = delete;

    void post(const QString &name, QObject *sender = nullptr, const QVariantMap &userInfo = {});
    // A null observer or an empty handler is refused (logged).
    void addObserver(QObject *observer, const QString &name, Handler handler);
    void removeObserver(QObject *observer);
    void removeObserver(QObject *observer, const QString &name);

    // Number of registrations (for diagnostics and tests).
    int observerCount() const;
    int observerCount(const QString &name) const;

private:
    struct Entry
    {
        QObject *observer = nullptr;
        QString name;
        std::shared_ptr<Handler> handler;
        std::shared_ptr<std::atomic_bool> alive;
    };

    void removeWhere(QObject *observer, const QString *name);

    mutable QMutex m_mutex;
    std::vector<Entry> m_entries;
    QHash<QObject *, QMetaObject::Connection> m_watched;
};
