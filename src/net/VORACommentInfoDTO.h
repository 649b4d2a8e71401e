#pragma once

#include "net/VORACommentDetailInfoDTO.h"

#include <QJsonObject>
#include <QList>
#include <QString>

// One page of a comic's comment thread ("ios/pad/comment_list.php").
struct VORACommentInfoDTO
{
    QString commentThread_id;     // "thread_id"
    QString commentObject_id;     // "object_id"
    qint64 commentTotal = 0;      // "total_comment"
    qint64 commentTotal_page = 0; // "pages" -> "total_page"
    QList<VORACommentDetailInfoDTO> commentData; // "data"

    bool operator==(const VORACommentInfoDTO &) const = default;

    static VORACommentInfoDTO parseData(const QJsonObject &data);
};
