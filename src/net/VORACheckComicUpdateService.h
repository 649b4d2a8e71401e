#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

// Which bookshelf comics have new chapters. "post_data" is "<comic id>|<update
// time in seconds>||" for every comic, in list order (empty for an empty shelf).
class VORACheckComicUpdateService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    int q42HttpMethod() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    QString postData() const;

    // Request
    QStringList comicIdArray;
    QList<QDateTime> updateTimeArray;

    // Answer
    std::optional<QJsonObject> data;
};
