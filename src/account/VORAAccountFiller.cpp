#include "VORAAccountFiller.h"

#include "AccountLogging.h"

#include "core/VORAUtility.h"
#include "platform/UserDefaults.h"

namespace {

QString text(const QJsonObject &object, const char *key)
{
    return VORAUtility::jsonString(object.value(QLatin1String(key)));
}

qint64 integer(const QJsonObject &object, const char *key)
{
    return VORAUtility::jsonInteger(object.value(QLatin1String(key)));
}

qint64 levelOf(const QJsonObject &user, const QString &vipUser, VORAAccountFiller::LevelRule rule)
{
    if (rule == VORAAccountFiller::LevelRule::VipLevelForVip && vipUser != QLatin1String("0"))
        return integer(user, "vip_level");
    return integer(user, "level");
}

} // namespace

void VORAAccountFiller::fillUserWithReturnData(VORAUser &user, const QJsonObject &returnData, int userType,
                                               LevelRule levelRule)
{
    const QJsonObject u = VORAUtility::jsonObject(returnData.value(QStringLiteral("user")));
    user.setSiteName(text(u, "site"));
    user.setKey(text(returnData, "key"));
    user.setUserType(userType);
    user.setNickName(text(u, "nickname"));
    user.setFaceImage(text(u, "face"));
    user.setUserName(text(u, "username"));
    user.setVipUser(text(u, "group_user"));
    user.setUserCoin(integer(u, "coin"));
    user.setLevel(levelOf(u, user.vipUser(), levelRule));
    user.setTicket(integer(u, "ticket"));
    user.setUserId(text(u, "user_id"));
}

void VORAAccountFiller::fillUserWithPassportReturnData(VORAUser &user, const QJsonObject &returnData)
{
    fillUserWithReturnData(user, returnData, 3, LevelRule::VipLevelForVip);
}

bool VORAAccountFiller::applyAutoLoginAnswer(VORAUser &user, const QJsonObject &answer,
                                             const QVariantMap &qqLoginData)
{
    const QJsonObject data = VORAUtility::jsonObject(answer.value(QStringLiteral("data")));
    const qint64 stateCode = integer(data, "stateCode");
    if (stateCode != 1) {
        qCInfo(lcAccount) << "automatic sign-in refused with state" << stateCode << "- signing out";
        user.setKey(std::nullopt);
        user.setNickName(QString());
        user.setFaceImage(QString());
        user.setUserId(QString());
        user.setUserType(1);
        return false;
    }
    const QJsonObject returnData = VORAUtility::jsonObject(data.value(QStringLiteral("returnData")));
    const QJsonObject u = VORAUtility::jsonObject(returnData.value(QStringLiteral("user")));
    user.setSiteName(text(u, "site"));
    if (user.siteName() == QLatin1String("qq")) {
        const QVariant qqName = qqLoginData.value(QStringLiteral("QQLoginnickName"));
        user.setNickName(qqName.typeId() == QMetaType::QString ? qqName.toString() : QString());
    } else {
        user.setNickName(text(u, "nickname"));
    }
    user.setKey(text(returnData, "key"));
    user.setUserId(text(u, "user_id"));
    user.setUserName(text(u, "username"));
    user.setVipUser(text(u, "group_user"));
    user.setFaceImage(text(u, "face"));
    user.setLevel(levelOf(u, user.vipUser(), LevelRule::VipLevelForVip));
    user.setTicket(integer(u, "ticket"));
    return true;
}

bool VORAAccountFiller::applyAutoLoginAnswer(VORAUser &user, const QJsonObject &answer)
{
    return applyAutoLoginAnswer(user, answer,
                                UserDefaults::standard().dictionaryForKey(QStringLiteral("QQLoginData")));
}
