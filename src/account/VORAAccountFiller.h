#pragma once

#include "core/VORAUser.h"

#include <QJsonObject>
#include <QVariantMap>

// The rules by which sign-in answers fill the user record. Pure functions on
// a VORAUser: the caller saves the user (VORAAppGlobalData::saveUser) and
// posts "UserViewPostInfo".
class VORAAccountFiller
{
public:
    VORAAccountFiller() = delete;

    enum class LevelRule {
        Level,          // `level` from "level" (site account, partner, registration)
        VipLevelForVip, // from "vip_level" when `vipUser` is not "0" (partner passport)
    };

    // Fills every field from a sign-in payload {"key", "user"}: siteName,
    // key, userType, nickName, faceImage, userName, vipUser, userCoin, level,
    // ticket, userId. Texts that are missing, null or numbers become "".
    static void fillUserWithReturnData(VORAUser &user, const QJsonObject &returnData, int userType,
                                       LevelRule levelRule = LevelRule::Level);

    // The partner-passport sign-in: userType 3, level by LevelRule::VipLevelForVip.
    static void fillUserWithPassportReturnData(VORAUser &user, const QJsonObject &returnData);

    // The silent re-sign-in answer (the parsed data of `VORAAutoLoginService`:
    // the whole answer object). "data"."stateCode" 1 fills the user from
    // "data"."returnData" and returns true; any other code signs the user out
    // (key, nickName, faceImage, userId cleared, userType 1) and returns false.
    // `qqLoginData` is the user-defaults dictionary "QQLoginData": its
    // "QQLoginnickName" replaces the nickname of "qq" users.
    static bool applyAutoLoginAnswer(VORAUser &user, const QJsonObject &answer, const QVariantMap &qqLoginData);
    // The same with "QQLoginData" read from the user-defaults store.
    static bool applyAutoLoginAnswer(VORAUser &user, const QJsonObject &answer);
};
