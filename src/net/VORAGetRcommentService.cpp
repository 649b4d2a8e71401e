#include "net/VORAGetRcommentService.h"

#include "core/VORAUtility.h"
#include "net/VORAQ42IpadWebServiceUtility.h"

#include <QJsonArray>

QString VORAGetRcommentService::path() const
{
    return QStringLiteral("ios/pad/list.php");
}

VORAHttpBaseWebService::Parameters VORAGetRcommentService::parameter() const
{
    Parameters p;
    if (comicCategory == 3) {
        p.append({QStringLiteral("argname"), QStringLiteral("sort")});
        p.append({QStringLiteral("argval"), VORAQ42IpadWebServiceUtility::parameterWithComicSort(comicSort)});
    } else if (comicCategory == 2) {
        p.append({QStringLiteral("argname"), QStringLiteral("serial")});
        p.append({QStringLiteral("argval"), VORAQ42IpadWebServiceUtility::parameterWithComicSerial(comicSerial)});
        p.append({QStringLiteral("con"), QStringLiteral("2")});
    }
    p.append({QStringLiteral("from"), QStringLiteral("appstore4")});
    p.append({QStringLiteral("page"), QString::number(page)});
    p.append({QStringLiteral("size"), QString::number(size)});
    p.append({QStringLiteral("slide"), QString::number(slide)});
    return p;
}

void VORAGetRcommentService::parseResponseString(const QString &responseString)
{
    recommentArray.clear();
    slideArray.clear();
    const QJsonObject o = jsonObjectFromString(responseString).value_or(QJsonObject());
    const QJsonArray grid = VORAUtility::jsonArray(o.value(QLatin1String("data")));
    for (const QJsonValue &item : grid)
        recommentArray.append(VORARecommentDTO::fromJson(item.toObject()));
    const QJsonArray slides = VORAUtility::jsonArray(o.value(QLatin1String("slide_data")));
    for (const QJsonValue &item : slides)
        slideArray.append(VORASlideComicDTO::fromJson(item.toObject()));
}
