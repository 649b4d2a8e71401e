#pragma once

#include "net/VORAHttpBaseWebService.h"
#include "net/VORACommentReplyInfoDTO.h"

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

// Replies to a comment. page_num is kept but not sent.
class VORAComicRepleListService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // "data"."returnData"."replyList", none when the answer is missing or refused
    // ("stateCode" below 0).
    std::optional<QList<VORACommentReplyInfoDTO>> replyList() const;

    // Request
    QString thread_id;
    QString comment_id;
    qint64 page = 1;
    qint64 page_num = 30;

    // Answer
    std::optional<QJsonObject> data;
};
