#include "SiteCatalogueApi.h"

#include "SiteLog.h"

#include <QJsonArray>
#include <QRegularExpression>

#include <algorithm>

namespace {
// Sort codes of the list service and the order each stands for.
const QStringList kSortCodes = {"0", "1", "20", "4", "5", "7", "9", "23"};
constexpr int kSearchPageSize = 30;

QString accreditText(int accredit)
{
    return QString::number(accredit);
}
}

void SiteCatalogueApi::registerRoutes(SiteRouter &router)
{
    router.add(QStringLiteral("ios/pad/list.php"), [this](const SiteHttpRequest &r) { return list(r); });
    router.add(QStringLiteral("ios/pad/search.php"), [this](const SiteHttpRequest &r) { return search(r); });
    router.add(QStringLiteral("ios/pad/hot_keywords.php"), [this](const SiteHttpRequest &r) { return hotKeywords(r); });
    router.add(QStringLiteral("ios/pad/comic_127.php"), [this](const SiteHttpRequest &r) { return comic(r); });
    router.add(QStringLiteral("ios/pad/check_update.php"), [this](const SiteHttpRequest &r) { return checkUpdate(r); });
    router.add(QStringLiteral("ios/pad/fav.php"), [this](const SiteHttpRequest &r) { return favourites(r); });
    router.add(QStringLiteral("v3/app/ios/pad/version/newVersion"), [this](const SiteHttpRequest &r) { return newVersion(r); });
    router.add(QStringLiteral("ios/pad/version.php"), [this](const SiteHttpRequest &r) { return oldVersion(r); });
    router.add(QStringLiteral("ios/pad/token.php"), [this](const SiteHttpRequest &r) { return pushToken(r); });
}

QJsonObject SiteCatalogueApi::listItem(const SiteCatalogue::Comic &c, const SiteHttpRequest &r, bool searchForm)
{
    QJsonObject o{
        {"comic_id", QString::number(c.id)},
        {"name", c.name},
        {"cover", m_ctx.coverUrl(r, c.id)},
        {"description", c.description},
        {"accredit", accreditText(c.accredit)},
        {"click_total", c.clickTotal},
        {"last_update_time", c.lastUpdateTime},
        {"series_status", c.seriesStatus},
        {"theme_ids", c.themeIds},
        {"is_vip", c.isVip},
    };
    o.insert(searchForm ? QStringLiteral("nick_name") : QStringLiteral("author_name"), c.author);
    return o;
}

