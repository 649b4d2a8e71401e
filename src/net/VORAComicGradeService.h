#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Rating: act "get" queries, "add" rates with comic_grade (1-5).
class VORAComicGradeService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString act;
    QString comic_id;
    QString comic_grade;

    // Answer
    std::optional<QJsonObject> data;
};
