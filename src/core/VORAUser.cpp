#include "core/VORAUser.h"

#include "platform/UserDefaults.h"

namespace {

const QString kNickName = QStringLiteral("nickName");
const QString kKey = QStringLiteral("key");
const QString kUserType = QStringLiteral("userType");
const QString kFaceImage = QStringLiteral("faceImage");
const QString kVipUser = QStringLiteral("vipUser");
const QString kUserId = QStringLiteral("userId");
const QString kLevel = QStringLiteral("level");
const QString kTicket = QStringLiteral("ticket");
const QString kUserName = QStringLiteral("userName");
const QString kSiteName = QStringLiteral("siteName");
const QString kUserCoin = QStringLiteral("userCoin");
const QString kUserViewJumpType = QStringLiteral("userViewJumpType");
const QString kUserViewJumpIsTopupType = QStringLiteral("userViewJumpIsTopupType");

void writeString(QCborMap &coder, const QString &key, const QString &value)
{
    // A string never set (null) stays out of the archive, like a nil object.
    if (!value.isNull())
        coder.insert(key, value);
}

void readString(const QCborMap &coder, const QString &key, QString &field)
{
    const QCborValue v = coder.value(key);
    if (v.isString())
        field = v.toString();
}

void readInteger(const QCborMap &coder, const QString &key, qint64 &field)
{
    const QCborValue v = coder.value(key);
    if (v.isInteger())
        field = v.toInteger();
}

void readRange(const QCborMap &coder, const QString &key, int low, int high, int &field)
{
    const QCborValue v = coder.value(key);
    if (v.isInteger() && v.toInteger() >= low && v.toInteger() <= high)
        field = int(v.toInteger());
}

} // namespace

void VORAUser::logonOut()
{
    UserDefaults &defaults = UserDefaults::standard();
    if (defaults.contains(QStringLiteral("QQLoginData")))
        defaults.remove(QStringLiteral("QQLoginData"));
    // Null strings: "no value", as for a user that never signed in.
    m_nickName = QString();
    m_key.set(std::nullopt);
    m_faceImage = QString();
    m_vipUser = QString();
    m_userName = QString();
    m_userType = 1;
}

QCborMap VORAUser::encodeWithCoder() const
{
    QCborMap coder;
    writeString(coder, kNickName, m_nickName);
    if (const std::optional<QString> key = m_key.get())
        coder.insert(kKey, *key);
    coder.insert(kUserType, m_userType);
    writeString(coder, kFaceImage, m_faceImage);
    writeString(coder, kVipUser, m_vipUser);
    writeString(coder, kUserId, m_userId);
    coder.insert(kLevel, m_level);
    coder.insert(kTicket, m_ticket);
    writeString(coder, kUserName, m_userName);
    writeString(coder, kSiteName, m_siteName);
    coder.insert(kUserCoin, m_userCoin);
    coder.insert(kUserViewJumpType, m_userViewJumpType);
    coder.insert(kUserViewJumpIsTopupType, m_userViewJumpIsTopupType);
    return coder;
}

VORAUser VORAUser::initWithCoder(const QCborMap &coder)
{
    VORAUser user;
    readString(coder, kNickName, user.m_nickName);
    const QCborValue key = coder.value(kKey);
    if (key.isString())
        user.m_key.set(key.toString());
    readRange(coder, kUserType, 1, 3, user.m_userType);
    readString(coder, kFaceImage, user.m_faceImage);
    readString(coder, kVipUser, user.m_vipUser);
    readString(coder, kUserId, user.m_userId);
    readInteger(coder, kLevel, user.m_level);
    readInteger(coder, kTicket, user.m_ticket);
    readString(coder, kUserName, user.m_userName);
    readString(coder, kSiteName, user.m_siteName);
    readInteger(coder, kUserCoin, user.m_userCoin);
    readRange(coder, kUserViewJumpType, 0, 1, user.m_userViewJumpType);
    readRange(coder, kUserViewJumpIsTopupType, 0, 2, user.m_userViewJumpIsTopupType);
    return user;
}
