#include "net/VORAAddComicCommentSerVice.h"

#include "core/VORAUtility.h"

QString VORAAddComicCommentSerVice::path() const
{
    return QStringLiteral("ios/pad/comment_add.php");
}

int VORAAddComicCommentSerVice::q42HttpMethod() const
{
    return 1;
}

VORAHttpBaseWebService::Parameters VORAAddComicCommentSerVice::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("thread_id"), thread_id});
    p.append({QStringLiteral("content"), content});
    return p;
}

void VORAAddComicCommentSerVice::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
