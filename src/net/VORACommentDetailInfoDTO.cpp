#include "net/VORACommentDetailInfoDTO.h"

#include "core/VORAUtility.h"

#include <QJsonArray>

VORACommentDetailInfoDTO VORACommentDetailInfoDTO::fromJson(const QJsonObject &item)
{
    auto text = [&item](const char *key) { return VORAUtility::jsonString(item.value(QLatin1String(key))); };
    auto number = [&item](const char *key) { return VORAUtility::jsonInteger(item.value(QLatin1String(key))); };
    VORACommentDetailInfoDTO c;
    c.comment_id = text("comment_id");
    c.commentContent_filter = text("content_filter");
    c.commentFace = text("face");
    c.commentSex = text("sex");
    c.commentNickname = text("nickname");
    if (c.commentNickname.isEmpty())
        c.commentNickname = QStringLiteral("游客");
    c.commentCreate_time = VORAUtility::dateFromSeconds(number("create_time"));
    c.commentTotal_reply = number("total_reply");
    c.commentFloor = number("floor");
    c.commentGroup_user = number("group_user");
    const QJsonValue level = item.value(QLatin1String("level"));
    c.commentLevel = level.isObject() ? VORAUtility::jsonInteger(level.toObject().value(QLatin1String("level"))) : 0;
    const QJsonArray replies = VORAUtility::jsonArray(item.value(QLatin1String("reply")));
    for (const QJsonValue &reply : replies)
        c.commentReply.append(VORACommentReplyInfoDTO::fromJson(reply.toObject()));
    return c;
}
