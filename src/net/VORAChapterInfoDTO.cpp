#include "net/VORAChapterInfoDTO.h"

#include "core/VORAUtility.h"

#include <QCborValue>

VORAChapterInfoDTO VORAChapterInfoDTO::fromJson(const QJsonObject &item, const QString &comicId,
                                                int index)
{
    VORAChapterInfoDTO chapter;
    chapter.comicId = comicId;
    chapter.chapterId = VORAUtility::jsonString(item.value(QLatin1String("chapter_id")));
    chapter.name = VORAUtility::jsonString(item.value(QLatin1String("name")));
    chapter.imageCount = VORAUtility::jsonInteger(item.value(QLatin1String("image_total")));
    chapter.imageSize = VORAUtility::jsonInteger(item.value(QLatin1String("size")));
    chapter.buyed = VORAUtility::jsonInteger(item.value(QLatin1String("buyed")));
    chapter.type = static_cast<quint32>(VORAUtility::jsonInteger(item.value(QLatin1String("type"))));
    chapter.is_view = VORAUtility::jsonInteger(item.value(QLatin1String("is_view")));
    chapter.price = VORAUtility::jsonInteger(item.value(QLatin1String("price")));
    // A null "pass_time" counts as 0; the later of the two times wins.
    const qint64 release = VORAUtility::jsonInteger(item.value(QLatin1String("release_time")));
    const qint64 pass = VORAUtility::jsonInteger(item.value(QLatin1String("pass_time")));
    chapter.pass_time = QDateTime::fromSecsSinceEpoch(std::max(release, pass), Qt::UTC);
    chapter.index = index;
    return chapter;
}

QCborMap VORAChapterInfoDTO::toArchive() const
{
    QCborMap map;
    map.insert(QLatin1String("comicId"), comicId);
    map.insert(QLatin1String("chapterId"), chapterId);
    map.insert(QLatin1String("name"), name);
    map.insert(QLatin1String("imageCount"), imageCount);
    map.insert(QLatin1String("imageSize"), imageSize);
    map.insert(QLatin1String("buyed"), buyed);
    map.insert(QLatin1String("type"), static_cast<qint64>(type));
    map.insert(QLatin1String("is_view"), is_view);
    map.insert(QLatin1String("price"), price);
    map.insert(QLatin1String("pass_time"), QCborValue(pass_time));
    map.insert(QLatin1String("index"), index);
    return map;
}

VORAChapterInfoDTO VORAChapterInfoDTO::fromArchive(const QCborMap &map)
{
    VORAChapterInfoDTO chapter;
    chapter.comicId = map.value(QLatin1String("comicId")).toString();
    chapter.chapterId = map.value(QLatin1String("chapterId")).toString();
    chapter.name = map.value(QLatin1String("name")).toString();
    chapter.imageCount = map.value(QLatin1String("imageCount")).toInteger();
    chapter.imageSize = map.value(QLatin1String("imageSize")).toInteger();
    chapter.buyed = map.value(QLatin1String("buyed")).toInteger();
    chapter.type = static_cast<quint32>(map.value(QLatin1String("type")).toInteger());
    chapter.is_view = map.value(QLatin1String("is_view")).toInteger();
    chapter.price = map.value(QLatin1String("price")).toInteger();
    chapter.pass_time = map.value(QLatin1String("pass_time")).toDateTime().toUTC();
    chapter.index = static_cast<int>(map.value(QLatin1String("index")).toInteger());
    return chapter;
}
