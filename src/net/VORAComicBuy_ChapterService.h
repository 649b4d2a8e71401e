#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

// The older chapter purchase: "chapter" is the JSON array of chapter ids.
class VORAComicBuy_ChapterService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    int q42HttpMethod() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString comicId;
    QStringList chapterIdArray;

    // Answer
    qint64 code = 0;
    QString message;
    std::optional<QJsonObject> data;
};
