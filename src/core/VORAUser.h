#pragma once

#include "core/VORARequestIdentity.h"

#include <QCborMap>
#include <QString>

#include <optional>

// The signed-in user ("User.txt", key "User").
//
// The session key distinguishes "absent" (std::nullopt: signed out) from an
// empty key; isLogin() is true exactly when a key is present, even an empty one.
class VORAUser
{
public:
    QString nickName() const { return m_nickName; }
    void setNickName(const QString &v) { m_nickName = v; }
    std::optional<QString> key() const { return m_key.get(); }
    void setKey(const std::optional<QString> &v) { m_key.set(v); }
    int userType() const { return m_userType; }
    void setUserType(int v) { m_userType = v; }
    QString faceImage() const { return m_faceImage; }
    void setFaceImage(const QString &v) { m_faceImage = v; }
    QString vipUser() const { return m_vipUser; }
    void setVipUser(const QString &v) { m_vipUser = v; }
    QString userId() const { return m_userId; }
    void setUserId(const QString &v) { m_userId = v; }
    qint64 level() const { return m_level; }
    void setLevel(qint64 v) { m_level = v; }
    qint64 ticket() const { return m_ticket; }
    void setTicket(qint64 v) { m_ticket = v; }
    QString userName() const { return m_userName; }
    void setUserName(const QString &v) { m_userName = v; }
    QString siteName() const { return m_siteName; }
    void setSiteName(const QString &v) { m_siteName = v; }
    qint64 userCoin() const { return m_userCoin; }
    void setUserCoin(qint64 v) { m_userCoin = v; }
    int userViewJumpType() const { return m_userViewJumpType; }
    void setUserViewJumpType(int v) { m_userViewJumpType = v; }
    int userViewJumpIsTopupType() const { return m_userViewJumpIsTopupType; }
    void setUserViewJumpIsTopupType(int v) { m_userViewJumpIsTopupType = v; }

    bool isLogin() const { return m_key.get().has_value(); }

    // From now on every change of the key is reported to identity (the user the
    // app holds does this; copies never report).
    void reportKeyTo(VORARequestIdentity *identity) { m_key.reportTo(identity); }

    // Signs out: removes "QQLoginData" from the user defaults, clears nickName,
    // key, faceImage, vipUser and userName and sets userType 1. userId, level,
    // ticket, userCoin and siteName stay. The caller saves and announces.
    void logonOut();

    QCborMap encodeWithCoder() const;
    // Defensive: userType only 1..3, userViewJumpType only 0..1,
    // userViewJumpIsTopupType only 0..2; wrong types are ignored.
    static VORAUser initWithCoder(const QCborMap &coder);

private:
    QString m_nickName;
    VORAIdentityField<std::optional<QString>, &VORARequestIdentity::setKey> m_key;
    int m_userType = 1;
    QString m_faceImage;
    QString m_vipUser;
    QString m_userId;
    qint64 m_level = 0;
    qint64 m_ticket = 0;
    QString m_userName;
    QString m_siteName;
    qint64 m_userCoin = 0;
    int m_userViewJumpType = 0;
    int m_userViewJumpIsTopupType = 0;
};
