#include "net/VORAComicInfoDTO.h"

#include "core/VORAUtility.h"

#include <QCborArray>
#include <QCborValue>
#include <QJsonArray>

namespace {

// Flags that only know 0 and 1: anything else leaves 0.
qint64 zeroOrOne(const QJsonValue &v)
{
    const qint64 n = VORAUtility::jsonInteger(v);
    return (n == 0 || n == 1) ? n : 0;
}

} // namespace

VORAComicInfoDTO VORAComicInfoDTO::parseData(const QJsonObject &data, const QString &comicId)
{
    VORAComicInfoDTO comic;
    comic.comicId = comicId;
    const QJsonObject c = VORAUtility::jsonObject(data.value(QLatin1String("comic")));
    comic.name = VORAUtility::jsonString(c.value(QLatin1String("name")));
    comic.authorName = VORAUtility::jsonString(c.value(QLatin1String("author_name")));
    comic.coverUrl = VORAUtility::jsonString(c.value(QLatin1String("cover")));
    comic.oriCoverUrl = VORAUtility::jsonString(c.value(QLatin1String("ori")));
    comic.theme = VORAUtility::jsonString(c.value(QLatin1String("theme_ids")));
    comic.serialStatus = static_cast<qint32>(zeroOrOne(c.value(QLatin1String("series_status"))));
    comic.readOrder = zeroOrOne(c.value(QLatin1String("read_order")));
    comic.nameFirstLetter = VORAUtility::jsonString(c.value(QLatin1String("first_letter")));
    comic.comicDescription = VORAUtility::jsonString(c.value(QLatin1String("description")));
    comic.clickTotal = VORAUtility::jsonInteger(c.value(QLatin1String("click_total")));
    comic.tucaoTotal = VORAUtility::jsonInteger(c.value(QLatin1String("total_tucao")));
    comic.commentTotal = VORAUtility::jsonInteger(c.value(QLatin1String("comment_total")));
    comic.ticketTotal = VORAUtility::jsonInteger(c.value(QLatin1String("total_ticket")));
    comic.is_vip = VORAUtility::jsonInteger(c.value(QLatin1String("is_vip")));
    comic.type = VORAUtility::jsonString(c.value(QLatin1String("group_ids")));
    comic.lastUpdateChapterId = VORAUtility::jsonString(c.value(QLatin1String("last_update_chapter_id")));
    comic.lastUpdateChapterName =
        VORAUtility::jsonString(c.value(QLatin1String("last_update_chapter_name")));
    const QJsonValue thread = c.value(QLatin1String("thread"));
    if (thread.isObject()) {
        comic.threadName = VORAUtility::jsonString(thread.toObject().value(QLatin1String("name")));
        comic.thread_id = VORAUtility::jsonString(thread.toObject().value(QLatin1String("thread_id")));
    }
    comic.lastUpdateTime = VORAUtility::dateFromSeconds(VORAUtility::jsonInteger(c.value(QLatin1String("last_update_time"))));

    const QJsonArray chapters = VORAUtility::jsonArray(data.value(QLatin1String("chapter_list")));
    comic.chapterList.reserve(chapters.size());
    for (int i = 0; i < chapters.size(); ++i)
        comic.chapterList.append(VORAChapterInfoDTO::fromJson(chapters.at(i).toObject(), comicId, i));
    const QJsonArray tops = VORAUtility::jsonArray(data.value(QLatin1String("top4")));
    for (const QJsonValue &top : tops)
        comic.topList.append(VORAComicTopInfoDTO::fromJson(top.toObject()));
    return comic;
}

QCborMap VORAComicInfoDTO::toArchive() const
{
    QCborMap map;
    map.insert(QLatin1String("comicId"), comicId);
    map.insert(QLatin1String("name"), name);
    map.insert(QLatin1String("authorName"), authorName);
    map.insert(QLatin1String("coverUrl"), coverUrl);
    map.insert(QLatin1String("oriCoverUrl"), oriCoverUrl);
    map.insert(QLatin1String("theme"), theme);
    map.insert(QLatin1String("serialStatus"), serialStatus);
    map.insert(QLatin1String("readOrder"), readOrder);
    map.insert(QLatin1String("nameFirstLetter"), nameFirstLetter);
    map.insert(QLatin1String("comicDescription"), comicDescription);
    map.insert(QLatin1String("clickTotal"), clickTotal);
    map.insert(QLatin1String("tucaoTotal"), tucaoTotal);
    map.insert(QLatin1String("commentTotal"), commentTotal);
    map.insert(QLatin1String("ticketTotal"), ticketTotal);
    map.insert(QLatin1String("is_vip"), is_vip);
    map.insert(QLatin1String("type"), type);
    map.insert(QLatin1String("lastUpdateChapterId"), lastUpdateChapterId);
    map.insert(QLatin1String("lastUpdateChapterName"), lastUpdateChapterName);
    map.insert(QLatin1String("threadName"), threadName);
    map.insert(QLatin1String("thread_id"), thread_id);
    map.insert(QLatin1String("lastUpdateTime"), QCborValue(lastUpdateTime));
    map.insert(QLatin1String("accredit"), accredit);
    QCborArray chapters;
    for (const VORAChapterInfoDTO &chapter : chapterList)
        chapters.append(chapter.toArchive());
    map.insert(QLatin1String("chapterList"), chapters);
    QCborArray tops;
    for (const VORAComicTopInfoDTO &top : topList)
        tops.append(top.toArchive());
    map.insert(QLatin1String("topList"), tops);
    return map;
}

VORAComicInfoDTO VORAComicInfoDTO::fromArchive(const QCborMap &map)
{
    VORAComicInfoDTO comic;
    auto text = [&map](const char *key) { return map.value(QLatin1String(key)).toString(); };
    auto number = [&map](const char *key) { return map.value(QLatin1String(key)).toInteger(); };
    comic.comicId = text("comicId");
    comic.name = text("name");
    comic.authorName = text("authorName");
    comic.coverUrl = text("coverUrl");
    comic.oriCoverUrl = text("oriCoverUrl");
    comic.theme = text("theme");
    comic.serialStatus = static_cast<qint32>(number("serialStatus"));
    comic.readOrder = number("readOrder");
    comic.nameFirstLetter = text("nameFirstLetter");
    comic.comicDescription = text("comicDescription");
    comic.clickTotal = number("clickTotal");
    comic.tucaoTotal = number("tucaoTotal");
    comic.commentTotal = number("commentTotal");
    comic.ticketTotal = number("ticketTotal");
    comic.is_vip = number("is_vip");
    comic.type = text("type");
    comic.lastUpdateChapterId = text("lastUpdateChapterId");
    comic.lastUpdateChapterName = text("lastUpdateChapterName");
    comic.threadName = text("threadName");
    comic.thread_id = text("thread_id");
    comic.lastUpdateTime = map.value(QLatin1String("lastUpdateTime")).toDateTime().toUTC();
    comic.accredit = static_cast<qint32>(number("accredit"));
    const QCborArray chapters = map.value(QLatin1String("chapterList")).toArray();
    for (const QCborValue &chapter : chapters)
        comic.chapterList.append(VORAChapterInfoDTO::fromArchive(chapter.toMap()));
    const QCborArray tops = map.value(QLatin1String("topList")).toArray();
    for (const QCborValue &top : tops)
        comic.topList.append(VORAComicTopInfoDTO::fromArchive(top.toMap()));
    return comic;
}
