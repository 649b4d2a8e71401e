#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// Replies to a comment; the thread comes from tread_id (sic).
class VORAAddComicCommentReplySerVice : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    int q42HttpMethod() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString comment_id;
    QString tread_id;
    QString content;

    // Answer
    std::optional<QJsonObject> data;
};
