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
