#include "SiteReaderApi.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSet>

void SiteReaderApi::registerRoutes(SiteRouter &router)
{
    router.add(QStringLiteral("ios/pad/chapter_127.php"), [this](const SiteHttpRequest &r) { return chapter(r); });
    router.add(QStringLiteral("ios/pad/image_log.php"), [this](const SiteHttpRequest &r) { return readLog(r); });
    router.add(QStringLiteral("v3/app/ios/pad/buyChapter/buy"), [this](const SiteHttpRequest &r) { return buyV3(r); });
    router.add(QStringLiteral("ios/pad/buy_chapter.php"), [this](const SiteHttpRequest &r) { return buyPhp(r); });
}

SiteHttpResponse SiteReaderApi::chapter(const SiteHttpRequest &r)
{
    if (!r.has(QStringLiteral("chapter_id")))
        return SiteContext::phpRefusal(QStringLiteral("缺少参数 chapter_id"));
    qint64 id = 0;
    if (!SiteContext::readId(r.param(QStringLiteral("chapter_id")), &id))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：chapter_id"));
    const QString webpText = r.param(QStringLiteral("webp"));
    if (!webpText.isEmpty() && webpText != QLatin1String("0") && webpText != QLatin1String("1"))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：webp"));
    const SiteCatalogue::Chapter *ch = m_ctx.catalogue.chapter(id);
    if (!ch)
        return SiteContext::phpRefusal(QStringLiteral("章节不存在"));
    const SiteCatalogue::Comic *comic = m_ctx.catalogue.comic(ch->comicId);
    const auto user = m_ctx.currentUser(r);
    if (ch->type == 2 && ch->price > 0) {
        if (!user)
            return SiteContext::phpRefusal(QStringLiteral("该章节为付费章节，请先登录"));
        if (!m_ctx.hasBought(user->id, ch->id))
            return SiteContext::phpRefusal(QStringLiteral("该章节为付费章节，请购买后阅读"));
    }
    if (comic->isVip == 3 && SiteContext::sealed(ch->effectivePassTime(), SiteContext::now()) && !(user && user->isVip()))
        return SiteContext::phpRefusal(QStringLiteral("即将阅读的VIP章节暂时被封印啦,7天后解封,成为Quorin会员即刻解封哦~"));

    const bool webp = webpText == QLatin1String("1");
    QHash<qint64, qint64> tucao;
    const auto rows = m_ctx.db.select("SELECT image_id, COUNT(*) FROM tucao WHERE image_id BETWEEN ? AND ? GROUP BY image_id",
                                      {ch->pages.first().id, ch->pages.last().id});
    for (const auto &row : rows)
        tucao.insert(row.at(0).toLongLong(), row.at(1).toLongLong());
    QJsonArray data;
    for (const SiteCatalogue::Page &p : ch->pages) {
        data.append(QJsonObject{
            {"image_id", QString::number(p.id)},
            {"location", m_ctx.pageUrl(r, p, webp)},
            {"width", p.width},
            {"height", p.height},
            {"total_tucao", tucao.value(p.id)},
        });
    }
    return SiteContext::php(QJsonObject{{"comic_id", QString::number(comic->id)},
                                        {"chapter_id", QString::number(ch->id)},
                                        {"name", ch->name},
                                        {"data", data}});
}

