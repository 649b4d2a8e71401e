#include "net/VORASignInService.h"

void VORASignInService::takeOlderAnswer(const QString &responseString)
{
    take(VORASignInAnswer::fromOlderAnswer(jsonObjectFromString(responseString).value_or(QJsonObject())));
}

void VORASignInService::takeNewerAnswer(const QString &responseString)
{
    take(VORASignInAnswer::fromNewerAnswer(jsonObjectFromString(responseString).value_or(QJsonObject())));
}

void VORASignInService::take(const VORASignInAnswer &answer)
{
    code = answer.code;
    message = answer.message;
    key = answer.key;
    data = answer.user;
}