SiteHttpResponse SiteCatalogueApi::list(const SiteHttpRequest &r)
{
    QString argname = r.param(QStringLiteral("argname"));
    QString argval = r.param(QStringLiteral("argval"));
    if (argname.isEmpty()) {
        // The filter may also come as a parameter of its own name.
        for (const char *name : {"theme", "cate", "serial", "sort"}) {
            const QString n = QString::fromLatin1(name);
            if (r.has(n) && !r.param(n).isEmpty()) {
                argname = n;
                argval = r.param(n);
                break;
            }
        }
    }
    int page = 0;
    int size = 30;
    if (r.has(QStringLiteral("page")) && !SiteContext::readInt(r.param(QStringLiteral("page")), &page, 0, 100000))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：page"));
    if (r.has(QStringLiteral("size")) && !SiteContext::readInt(r.param(QStringLiteral("size")), &size, 1, 100))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：size"));

    QList<const SiteCatalogue::Comic *> comics;
    for (const SiteCatalogue::Comic &c : m_ctx.catalogue.comics())
        comics.append(&c);
    QString sortCode = QStringLiteral("0");
    if (argname == QLatin1String("theme")) {
        if (!SiteCatalogue::themeCodes().contains(argval))
            return SiteContext::phpRefusal(QStringLiteral("参数错误：没有这个题材"));
        comics.removeIf([&](const SiteCatalogue::Comic *c) { return !c->themeIds.split(QLatin1Char(',')).contains(argval); });
    } else if (argname == QLatin1String("cate")) {
        if (!QStringList{"1", "2", "3", "4"}.contains(argval))
            return SiteContext::phpRefusal(QStringLiteral("参数错误：没有这个分类"));
        comics.removeIf([&](const SiteCatalogue::Comic *c) { return c->groupIds != argval; });
    } else if (argname == QLatin1String("serial")) {
        if (argval != QLatin1String("0") && argval != QLatin1String("1"))
            return SiteContext::phpRefusal(QStringLiteral("参数错误：连载状态只能是0或1"));
        const int serial = argval.toInt();
        comics.removeIf([&](const SiteCatalogue::Comic *c) { return c->seriesStatus != serial; });
    } else if (argname == QLatin1String("sort")) {
        if (!kSortCodes.contains(argval))
            return SiteContext::phpRefusal(QStringLiteral("参数错误：没有这个排序"));
        sortCode = argval;
    } else if (!argname.isEmpty()) {
        return SiteContext::phpRefusal(QStringLiteral("参数错误：argname"));
    }

    // Sort keys computed once per comic; ties fall back to the identifier.
    QHash<qint64, double> key;
    for (const SiteCatalogue::Comic *c : std::as_const(comics)) {
        double k = 0;
        if (sortCode == QLatin1String("1"))
            k = double(c->chapters.size());
        else if (sortCode == QLatin1String("20"))
            k = double(m_ctx.tucaoTotal(c->id));
        else if (sortCode == QLatin1String("4"))
            k = double(m_ctx.favourites(*c));
        else if (sortCode == QLatin1String("5")) {
            qint64 n = 0;
            m_ctx.gradeFigures(*c, &n, &k);
        } else if (sortCode == QLatin1String("7") || sortCode == QLatin1String("9"))
            k = double(c->clickTotal) + (sortCode == QLatin1String("7") ? double(c->lastUpdateTime % 1000) : 0.0);
        else if (sortCode == QLatin1String("23"))
            k = double(m_ctx.ticketTotal(*c));
        else
            k = double(c->lastUpdateTime);
        key.insert(c->id, k);
    }
    std::stable_sort(comics.begin(), comics.end(), [&](const SiteCatalogue::Comic *a, const SiteCatalogue::Comic *b) {
        const double ka = key.value(a->id), kb = key.value(b->id);
        return ka != kb ? ka > kb : a->id < b->id;
    });

    QJsonArray data;
    const qsizetype from = qsizetype(page) * size;
    for (qsizetype i = from; i < comics.size() && i < from + size; ++i)
        data.append(listItem(*comics.at(i), r));
    QJsonObject payload{{"total", qint64(comics.size())}, {"page", page}, {"size", size}, {"data", data}};
    if (r.param(QStringLiteral("slide")) == QLatin1String("1")) {
        QJsonArray slides;
        for (const SiteCatalogue::Slide &s : m_ctx.catalogue.slides()) {
            slides.append(QJsonObject{
                {"comic_id", s.type == 0 ? QString::number(s.comicId) : QString()},
                {"comic_name", s.comicName},
                {"image", m_ctx.slideUrl(r, s.number)},
                {"title", s.title},
                {"url", s.type == 1 ? m_ctx.base(r) + s.urlPath : QString()},
                {"sort", s.sort},
                {"type", QString::number(s.type)},
            });
        }
        payload.insert(QStringLiteral("slide_data"), slides);
    }
    return SiteContext::php(payload);
}

SiteHttpResponse SiteCatalogueApi::search(const SiteHttpRequest &r)
{
    const QString q = r.param(QStringLiteral("q")).trimmed();
    if (q.isEmpty())
        return SiteContext::phpRefusal(QStringLiteral("请输入搜索关键词"));
    if (q.size() > 100)
        return SiteContext::phpRefusal(QStringLiteral("搜索关键词太长了"));
    int page = 1;
    if (r.has(QStringLiteral("page")) && !SiteContext::readInt(r.param(QStringLiteral("page")), &page, 1, 100000))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：page"));
    QList<const SiteCatalogue::Comic *> hits;
    for (const SiteCatalogue::Comic &c : m_ctx.catalogue.comics()) {
        if (c.name.contains(q, Qt::CaseInsensitive) || c.author.contains(q, Qt::CaseInsensitive))
            hits.append(&c);
    }
    QJsonArray data;
    const qsizetype from = qsizetype(page - 1) * kSearchPageSize;
    for (qsizetype i = from; i < hits.size() && i < from + kSearchPageSize; ++i)
        data.append(listItem(*hits.at(i), r, true));
    if (!hits.isEmpty() && q.size() <= 20) {
        m_ctx.db.run("INSERT OR IGNORE INTO keywords(tag, count) VALUES(?, 0)", {q});
        m_ctx.db.run("UPDATE keywords SET count = count + 1 WHERE tag=?", {q});
    }
    return SiteContext::php(QJsonObject{{"total", qint64(hits.size())}, {"page", page}, {"data", data}});
}

