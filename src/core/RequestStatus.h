#pragma once

#include <QString>

// What a screen tells about its calls to the site: `busy` while one runs, and
// `message`, the text shown under it (a check that failed, the site's
// refusal, a transport failure, progress or a confirmation; "" for none).
//
// A screen keeps one as a member and forwards both as typed properties under
// one change signal, so QML never sees one changed without the other:
//     Q_PROPERTY(bool busy READ busy NOTIFY statusChanged)
//     Q_PROPERTY(QString message READ message NOTIFY statusChanged)
//     void setStatus(bool busy, const QString &message)
//     { if (m_status.set(busy, message)) emit statusChanged(); }
class RequestStatus
{
public:
    static const QString noNetworkText; // "网络断开，检查网络设置"

    bool busy() const { return m_busy; }
    const QString &message() const { return m_message; }

    // Takes both; true when either changed (the owner then emits its signal).
    bool set(bool busy, const QString &message);

    // The message for a call that failed on its way: `whenReachable` while the
    // site's host is reachable, else noNetworkText.
    static QString transportFailure(const QString &whenReachable);

private:
    bool m_busy = false;
    QString m_message;
};
