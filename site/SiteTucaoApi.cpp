#include "SiteTucaoApi.h"

#include <QJsonArray>

void SiteTucaoApi::registerRoutes(SiteRouter &router)
{
    router.add(QStringLiteral("ios/pad/get_tucao.php"), [this](const SiteHttpRequest &r) { return list(r); });
    router.add(QStringLiteral("ios/pad/add_tucao.php"), [this](const SiteHttpRequest &r) { return add(r); });
    router.add(QStringLiteral("ios/pad/edit_tucao.php"), [this](const SiteHttpRequest &r) { return edit(r); });
    router.add(QStringLiteral("ios/pad/delete_tucao.php"), [this](const SiteHttpRequest &r) { return remove(r); });
}

SiteHttpResponse SiteTucaoApi::list(const SiteHttpRequest &r)
{
    qint64 imageId = 0;
    if (!r.has(QStringLiteral("image_id")))
        return SiteContext::phpRefusal(QStringLiteral("缺少参数 image_id"));
    if (!SiteContext::readId(r.param(QStringLiteral("image_id")), &imageId))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：image_id"));
    if (!m_ctx.catalogue.page(imageId))
        return SiteContext::phpRefusal(QStringLiteral("图片不存在"));
    int pageSize = 20;
    if (r.has(QStringLiteral("page_size"))
        && !SiteContext::readInt(r.param(QStringLiteral("page_size")), &pageSize, 1, 500))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：page_size 应为1到500"));
    const QString type = r.param(QStringLiteral("type"));
    if (!type.isEmpty() && type != QLatin1String("next_page") && type != QLatin1String("prev_page"))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：type"));
    qint64 firstId = 0, lastId = 0;
    const bool hasFirst = !r.param(QStringLiteral("first_id")).isEmpty();
    const bool hasLast = !r.param(QStringLiteral("last_id")).isEmpty();
    if ((hasFirst && !SiteContext::readId(r.param(QStringLiteral("first_id")), &firstId))
        || (hasLast && !SiteContext::readId(r.param(QStringLiteral("last_id")), &lastId)))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：first_id 或 last_id"));

    // Newest first. "next_page" goes on below last_id (or from the newest);
    // "prev_page" comes back above first_id.
    QList<SiteDatabase::Row> rows;
    if (type == QLatin1String("prev_page")) {
        rows = m_ctx.db.select("SELECT tucao_id, content, user_id, nickname, x, y, w, h, color, back, create_time FROM tucao"
                               " WHERE image_id=? AND tucao_id > ? ORDER BY tucao_id ASC LIMIT ?",
                               {imageId, hasFirst ? firstId : 0, pageSize});
        std::reverse(rows.begin(), rows.end());
    } else {
        rows = m_ctx.db.select("SELECT tucao_id, content, user_id, nickname, x, y, w, h, color, back, create_time FROM tucao"
                               " WHERE image_id=? AND tucao_id < ? ORDER BY tucao_id DESC LIMIT ?",
                               {imageId, hasLast ? lastId : std::numeric_limits<qint64>::max(), pageSize});
    }
    QJsonArray list;
    for (const auto &row : std::as_const(rows)) {
        list.append(QJsonObject{
            {"tucao_id", QString::number(row.at(0).toLongLong())},
            {"content", row.at(1).toString()},
            {"user_id", QString::number(row.at(2).toLongLong())},
            {"nickname", row.at(3).toString()},
            {"x", row.at(4).toInt()},
            {"y", row.at(5).toInt()},
            {"width", row.at(6).toInt()},
            {"height", row.at(7).toInt()},
            {"color", row.at(8).toInt()},
            {"back", row.at(9).toInt()},
            {"ceate_time", row.at(10).toLongLong()},
        });
    }
    const qint64 total = m_ctx.db.value("SELECT COUNT(*) FROM tucao WHERE image_id=?", {imageId}, 0).toLongLong();
    return SiteContext::php(QJsonObject{{"image_id", QString::number(imageId)}, {"total", total}, {"list", list}});
}

QString SiteTucaoApi::readRect(const SiteHttpRequest &r, const char *wName, const char *hName, int pageWidth,
                               int pageHeight, int out[4])
{
    const char *names[4] = {"x", "y", wName, hName};
    for (int i = 0; i < 4; ++i) {
        const QString name = QString::fromLatin1(names[i]);
        if (!r.has(name))
            return QStringLiteral("缺少参数 %1").arg(name);
        const int max = i % 2 == 0 ? pageWidth : pageHeight;
        const int min = i < 2 ? 0 : 1;
        if (!SiteContext::readInt(r.param(name), &out[i], min, max))
            return QStringLiteral("参数错误：%1 应在%2到%3之间").arg(name).arg(min).arg(max);
    }
    if (out[0] >= pageWidth || out[1] >= pageHeight)
        return QStringLiteral("吐槽位置超出了图片范围");
    return {};
}

