#pragma once

#include "net/VORAHttpBaseWebService.h"
#include "net/VORASignInAnswer.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// What every sign-in and registration service keeps of its answer: `code` (1 =
// success), `message`, `key` and `data` (the "user" object, none unless it was one).
class VORASignInService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    qint64 code = 0;
    QString message;
    QString key;
    std::optional<QJsonObject> data;

protected:
    void takeOlderAnswer(const QString &responseString);
    void takeNewerAnswer(const QString &responseString);

private:
    void take(const VORASignInAnswer &answer);
};
