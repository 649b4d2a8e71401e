#include "net/VORASignInAnswer.h"

#include "core/VORAUtility.h"

namespace {

std::optional<QJsonObject> objectOrNone(const QJsonValue &value)
{
    return value.isObject() ? std::optional<QJsonObject>(value.toObject()) : std::nullopt;
}

} // namespace

QJsonObject VORASignInAnswer::returnData() const
{
    QJsonObject data;
    data.insert(QStringLiteral("key"), key);
    data.insert(QStringLiteral("user"), user.value_or(QJsonObject()));
    return data;
}

VORASignInAnswer VORASignInAnswer::fromOlderAnswer(const QJsonObject &answer)
{
    VORASignInAnswer result;
    result.code = VORAUtility::jsonInteger(answer.value(QStringLiteral("code")));
    result.message = VORAUtility::jsonString(answer.value(QStringLiteral("message")));
    result.key = VORAUtility::jsonString(answer.value(QStringLiteral("key")));
    result.user = objectOrNone(answer.value(QStringLiteral("user")));
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
        result.user = objectOrNone(returnData.value(QStringLiteral("user")));
    }
    return result;
}
