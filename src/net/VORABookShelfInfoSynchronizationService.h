#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Bookshelf synchronisation with the site account: "data" is the Base64 of the
// UTF-8 of comicIdsDate ("<comic id>|add|<seconds>||" or "<comic id>|delete|<seconds>||" records).
class VORABookShelfInfoSynchronizationService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    int q42HttpMethod() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString comicIdsDate;

    // Answer
    std::optional<QJsonObject> data;
};
