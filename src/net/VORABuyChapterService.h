#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

// Buys chapters with coins: "comicId" is the comic id as an integer, "chapter" the
// JSON array of chapter ids, UTF-8 percent-escaped.
class VORABuyChapterService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // The JSON text of chapterArray, as bought.
    QString chapter() const;

    // Request
    QString comicId;
    QStringList chapterArray;

    // Answer
    std::optional<QJsonObject> data;
};
