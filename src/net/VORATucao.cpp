#include "net/VORATucao.h"

#include "core/VORAUtility.h"

#include <QJsonArray>

VORATucao VORATucao::fromJson(const QJsonObject &item)
{
    auto int32 = [&item](const char *key) {
        return static_cast<qint32>(VORAUtility::jsonInteger(item.value(QLatin1String(key))));
    };
    VORATucao t;
    t.tucaoId = VORAUtility::jsonString(item.value(QLatin1String("tucao_id")));
    t.content = VORAUtility::jsonString(item.value(QLatin1String("content")));
    t.userId = VORAUtility::jsonString(item.value(QLatin1String("user_id")));
    t.nickName = VORAUtility::jsonString(item.value(QLatin1String("nickname")));
    t.x = int32("x");
    t.y = int32("y");
    t.width = int32("width");
    t.height = int32("height");
    t.color = int32("color");
    t.back = int32("back");
    t.updateTime = VORAUtility::dateFromSeconds(int32("ceate_time"));
    return t;
}

QList<VORATucao> VORATucao::listFromJson(const QJsonValue &jsonTucao)
{
    QList<VORATucao> list;
    const QJsonArray items = VORAUtility::jsonArray(VORAUtility::jsonObject(jsonTucao).value(QLatin1String("list")));
    for (const QJsonValue &item : items)
        list.append(fromJson(item.toObject()));
    return list;
}

QCborMap VORATucao::toArchive() const
{
    QCborMap map;
    map.insert(QLatin1String("tucaoId"), tucaoId);
    map.insert(QLatin1String("content"), content);
    map.insert(QLatin1String("userId"), userId);
    map.insert(QLatin1String("nickName"), nickName);
    map.insert(QLatin1String("x"), x);
    map.insert(QLatin1String("y"), y);
    map.insert(QLatin1String("width"), width);
    map.insert(QLatin1String("height"), height);
    map.insert(QLatin1String("color"), color);
    map.insert(QLatin1String("back"), back);
    if (updateTime.isValid())
        map.insert(QLatin1String("updateTime"), QCborValue(updateTime.toUTC()));
    return map;
}

VORATucao VORATucao::fromArchive(const QCborMap &map)
{
    auto int32 = [&map](const char *key) {
        return static_cast<qint32>(map.value(QLatin1String(key)).toInteger());
    };
    VORATucao t;
    t.tucaoId = map.value(QLatin1String("tucaoId")).toString();
    t.content = map.value(QLatin1String("content")).toString();
    t.userId = map.value(QLatin1String("userId")).toString();
    t.nickName = map.value(QLatin1String("nickName")).toString();
    t.x = int32("x");
    t.y = int32("y");
    t.width = int32("width");
    t.height = int32("height");
    t.color = int32("color");
    t.back = int32("back");
    const QCborValue time = map.value(QLatin1String("updateTime"));
    if (time.isDateTime())
        t.updateTime = time.toDateTime().toUTC();
    return t;
}