SiteHttpResponse SiteCatalogueApi::hotKeywords(const SiteHttpRequest &r)
{
    int num = 15;
    if (r.has(QStringLiteral("num")) && !SiteContext::readInt(r.param(QStringLiteral("num")), &num, 1, 100))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：num"));
    QJsonArray data;
    const auto rows = m_ctx.db.select("SELECT tag, count FROM keywords ORDER BY count DESC, tag LIMIT ?", {num});
    for (const auto &row : rows)
        data.append(QJsonObject{{"tag", row.at(0).toString()}, {"search_num", QString::number(row.at(1).toLongLong())}});
    return SiteContext::php(QJsonObject{{"data", data}});
}

SiteHttpResponse SiteCatalogueApi::comic(const SiteHttpRequest &r)
{
    qint64 id = 0;
    if (!r.has(QStringLiteral("comic_id")))
        return SiteContext::phpRefusal(QStringLiteral("缺少参数 comic_id"));
    if (!SiteContext::readId(r.param(QStringLiteral("comic_id")), &id))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：comic_id"));
    const SiteCatalogue::Comic *c = m_ctx.catalogue.comic(id);
    if (!c)
        return SiteContext::phpRefusal(QStringLiteral("漫画不存在"));
    const auto user = m_ctx.currentUser(r);
    const qint64 now = SiteContext::now();
    const SiteCatalogue::Chapter *last = c->latestOutAt(now);
    QJsonObject comic{
        {"comic_id", QString::number(c->id)},
        {"name", c->name},
        {"author_name", c->author},
        {"cover", m_ctx.coverUrl(r, c->id)},
        {"ori", m_ctx.coverUrl(r, c->id, true)},
        {"theme_ids", c->themeIds},
        {"series_status", c->seriesStatus},
        {"read_order", c->readOrder},
        {"first_letter", c->firstLetter},
        {"description", c->description},
        {"click_total", c->clickTotal},
        {"total_tucao", m_ctx.tucaoTotal(c->id)},
        {"comment_total", m_ctx.commentTotal(c->threadId)},
        {"total_ticket", m_ctx.ticketTotal(*c)},
        {"is_vip", c->isVip},
        {"group_ids", c->groupIds},
        {"accredit", accreditText(c->accredit)},
        {"last_update_chapter_id", last ? QString::number(last->id) : QString()},
        {"last_update_chapter_name", last ? last->name : QString()},
        {"last_update_time", last ? last->effectivePassTime() : 0},
        {"thread", QJsonObject{{"thread_id", QString::number(c->threadId)}, {"name", c->name}}},
    };
    QSet<qint64> bought;
    if (user) {
        const auto rows = m_ctx.db.select("SELECT chapter_id FROM purchases WHERE user_id=? AND comic_id=?", {user->id, c->id});
        for (const auto &row : rows)
            bought.insert(row.at(0).toLongLong());
    }
    QJsonArray chapters;
    for (const SiteCatalogue::Chapter &ch : c->chapters) {
        const bool paid = ch.type == 2;
        int buyed = 0;
        int isView = 1;
        if (paid) {
            buyed = !user ? -1 : (bought.contains(ch.id) ? 1 : 0);
            isView = (buyed == 1 || ch.price == 0) ? 1 : 0;
        } else if (c->isVip == 3) {
            isView = (!SiteContext::sealed(ch.effectivePassTime(), now) || (user && user->isVip())) ? 1 : 0;
        }
        QJsonObject o{
            {"chapter_id", QString::number(ch.id)},
            {"name", ch.name},
            {"image_total", qint64(ch.pages.size())},
            {"size", ch.sizeKb},
            {"buyed", buyed},
            {"type", ch.type},
            {"is_view", isView},
            {"price", ch.price},
            {"release_time", ch.releaseTime},
        };
        o.insert(QStringLiteral("pass_time"), ch.passTimeNull ? QJsonValue(QJsonValue::Null) : QJsonValue(ch.passTime));
        chapters.append(o);
    }
    QJsonArray top;
    for (int i = 0; i < 4 && i < c->chapters.size(); ++i) {
        const SiteCatalogue::Chapter &ch = c->chapters.at(i);
        top.append(QJsonObject{{"comic_id", QString::number(c->id)},
                               {"chapter_id", QString::number(ch.id)},
                               {"location", m_ctx.pageUrl(r, ch.pages.first(), false)}});
    }
    return SiteContext::php(QJsonObject{{"comic", comic}, {"chapter_list", chapters}, {"top4", top}});
}

