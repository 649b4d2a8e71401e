#pragma once

#include <QMutex>
#include <QString>

#include <optional>

// The session key and device id that every request carries, readable from any
// thread. The user and the status held by VORAAppGlobalData report each change
// of these two fields here (see VORAIdentityField), so a page loader or the
// shelf check builds its URL from a consistent copy while the main thread signs
// in or out.
class VORARequestIdentity
{
public:
    struct Snapshot
    {
        std::optional<QString> key; // absent: signed out
        QString deviceId;
    };

    Snapshot snapshot() const;
    void setKey(const std::optional<QString> &key);
    void setDeviceId(const QString &deviceId);

private:
    mutable QMutex m_mutex;
    Snapshot m_snapshot;
};

// A field of a record that, once told where, reports every new value to a
// VORARequestIdentity. A copy of the record is a plain value: it reports nowhere,
// and assigning to a reporting record reports the assigned value.
template<typename T, void (VORARequestIdentity::*Report)(const T &)>
class VORAIdentityField
{
public:
    VORAIdentityField() = default;
    VORAIdentityField(const VORAIdentityField &other)
        : m_value(other.m_value)
    {
    }
    VORAIdentityField &operator=(const VORAIdentityField &other)
    {
        set(other.m_value);
        return *this;
    }

    const T &get() const { return m_value; }
    void set(const T &value)
    {
        m_value = value;
        if (m_identity)
            (m_identity->*Report)(m_value);
    }
    void reportTo(VORARequestIdentity *identity)
    {
        m_identity = identity;
        if (m_identity)
            (m_identity->*Report)(m_value);
    }

private:
    T m_value{};
    VORARequestIdentity *m_identity = nullptr;
};
