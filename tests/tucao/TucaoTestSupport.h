#pragma once

// Shared pieces of the tucao suites: tucao lists to play, and a recorder of
// the requests the tucao code sends to the app shell (text-only panels) or to
// the reader ("PopUpTucaoEditView").

#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "net/VORATucao.h"
#include "net/VORATucaoDTO.h"
#include "platform/NotificationCenter.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

// n tucao with ids "1".."n" (so id k is the k-th fetched), written by author.
inline QList<VORATucao> makeTucaoList(int n, const QString &author = QStringLiteral("90001"))
{
    QList<VORATucao> list;
    for (int i = 1; i <= n; ++i) {
        VORATucao t;
        t.tucaoId = QString::number(i);
        t.content = QStringLiteral("吐槽 %1").arg(i);
        t.userId = author;
        t.x = 10 * i;
        t.y = 20 * i;
        t.width = 100;
        t.height = 40;
        list.append(t);
    }
    return list;
}

const QString addPath = QStringLiteral("ios/pad/add_tucao.php");
const QString editPath = QStringLiteral("ios/pad/edit_tucao.php");
const QString deletePath = QStringLiteral("ios/pad/delete_tucao.php");

inline VORATucaoDTO makeDto(qint64 x, qint64 y, qint64 w, qint64 h, const QString &content = {}, const QString &id = {})
{
    VORATucaoDTO dto;
    dto.x = x;
    dto.y = y;
    dto.width = w;
    dto.height = h;
    dto.content = content;
    dto.tucaoId = id;
    return dto;
}

inline QList<qint64> rectOf(const VORATucaoDTO &d)
{
    return {d.x, d.y, d.width, d.height};
}

inline QList<qint64> rectOf(const VORATucao &t)
{
    return {t.x, t.y, t.width, t.height};
}

// A signed-in user without asking the site (the key is made up).
inline void signInLocally(const QString &userId)
{
    VORAUser *user = VORAAppGlobalData::shareAppGlobalData()->user();
    user->setUserId(userId);
    user->setKey(QStringLiteral("test-key"));
}

inline void signOutLocally()
{
    VORAAppGlobalData::shareAppGlobalData()->user()->setKey(std::nullopt);
}

inline QStringList idsOf(const QList<VORATucao> &list)
{
    QStringList ids;
    for (const VORATucao &t : list)
        ids.append(t.tucaoId);
    return ids;
}

// Every notification of one name posted while it lives.
class NotificationRecorder : public QObject
{
public:
    explicit NotificationRecorder(const QString &name)
    {
        NotificationCenter::defaultCenter().addObserver(this, name,
                                                        [this](const Notification &n) { userInfos.append(n.userInfo); });
    }
    ~NotificationRecorder() override { NotificationCenter::defaultCenter().removeObserver(this); }
    // The "text" of every one (text-only panels).
    QStringList texts() const
    {
        QStringList list;
        for (const QVariantMap &m : userInfos)
            list.append(m.value(QStringLiteral("text")).toString());
        return list;
    }
    QList<QVariantMap> userInfos;
};

inline QString textPanelName()
{
    return QString::fromLatin1(VORANotificationNames::uiTextPanelRequest);
}
