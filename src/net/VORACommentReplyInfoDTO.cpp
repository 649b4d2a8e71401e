#include "net/VORACommentReplyInfoDTO.h"

#include "core/VORAUtility.h"

VORACommentReplyInfoDTO VORACommentReplyInfoDTO::fromJson(const QJsonObject &item)
{
    auto text = [&item](const char *key) { return VORAUtility::jsonString(item.value(QLatin1String(key))); };
    auto number = [&item](const char *key) { return VORAUtility::jsonInteger(item.value(QLatin1String(key))); };
    VORACommentReplyInfoDTO r;
    r.replyComment_id = text("comment_id");
    r.replyContent = text("content_filter");
    r.replyFace = text("face");
    r.replySex = text("sex");
    r.replyNickname = text("nickname");
    if (r.replyNickname.isEmpty())
        r.replyNickname = QStringLiteral("游客");
    r.replyCreate_time = VORAUtility::dateFromSeconds(number("create_time"));
    r.replyFloor = number("floor");
    r.replyGroup_user = number("group_user");
    const QJsonValue level = item.value(QLatin1String("level"));
    r.replyLevel = level.isObject() ? VORAUtility::jsonInteger(level.toObject().value(QLatin1String("level"))) : 0;
    return r;
}