SiteHttpResponse SiteCatalogueApi::checkUpdate(const SiteHttpRequest &r)
{
    if (!r.has(QStringLiteral("post_data")))
        return SiteContext::phpRefusal(QStringLiteral("缺少参数 post_data"));
    const QString text = r.param(QStringLiteral("post_data"));
    QJsonArray data;
    const qint64 now = SiteContext::now();
    const QStringList records = text.split(QStringLiteral("||"), Qt::SkipEmptyParts);
    if (records.size() > 2000)
        return SiteContext::phpRefusal(QStringLiteral("书架上的漫画太多了"));
    for (const QString &record : records) {
        const QStringList parts = record.split(QLatin1Char('|'));
        qint64 id = 0, time = 0;
        if (parts.size() != 2 || !SiteContext::readId(parts.at(0), &id) || !SiteContext::readId(parts.at(1), &time))
            return SiteContext::phpRefusal(QStringLiteral("数据格式错误：%1").arg(record.left(40)));
        const SiteCatalogue::Comic *c = m_ctx.catalogue.comic(id);
        const SiteCatalogue::Chapter *last = c ? c->latestOutAt(now) : nullptr;
        if (!last || last->effectivePassTime() <= time)
            continue;
        data.append(QJsonObject{
            {"comic_id", QString::number(c->id)},
            {"name", c->name},
            {"cover", m_ctx.coverUrl(r, c->id)},
            {"last_update_time", last->effectivePassTime()},
            {"last_update_chapter_id", QString::number(last->id)},
            {"last_update_chapter_name", last->name},
        });
    }
    return SiteContext::php(QJsonObject{{"data", data}});
}

QJsonObject SiteCatalogueApi::shelfItem(const SiteCatalogue::Comic &c, qint64 userId, qint64 addTime,
                                        const SiteHttpRequest &r)
{
    const auto read = m_ctx.db.select("SELECT chapter_id FROM readlog WHERE user_id=? AND comic_id=? ORDER BY time DESC,"
                                      " page_index DESC LIMIT 1",
                                      {userId, c.id});
    const SiteCatalogue::Chapter *readChapter = read.isEmpty() ? nullptr : m_ctx.catalogue.chapter(read.first().at(0).toLongLong());
    const SiteCatalogue::Chapter *last = c.latestOutAt(SiteContext::now());
    const qint64 lastUpdateTime = last ? last->effectivePassTime() : 0;
    const int sort = lastUpdateTime > addTime ? 2 : (readChapter ? 0 : 1);
    return QJsonObject{
        {"comic_id", QString::number(c.id)},
        {"name", c.name},
        {"cover", m_ctx.coverUrl(r, c.id)},
        {"first_letter", c.firstLetter},
        {"last_update_time", lastUpdateTime},
        {"last_update_chapter_id", last ? QString::number(last->id) : QString()},
        {"last_update_chapter_name", last ? last->name : QString()},
        {"last_read_chapter_id", readChapter ? QString::number(readChapter->id) : QString()},
        {"last_read_chapter_name", readChapter ? readChapter->name : QString()},
        {"add_time", addTime},
        {"sort", sort},
    };
}

