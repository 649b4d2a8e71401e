#include "platform/NotificationCenter.h"
#include "platform/PlatformLog.h"

#include <QMutexLocker>

#include <algorithm>

NotificationCenter &NotificationCenter::defaultCenter()
{
    // Never destroyed: observers may still be removed by QObjects that die
    // during static destruction.
    static NotificationCenter *center = new NotificationCenter;
    return *center;
}

NotificationCenter::NotificationCenter() = default;

NotificationCenter::~NotificationCenter()
{
    QMutexLocker lock(&m_mutex);
    for (const QMetaObject::Connection &c : std::as_const(m_watched))
        QObject::disconnect(c);
    for (Entry &e : m_entries)
        e.alive->store(false);
}

void NotificationCenter::post(const QString &name, QObject *sender, const QVariantMap &userInfo)
{
    // Take a snapshot of the matching registrations, then call them without the
    // lock, so handlers may register, unregister or post.
    std::vector<Entry> targets;
    {
        QMutexLocker lock(&m_mutex);
        for (const Entry &e : m_entries) {
            if (e.name == name)
                targets.push_back(e);
        }
    }
    if (targets.empty())
        return;
    const Notification notification{name, sender, userInfo};
    for (const Entry &e : targets) {
        if (!e.alive->load())
            continue; // removed by an earlier handler of this delivery
        (*e.handler)(notification);
    }
}

void NotificationCenter::addObserver(QObject *observer, const QString &name, Handler handler)
{
    if (!observer || !handler) {
        qCWarning(lcPlatform) << "addObserver without observer or handler for" << name;
        return;
    }
    QMutexLocker lock(&m_mutex);
    Entry entry;
    entry.observer = observer;
    entry.name = name;
    entry.handler = std::make_shared<Handler>(std::move(handler));
    entry.alive = std::make_shared<std::atomic_bool>(true);
    m_entries.push_back(std::move(entry));
    if (!m_watched.contains(observer)) {
        // Direct connection: runs in the destroying thread, before the memory
        // of the observer is reused.
        m_watched.insert(observer, QObject::connect(observer, &QObject::destroyed, [this, observer] {
                             removeObserver(observer);
                         }));
    }
}

void NotificationCenter::removeObserver(QObject *observer)
{
    removeWhere(observer, nullptr);
}

void NotificationCenter::removeObserver(QObject *observer, const QString &name)
{
    removeWhere(observer, &name);
}

void NotificationCenter::removeWhere(QObject *observer, const QString *name)
{
    if (!observer)
        return;
    QMutexLocker lock(&m_mutex);
    const auto matches = [&](const Entry &e) {
        return e.observer == observer && (!name || e.name == *name);
    };
    for (Entry &e : m_entries) {
        if (matches(e))
            e.alive->store(false);
    }
    m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(), matches), m_entries.end());
    const bool stillObserving = std::any_of(m_entries.begin(), m_entries.end(),
                                            [&](const Entry &e) { return e.observer == observer; });
    if (!stillObserving) {
        auto it = m_watched.find(observer);
        if (it != m_watched.end()) {
            QObject::disconnect(it.value());
            m_watched.erase(it);
        }
    }
}

int NotificationCenter::observerCount() const
{
    QMutexLocker lock(&m_mutex);
    return int(m_entries.size());
}

int NotificationCenter::observerCount(const QString &name) const
{
    QMutexLocker lock(&m_mutex);
    return int(std::count_if(m_entries.begin(), m_entries.end(),
                             [&](const Entry &e) { return e.name == name; }));
}
