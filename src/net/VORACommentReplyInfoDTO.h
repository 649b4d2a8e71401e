#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>

// One reply to a comment.
struct VORACommentReplyInfoDTO
{
    QString replyComment_id;   // "comment_id"
    QString replyFace;         // "face"
    QString replyContent;      // "content_filter"
    QString replyNickname;     // "nickname"; empty becomes "游客"
    QString replySex;          // "sex"
    QDateTime replyCreate_time; // "create_time", seconds since 1970 (UTC)
    qint64 replyFloor = 0;      // "floor"
    qint64 replyGroup_user = 0; // "group_user"
    qint64 replyLevel = 0;      // "level" -> "level" when "level" is an object

    bool operator==(const VORACommentReplyInfoDTO &) const = default;

    static VORACommentReplyInfoDTO fromJson(const QJsonObject &item);
};
