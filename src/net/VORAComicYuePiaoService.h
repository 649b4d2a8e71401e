#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Monthly tickets: act "get" queries, "cast" gives ticket_num tickets.
class VORAComicYuePiaoService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    int q42HttpMethod() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString act;
    QString comic_id;
    QString ticket_content;
    QString ticket_num;

    // Answer
    std::optional<QJsonObject> data;
};
