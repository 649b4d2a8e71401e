#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

// Reports the pages read. "image_ids" is the Base64 of the JSON text
// {"count": "<records>", "c<comic id>": {"i<page id>": "<page index>_<chapter id>", ...}}
// built from valueList[i] -> keyList[i] over the length of keyList.
class VORAUploadReadLogSerVice : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // The JSON text that "image_ids" carries.
    QString readLogText() const;

    // Request
    QString comicId;
    QStringList keyList;   // "<page index>_<chapter id>"
    QStringList valueList; // "i<page id>"

    // Answer
    std::optional<QJsonObject> json;
    qint64 code = 0;
};
