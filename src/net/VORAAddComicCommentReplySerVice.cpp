#include "net/VORAAddComicCommentReplySerVice.h"

#include "core/VORAUtility.h"

QString VORAAddComicCommentReplySerVice::path() const
{
    return QStringLiteral("ios/pad/comment_reply.php");
}

int VORAAddComicCommentReplySerVice::q42HttpMethod() const
{
    return 1;
}

VORAHttpBaseWebService::Parameters VORAAddComicCommentReplySerVice::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("comment_id"), comment_id});
    p.append({QStringLiteral("thread_id"), tread_id});
    p.append({QStringLiteral("content"), content});
    return p;
}

void VORAAddComicCommentReplySerVice::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
