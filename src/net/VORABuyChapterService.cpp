#include "net/VORABuyChapterService.h"

#include "core/VORAUtility.h"

#include <QJsonArray>
#include <QJsonDocument>

QString VORABuyChapterService::path() const
{
    return QStringLiteral("v3/app/ios/pad/buyChapter/buy");
}

VORAHttpBaseWebService::Parameters VORABuyChapterService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("comicId"), QString::number(comicId.toLongLong())});
    p.append({QStringLiteral("chapter"), VORAUtility::encodeUrlParameter(chapter())});
    return p;
}

void VORABuyChapterService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}

QString VORABuyChapterService::chapter() const
{
    return QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(chapterArray)).toJson(QJsonDocument::Compact));
}
