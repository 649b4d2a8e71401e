#pragma once

#include "net/VORACommentReplyInfoDTO.h"

#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>

// One comment of a comic's thread, with its latest replies.
struct VORACommentDetailInfoDTO
{
    QString comment_id;            // "comment_id"
    QString commentFace;           // "face"
    QString commentContent_filter; // "content_filter"
    QString commentNickname;       // "nickname"; empty becomes "游客"
    QString commentSex;            // "sex"
    QDateTime commentCreate_time;  // "create_time", seconds since 1970 (UTC)
    qint64 commentTotal_reply = 0; // "total_reply"
    qint64 commentFloor = 0;       // "floor"
    qint64 commentGroup_user = 0;  // "group_user"
    qint64 commentLevel = 0;       // "level" -> "level" when "level" is an object
    QList<VORACommentReplyInfoDTO> commentReply; // "reply"

    bool operator==(const VORACommentDetailInfoDTO &) const = default;

    static VORACommentDetailInfoDTO fromJson(const QJsonObject &item);
};