SiteHttpResponse SiteReaderApi::readLog(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录"));
    if (!r.has(QStringLiteral("image_ids")))
        return SiteContext::phpRefusal(QStringLiteral("缺少参数 image_ids"));
    QByteArray encoded = r.param(QStringLiteral("image_ids")).toLatin1();
    encoded.replace(' ', '+');
    const auto decoded = QByteArray::fromBase64Encoding(encoded, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return SiteContext::phpRefusal(QStringLiteral("数据格式错误：image_ids 不是 Base64"));
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(*decoded, &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject())
        return SiteContext::phpRefusal(QStringLiteral("数据格式错误：image_ids 不是 JSON 对象"));
    static const QRegularExpression valueRe(QStringLiteral("^([0-9]{1,6})_([0-9]{1,12})$"));
    const QJsonObject root = doc.object();
    int recorded = 0;
    const qint64 now = SiteContext::now();
    m_ctx.db.begin();
    for (auto it = root.begin(); it != root.end(); ++it) {
        if (!it.key().startsWith(QLatin1Char('c')) || !it->isObject())
            continue;
        const QJsonObject pages = it->toObject();
        for (auto p = pages.begin(); p != pages.end(); ++p) {
            qint64 imageId = 0;
            if (!p.key().startsWith(QLatin1Char('i')) || !SiteContext::readId(p.key().mid(1), &imageId))
                continue;
            const auto m = valueRe.match(p->toString());
            const SiteCatalogue::Chapter *chapter = nullptr;
            const SiteCatalogue::Comic *comic = nullptr;
            if (!m.hasMatch() || !m_ctx.catalogue.page(imageId, &chapter, &comic))
                continue;
            m_ctx.db.run("INSERT OR REPLACE INTO readlog(user_id, image_id, chapter_id, comic_id, page_index, time)"
                         " VALUES(?,?,?,?,?,?)",
                         {user->id, imageId, chapter->id, comic->id, m.captured(1).toInt(), now});
            ++recorded;
        }
    }
    m_ctx.db.commit();
    return SiteContext::php(QJsonObject{{"count", recorded}}, 1, QStringLiteral("ok"));
}

QString SiteReaderApi::buy(const SiteContext::User &user, const QString &comicText, const QString &chapterText,
                           int *cost, int *coinsLeft, QStringList *bought)
{
    qint64 comicId = 0;
    if (comicText.isEmpty())
        return QStringLiteral("缺少参数 comic_id");
    if (!SiteContext::readId(comicText, &comicId))
        return QStringLiteral("参数错误：comic_id");
    const SiteCatalogue::Comic *comic = m_ctx.catalogue.comic(comicId);
    if (!comic)
        return QStringLiteral("漫画不存在");
    if (chapterText.isEmpty())
        return QStringLiteral("缺少参数 chapter");
    // "chapter" is a JSON array of chapter ids (strings or numbers); a bare id or a
    // comma-separated list is taken too.
    QStringList ids;
    const QJsonDocument doc = QJsonDocument::fromJson(chapterText.toUtf8());
    if (doc.isArray()) {
        for (const QJsonValue &v : doc.array()) {
            if (v.isString())
                ids << v.toString();
            else if (v.isDouble() && v.toDouble() == double(qint64(v.toDouble())))
                ids << QString::number(qint64(v.toDouble()));
            else
                return QStringLiteral("参数错误：chapter");
        }
    } else {
        ids = chapterText.split(QLatin1Char(','), Qt::SkipEmptyParts);
    }
    if (ids.isEmpty() || ids.size() > 1000)
        return QStringLiteral("参数错误：chapter");
    QList<const SiteCatalogue::Chapter *> toBuy;
    QSet<qint64> seen;
    for (const QString &text : std::as_const(ids)) {
        qint64 id = 0;
        if (!SiteContext::readId(text.trimmed(), &id))
            return QStringLiteral("参数错误：chapter");
        const SiteCatalogue::Chapter *ch = m_ctx.catalogue.chapter(id);
        if (!ch || ch->comicId != comic->id)
            return QStringLiteral("章节不存在：%1").arg(id);
        if (ch->type != 2)
            return QStringLiteral("该章节是免费章节：%1").arg(ch->name);
        if (seen.contains(id) || m_ctx.hasBought(user.id, id))
            continue;
        seen.insert(id);
        toBuy.append(ch);
    }
    if (toBuy.isEmpty())
        return QStringLiteral("这些章节已经购买过了");
    int total = 0;
    for (const SiteCatalogue::Chapter *ch : std::as_const(toBuy))
        total += ch->price;
    if (user.coin < total)
        return QStringLiteral("quorin币余额不足，需要%1个quorin币，您当前有%2个").arg(total).arg(user.coin);
    m_ctx.db.begin();
    for (const SiteCatalogue::Chapter *ch : std::as_const(toBuy)) {
        m_ctx.db.run("INSERT INTO purchases(user_id, chapter_id, comic_id, price, time) VALUES(?,?,?,?,?)",
                     {user.id, ch->id, comic->id, ch->price, SiteContext::now()});
        bought->append(QString::number(ch->id));
    }
    if (total > 0)
        m_ctx.addCoins(user.id, -total, QStringLiteral("购买《%1》%2个章节").arg(comic->name).arg(toBuy.size()));
    m_ctx.db.commit();
    *cost = total;
    *coinsLeft = m_ctx.user(user.id)->coin;
    return {};
}

SiteHttpResponse SiteReaderApi::buyV3(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::v3Refusal(QStringLiteral("请先登录"));
    const QString comic = r.has(QStringLiteral("comicId")) ? r.param(QStringLiteral("comicId")) : r.param(QStringLiteral("comic_id"));
    int cost = 0, left = 0;
    QStringList bought;
    const QString refusal = buy(*user, comic, r.param(QStringLiteral("chapter")), &cost, &left, &bought);
    if (!refusal.isEmpty())
        return SiteContext::v3Refusal(refusal);
    return SiteContext::v3(QJsonObject{{"cost", cost}, {"coin", left}, {"chapters", QJsonArray::fromStringList(bought)}},
                           QStringLiteral("购买成功"));
}

SiteHttpResponse SiteReaderApi::buyPhp(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录"));
    int cost = 0, left = 0;
    QStringList bought;
    const QString refusal = buy(*user, r.param(QStringLiteral("comic_id")), r.param(QStringLiteral("chapter")), &cost,
                                &left, &bought);
    if (!refusal.isEmpty())
        return SiteContext::phpRefusal(refusal);
    return SiteContext::php(QJsonObject{{"cost", cost}, {"coin", left}, {"chapters", QJsonArray::fromStringList(bought)}},
                            1, QStringLiteral("购买成功"));
}
