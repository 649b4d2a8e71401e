#include "net/VORAComicCommentListService.h"

#include "core/VORAUtility.h"

QString VORAComicCommentListService::path() const
{
    return QStringLiteral("ios/pad/comment_list.php");
}

VORAHttpBaseWebService::Parameters VORAComicCommentListService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("thread_id"), thread_id});
    p.append({QStringLiteral("object_id"), object_id});
    p.append({QStringLiteral("page"), page});
    return p;
}

void VORAComicCommentListService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}

std::optional<VORACommentInfoDTO> VORAComicCommentListService::commentInfo() const
{
    if (!data)
        return std::nullopt;
    return VORACommentInfoDTO::parseData(*data);
}