SiteHttpResponse SiteCatalogueApi::favourites(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录"));
    if (!r.has(QStringLiteral("data")))
        return SiteContext::phpRefusal(QStringLiteral("缺少参数 data"));
    // Form bodies may arrive with "+" unescaped, which decodes to a space.
    QByteArray encoded = r.param(QStringLiteral("data")).toLatin1();
    encoded.replace(' ', '+');
    const auto decoded = QByteArray::fromBase64Encoding(encoded, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return SiteContext::phpRefusal(QStringLiteral("数据格式错误：data 不是 Base64"));
    const QString text = QString::fromUtf8(*decoded);
    struct Change
    {
        qint64 comic;
        bool add;
        qint64 time;
    };
    QList<Change> changes;
    for (const QString &record : text.split(QStringLiteral("||"), Qt::SkipEmptyParts)) {
        const QStringList parts = record.split(QLatin1Char('|'));
        qint64 id = 0, time = 0;
        if (parts.size() != 3 || !SiteContext::readId(parts.at(0), &id) || !SiteContext::readId(parts.at(2), &time)
            || (parts.at(1) != QLatin1String("add") && parts.at(1) != QLatin1String("delete")))
            return SiteContext::phpRefusal(QStringLiteral("数据格式错误：%1").arg(record.left(40)));
        changes.append({id, parts.at(1) == QLatin1String("add"), time});
    }
    m_ctx.db.begin();
    for (const Change &ch : std::as_const(changes)) {
        if (!m_ctx.catalogue.comic(ch.comic))
            continue; // comics the site no longer has are dropped quietly
        if (ch.add)
            m_ctx.db.run("INSERT OR IGNORE INTO shelf(user_id, comic_id, add_time) VALUES(?,?,?)",
                         {user->id, ch.comic, ch.time > 0 ? ch.time : SiteContext::now()});
        else
            m_ctx.db.run("DELETE FROM shelf WHERE user_id=? AND comic_id=?", {user->id, ch.comic});
    }
    m_ctx.db.commit();
    QJsonArray data;
    const auto rows = m_ctx.db.select("SELECT comic_id, add_time FROM shelf WHERE user_id=? ORDER BY add_time DESC, comic_id",
                                      {user->id});
    for (const auto &row : rows) {
        if (const SiteCatalogue::Comic *c = m_ctx.catalogue.comic(row.at(0).toLongLong()))
            data.append(shelfItem(*c, user->id, row.at(1).toLongLong(), r));
    }
    return SiteContext::php(QJsonObject{{"data", data}, {"total", qint64(data.size())}}, 1, QStringLiteral("同步成功"));
}

SiteHttpResponse SiteCatalogueApi::newVersion(const SiteHttpRequest &r)
{
    if (!r.has(QStringLiteral("target")) || !r.has(QStringLiteral("from")))
        return SiteContext::v3Refusal(QStringLiteral("缺少参数 target 或 from"));
    return SiteContext::v3(QJsonObject{
        {"from", 0},
        {"auto_update", 1},
        {"name", QStringLiteral("3.5")},
        {"update_content", QStringLiteral("1. 阅读器翻页更流畅\n2. 修复了书架同步的若干问题")},
        {"url", m_ctx.base(r) + QStringLiteral("web/event/download.html")},
    });
}

SiteHttpResponse SiteCatalogueApi::oldVersion(const SiteHttpRequest &r)
{
    return SiteContext::php(QJsonObject{
        {"version", QStringLiteral("3.5")},
        {"name", QStringLiteral("3.5")},
        {"update_content", QStringLiteral("1. 阅读器翻页更流畅\n2. 修复了书架同步的若干问题")},
        {"url", m_ctx.base(r) + QStringLiteral("web/event/download.html")},
    });
}

SiteHttpResponse SiteCatalogueApi::pushToken(const SiteHttpRequest &r)
{
    static const QRegularExpression tokenRe(QStringLiteral("^[0-9A-Fa-f]{8,200}$"));
    const QString token = r.param(QStringLiteral("token"));
    qint64 userId = 0;
    if (!tokenRe.match(token).hasMatch())
        return SiteContext::phpRefusal(QStringLiteral("参数错误：token"));
    if (!SiteContext::readId(r.param(QStringLiteral("user_id")), &userId) || !m_ctx.user(userId))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：user_id"));
    m_ctx.db.run("INSERT OR REPLACE INTO meta(name, value) VALUES(?, ?)", {QStringLiteral("token:%1").arg(userId), token});
    return SiteContext::php(QJsonObject{}, 1, QStringLiteral("注册成功"));
}
