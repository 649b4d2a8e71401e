#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

// The parsed answer of a sign-in service. `returnData` gives "key" and "user" in the
// shape VORAAccountFiller takes.
struct VORASignInAnswer
{
    qint64 code = 0;                 // 1 = success
    QString message;                 // shown to the user on refusal
    QString key;                     // the session key ("" when missing, null or a number)
    std::optional<QJsonObject> user; // none unless the answer held an object
    bool isSuccess() const { return code == 1; }
    QJsonObject returnData() const;

    // Older interface (`VORAGetAuthenticateQ42UserService`, `VORAQQLoginService`):
    // top-level "code", "message", "key", "user".
    static VORASignInAnswer fromOlderAnswer(const QJsonObject &answer);
    // Newer interface (`VORAOpenLoginService`, `VORAHarrowLoginService`,
    // `VORACreateQuorinUserService`): "data"."stateCode", "data"."message", and
    // only when the code is 1, "data"."returnData"."key" / ."user".
    static VORASignInAnswer fromNewerAnswer(const QJsonObject &answer);
};
