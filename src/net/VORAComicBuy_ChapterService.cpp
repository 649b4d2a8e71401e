#include "net/VORAComicBuy_ChapterService.h"

#include "core/VORAUtility.h"

#include <QJsonArray>
#include <QJsonDocument>

QString VORAComicBuy_ChapterService::path() const
{
    return QStringLiteral("ios/pad/buy_chapter.php");
}

int VORAComicBuy_ChapterService::q42HttpMethod() const
{
    return 1;
}

VORAHttpBaseWebService::Parameters VORAComicBuy_ChapterService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("comic_id"), comicId});
    p.append({QStringLiteral("chapter"), QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(chapterIdArray)).toJson(QJsonDocument::Compact))});
    return p;
}

void VORAComicBuy_ChapterService::parseResponseString(const QString &responseString)
{
    const std::optional<QJsonObject> answer = jsonObjectFromString(responseString);
    const QJsonObject o = answer.value_or(QJsonObject());
    code = VORAUtility::jsonInteger(o.value(QLatin1String("code")));
    message = VORAUtility::jsonString(o.value(QLatin1String("message")));
    data = answer;
}
