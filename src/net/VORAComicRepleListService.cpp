#include "net/VORAComicRepleListService.h"

#include "core/VORAUtility.h"

#include <QJsonArray>

QString VORAComicRepleListService::path() const
{
    return QStringLiteral("v3/app/ios/pad/comment/replylist");
}

VORAHttpBaseWebService::Parameters VORAComicRepleListService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("thread_id"), thread_id});
    p.append({QStringLiteral("comment_id"), comment_id});
    p.append({QStringLiteral("page"), QString::number(page)});
    return p;
}

void VORAComicRepleListService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}

std::optional<QList<VORACommentReplyInfoDTO>> VORAComicRepleListService::replyList() const
{
    if (!data)
        return std::nullopt;
    const QJsonObject d = VORAUtility::jsonObject(data->value(QLatin1String("data")));
    if (VORAUtility::jsonInteger(d.value(QLatin1String("stateCode"))) < 0)
        return std::nullopt;
    QList<VORACommentReplyInfoDTO> list;
    const QJsonArray items = VORAUtility::jsonArray(
        VORAUtility::jsonObject(d.value(QLatin1String("returnData"))).value(QLatin1String("replyList")));
    for (const QJsonValue &item : items)
        list.append(VORACommentReplyInfoDTO::fromJson(item.toObject()));
    return list;
}
