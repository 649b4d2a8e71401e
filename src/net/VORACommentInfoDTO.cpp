#include "net/VORACommentInfoDTO.h"

#include "core/VORAUtility.h"

#include <QJsonArray>

VORACommentInfoDTO VORACommentInfoDTO::parseData(const QJsonObject &data)
{
    VORACommentInfoDTO info;
    info.commentObject_id = VORAUtility::jsonString(data.value(QLatin1String("object_id")));
    info.commentThread_id = VORAUtility::jsonString(data.value(QLatin1String("thread_id")));
    info.commentTotal = VORAUtility::jsonInteger(data.value(QLatin1String("total_comment")));
    info.commentTotal_page = VORAUtility::jsonInteger(
        VORAUtility::jsonObject(data.value(QLatin1String("pages"))).value(QLatin1String("total_page")));
    const QJsonArray comments = VORAUtility::jsonArray(data.value(QLatin1String("data")));
    for (const QJsonValue &comment : comments)
        info.commentData.append(VORACommentDetailInfoDTO::fromJson(comment.toObject()));
    return info;
}
