#include "net/VORASortWebService.h"

#include "core/VORAUtility.h"
#include "net/VORAQ42IpadWebServiceUtility.h"

#include <QJsonArray>

QString VORASortWebService::path() const
{
    return QStringLiteral("ios/pad/list.php");
}

VORAHttpBaseWebService::Parameters VORASortWebService::parameter() const
{
    Parameters p;
    switch (comicCategory) {
    case 0:
        p.append({QStringLiteral("argname"), QStringLiteral("theme")});
        p.append({QStringLiteral("argval"), VORAQ42IpadWebServiceUtility::parameterWithComicTheme(comicTheme)});
        break;
    case 1:
        p.append({QStringLiteral("argname"), QStringLiteral("cate")});
        p.append({QStringLiteral("argval"), VORAQ42IpadWebServiceUtility::parameterWithComicType(comicType)});
        break;
    case 2:
        p.append({QStringLiteral("argname"), QStringLiteral("serial")});
        p.append({QStringLiteral("argval"), VORAQ42IpadWebServiceUtility::parameterWithComicSerial(comicSerial)});
        break;
    case 3:
        p.append({QStringLiteral("argname"), QStringLiteral("sort")});
        p.append({QStringLiteral("argval"), VORAQ42IpadWebServiceUtility::parameterWithComicSort(comicSort)});
        break;
    default:
        break;
    }
    p.append({QStringLiteral("from"), QStringLiteral("appstore4")});
    p.append({QStringLiteral("page"), QString::number(page)});
    p.append({QStringLiteral("size"), QString::number(size)});
    return p;
}

void VORASortWebService::parseResponseString(const QString &responseString)
{
    comicList.clear();
    const QJsonObject o = jsonObjectFromString(responseString).value_or(QJsonObject());
    totalCount = VORAUtility::jsonInteger(o.value(QLatin1String("total")));
    const QJsonArray items = VORAUtility::jsonArray(o.value(QLatin1String("data")));
    for (const QJsonValue &item : items)
        comicList.append(VORASortDTO::fromJson(item.toObject()));
}