SiteHttpResponse SiteTucaoApi::add(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录后再吐槽"));
    qint64 imageId = 0;
    if (!SiteContext::readId(r.param(QStringLiteral("image_id")), &imageId))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：image_id"));
    const SiteCatalogue::Comic *comic = nullptr;
    const SiteCatalogue::Page *page = m_ctx.catalogue.page(imageId, nullptr, &comic);
    if (!page)
        return SiteContext::phpRefusal(QStringLiteral("图片不存在"));
    const QString content = r.param(QStringLiteral("content")).trimmed();
    if (content.isEmpty())
        return SiteContext::phpRefusal(QStringLiteral("吐槽内容不能为空"));
    if (content.size() > kMaxContent)
        return SiteContext::phpRefusal(QStringLiteral("吐槽内容不能超过%1个字").arg(kMaxContent));
    int rect[4];
    const QString bad = readRect(r, "w", "h", page->width, page->height, rect);
    if (!bad.isEmpty())
        return SiteContext::phpRefusal(bad);
    int color = 0, back = 0;
    if ((r.has(QStringLiteral("color")) && !SiteContext::readInt(r.param(QStringLiteral("color")), &color, 0, 0xFFFFFF))
        || (r.has(QStringLiteral("back")) && !SiteContext::readInt(r.param(QStringLiteral("back")), &back, 0, 0xFFFFFF)))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：color 或 back"));
    qint64 created = SiteContext::now();
    qint64 given = 0;
    if (SiteContext::readId(r.param(QStringLiteral("create_time")), &given) && given > 0 && given <= created + 86400)
        created = given;
    m_ctx.db.run("INSERT INTO tucao(image_id, comic_id, user_id, nickname, content, color, back, x, y, w, h, create_time)"
                 " VALUES(?,?,?,?,?,?,?,?,?,?,?,?)",
                 {imageId, comic->id, user->id, user->nickname, content, color, back, rect[0], rect[1], rect[2], rect[3],
                  created});
    const qint64 id = m_ctx.db.lastInsertId();
    return SiteContext::php(QJsonObject{{"tucao_id", QString::number(id)}}, 1, QStringLiteral("吐槽发布成功"));
}

SiteHttpResponse SiteTucaoApi::edit(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录"));
    qint64 id = 0;
    if (!SiteContext::readId(r.param(QStringLiteral("tucao_id")), &id))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：tucao_id"));
    const auto rows = m_ctx.db.select("SELECT user_id, image_id FROM tucao WHERE tucao_id=?", {id});
    if (rows.isEmpty())
        return SiteContext::phpRefusal(QStringLiteral("吐槽不存在"));
    if (rows.first().at(0).toLongLong() != user->id)
        return SiteContext::phpRefusal(QStringLiteral("只能修改自己的吐槽"));
    const SiteCatalogue::Page *page = m_ctx.catalogue.page(rows.first().at(1).toLongLong());
    if (!page)
        return SiteContext::phpRefusal(QStringLiteral("图片不存在"));
    int rect[4];
    const QString bad = readRect(r, "width", "height", page->width, page->height, rect);
    if (!bad.isEmpty())
        return SiteContext::phpRefusal(bad);
    m_ctx.db.run("UPDATE tucao SET x=?, y=?, w=?, h=? WHERE tucao_id=?", {rect[0], rect[1], rect[2], rect[3], id});
    return SiteContext::php(QJsonObject{{"tucao_id", QString::number(id)}}, 1, QStringLiteral("吐槽更新成功"));
}

SiteHttpResponse SiteTucaoApi::remove(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录"));
    qint64 id = 0;
    if (!SiteContext::readId(r.param(QStringLiteral("tucao_id")), &id))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：tucao_id"));
    qint64 comicId = 0;
    if (!r.param(QStringLiteral("comic_id")).isEmpty() && !SiteContext::readId(r.param(QStringLiteral("comic_id")), &comicId))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：comic_id"));
    const auto rows = m_ctx.db.select("SELECT user_id, comic_id FROM tucao WHERE tucao_id=?", {id});
    if (rows.isEmpty())
        return SiteContext::phpRefusal(QStringLiteral("吐槽不存在"));
    if (rows.first().at(0).toLongLong() != user->id)
        return SiteContext::phpRefusal(QStringLiteral("只能删除自己的吐槽"));
    if (comicId && rows.first().at(1).toLongLong() != comicId)
        return SiteContext::phpRefusal(QStringLiteral("吐槽不属于这部漫画"));
    m_ctx.db.run("DELETE FROM tucao WHERE tucao_id=?", {id});
    return SiteContext::php(QJsonObject{}, 1, QStringLiteral("吐槽删除成功"));
}
