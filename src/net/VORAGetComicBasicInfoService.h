#pragma once

#include "net/VORAHttpBaseWebService.h"
#include "net/VORAComicInfoDTO.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// A comic's description and chapter list; the answer object is kept as data.
class VORAGetComicBasicInfoService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // The comic record of the answer, none when there was no answer object.
    std::optional<VORAComicInfoDTO> comicInfo() const;

    // Request
    QString comicId;

    // Answer
    std::optional<QJsonObject> data;
};
