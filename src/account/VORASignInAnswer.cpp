#include "VORASignInAnswer.h"

#include "core/VORAUtility.h"

QJsonObject VORASignInAnswer::returnData() const
{
    QJsonObject data;
    data.insert(QStringLiteral("key"), key);
    data.insert(QStringLiteral("user"), user);
    return data;
}

VORASignInAnswer VORASignInAnswer::fromOlderAnswer(const QJsonObject &answer)
{
    VORASignInAnswer result;
    result.code = VORAUtility::jsonInteger(answer.value(QStringLiteral("code")));
    result.message = VORAUtility::jsonString(answer.value(QStringLiteral("message")));
    result.key = VORAUtility::jsonString(answer.value(QStringLiteral("key")));
    result.user = VORAUtility::jsonObject(answer.value(QStringLiteral("user")));
    return result;
}

VORASignInAnswer VORASignInAnswer::fromNewerAnswer(const QJsonObject &answer)
{
    VORASignInAnswer result;
    const QJsonObject data = VORAUtility::jsonObject(answer.value(QStringLiteral("data")));
    result.code = VORAUtility::jsonInteger(data.value(QStringLiteral("stateCode")));
    result.message = VORAUtility::jsonString(data.value(QStringLiteral("message")));
    if (result.code == 1) {
        const QJsonObject returnData = VORAUtility::jsonObject(data.value(QStringLiteral("returnData")));
        result.key = VORAUtility::jsonString(returnData.value(QStringLiteral("key")));
        result.user = VORAUtility::jsonObject(returnData.value(QStringLiteral("user")));
    }
    return result;
}
