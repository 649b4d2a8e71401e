#pragma once

#include "net/VORAHttpBaseWebService.h"
#include "net/VORACommentInfoDTO.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// One page of a comic's comments; "page" is sent as given.
class VORAComicCommentListService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    std::optional<VORACommentInfoDTO> commentInfo() const;

    // Request
    QString thread_id;
    QString object_id;
    QString page;

    // Answer
    std::optional<QJsonObject> data;
};
