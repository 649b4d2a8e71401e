#include "net/VORAComicGradeService.h"

#include "core/VORAUtility.h"

QString VORAComicGradeService::path() const
{
    return QStringLiteral("ios/pad/grade.php");
}

VORAHttpBaseWebService::Parameters VORAComicGradeService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("act"), act});
    p.append({QStringLiteral("comic_id"), comic_id});
    p.append({QStringLiteral("grade"), comic_grade});
    return p;
}

void VORAComicGradeService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
