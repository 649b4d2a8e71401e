#include "SiteContext.h"

#include "SiteLog.h"
#include "SiteRandom.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QRegularExpression>

namespace {
const char *const kSchema = R"SQL(
CREATE TABLE IF NOT EXISTS meta(name TEXT PRIMARY KEY, value TEXT);
CREATE TABLE IF NOT EXISTS users(user_id INTEGER PRIMARY KEY, username TEXT UNIQUE, password TEXT,
  nickname TEXT, group_user TEXT DEFAULT '0', level INTEGER DEFAULT 1, vip_level INTEGER DEFAULT 0,
  coin INTEGER DEFAULT 0, ticket INTEGER DEFAULT 0, site TEXT DEFAULT 'quorin', sex TEXT DEFAULT '1',
  mobile TEXT, open_site TEXT, open_id TEXT, created INTEGER);
CREATE UNIQUE INDEX IF NOT EXISTS users_open ON users(open_site, open_id);
CREATE TABLE IF NOT EXISTS keys(key TEXT PRIMARY KEY, user_id INTEGER, created INTEGER);
CREATE TABLE IF NOT EXISTS purchases(user_id INTEGER, chapter_id INTEGER, comic_id INTEGER, price INTEGER,
  time INTEGER, PRIMARY KEY(user_id, chapter_id));
CREATE TABLE IF NOT EXISTS shelf(user_id INTEGER, comic_id INTEGER, add_time INTEGER, PRIMARY KEY(user_id, comic_id));
CREATE TABLE IF NOT EXISTS tucao(tucao_id INTEGER PRIMARY KEY AUTOINCREMENT, image_id INTEGER, comic_id INTEGER,
  user_id INTEGER, nickname TEXT, content TEXT, color INTEGER, back INTEGER, x INTEGER, y INTEGER, w INTEGER,
  h INTEGER, create_time INTEGER);
CREATE INDEX IF NOT EXISTS tucao_image ON tucao(image_id, tucao_id);
CREATE INDEX IF NOT EXISTS tucao_comic ON tucao(comic_id);
CREATE TABLE IF NOT EXISTS comments(comment_id INTEGER PRIMARY KEY AUTOINCREMENT, thread_id INTEGER,
  comic_id INTEGER, parent_id INTEGER, user_id INTEGER, nickname TEXT, sex TEXT, group_user INTEGER,
  level INTEGER, content TEXT, floor INTEGER, create_time INTEGER);
CREATE INDEX IF NOT EXISTS comments_thread ON comments(thread_id, parent_id, comment_id);
CREATE INDEX IF NOT EXISTS comments_parent ON comments(parent_id, comment_id);
CREATE TABLE IF NOT EXISTS grades(user_id INTEGER, comic_id INTEGER, grade INTEGER, time INTEGER,
  PRIMARY KEY(user_id, comic_id));
CREATE TABLE IF NOT EXISTS tickets(id INTEGER PRIMARY KEY AUTOINCREMENT, user_id INTEGER, comic_id INTEGER,
  num INTEGER, content TEXT, time INTEGER);
CREATE TABLE IF NOT EXISTS readlog(user_id INTEGER, image_id INTEGER, chapter_id INTEGER, comic_id INTEGER,
  page_index INTEGER, time INTEGER, PRIMARY KEY(user_id, image_id));
CREATE TABLE IF NOT EXISTS orders(order_id TEXT PRIMARY KEY, user_id INTEGER, product TEXT, product_num INTEGER,
  rmb INTEGER, way TEXT, created INTEGER, paid INTEGER DEFAULT 0);
CREATE TABLE IF NOT EXISTS coinlog(id INTEGER PRIMARY KEY AUTOINCREMENT, user_id INTEGER, amount INTEGER,
  reason TEXT, time INTEGER);
CREATE TABLE IF NOT EXISTS codes(mobile TEXT PRIMARY KEY, code TEXT, time INTEGER);
CREATE TABLE IF NOT EXISTS partner_sessions(session_id TEXT PRIMARY KEY, open_id TEXT, nickname TEXT, created INTEGER);
CREATE TABLE IF NOT EXISTS keywords(tag TEXT PRIMARY KEY, count INTEGER);
)SQL";

const char *const kNicknames[] = {"路过的猫", "吐槽君", "夜读人", "小透明", "追更狂魔", "漫画迷", "不吃香菜",
                                  "今天也要加油", "月光", "阿飞", "", "汽水", "熬夜冠军", "路人甲", "一只鸽子",
                                  "老书虫", "星星眼", "", "北极熊", "隔壁老王"};
const char *const kTucao[] = {
    "哈哈哈哈哈", "这里画得太好了！", "前方高能", "泪目了", "主角好帅", "这表情笑死我了", "伏笔在这里",
    "作者太会了", "我猜下一页要反转", "打卡", "这个分镜绝了", "好可爱！", "啊啊啊啊", "救命", "我就知道",
    "第一次看到这里的时候哭了", "名场面", "二刷路过", "这配色好舒服", "心疼", "666", "期待下一话",
};
const char *const kComments[] = {
    "这部作品真的太好看了，每周都在等更新！", "画风越来越好了，剧情也很有意思。", "支持作者，月票已投。",
    "有没有人和我一样是从第一话追到现在的？", "这一话信息量好大，需要再看一遍。", "结局会是什么样呢，好紧张。",
    "配角的故事线也很精彩，希望多画一些。", "作者加油！身体最重要。", "推荐给朋友了，他们也入坑了。",
    "这个反转我真没想到。", "剧情节奏有点慢，不过画面很美。", "最喜欢的角色终于出场了！",
};
const char *const kReplies[] = {"同感！", "我也是", "+1", "说得太对了", "哈哈哈确实", "楼上真相了",
                                "一起等更新", "不同意，我觉得还好", "握手", "前排"};
}

SiteContext::SiteContext(SiteCatalogue &cat, SiteDatabase &database, const QString &fallbackBase)
    : catalogue(cat), db(database), m_fallbackBase(fallbackBase)
{
}

qint64 SiteContext::now()
{
    return QDateTime::currentSecsSinceEpoch();
}

QString SiteContext::base(const SiteHttpRequest &request) const
{
    // Answers name this server the way the client reached it (Host header), so that
    // absolute URLs work behind a port forward too; fall back to the listen address.
    static const QRegularExpression hostRe(QStringLiteral("^[A-Za-z0-9.\\-]+(:[0-9]{1,5})?$|^\\[[0-9A-Fa-f:.]+\\](:[0-9]{1,5})?$"));
    const QString host = QString::fromLatin1(request.header("Host"));
    if (!host.isEmpty() && hostRe.match(host).hasMatch())
        return QStringLiteral("http://%1/").arg(host);
    return m_fallbackBase;
}

qint64 SiteContext::storedAnchor(SiteDatabase &db)
{
    if (!db.execScript(kSchema))
        return -1;
    const QVariant v = db.value("SELECT value FROM meta WHERE name='anchor'");
    if (v.isValid())
        return v.toString().toLongLong();
    const qint64 anchor = now() / 3600 * 3600;
    if (!db.run("INSERT OR REPLACE INTO meta(name, value) VALUES('anchor', ?)", {QString::number(anchor)}))
        return -1;
    return anchor;
}

bool SiteContext::initSchema()
{
    return db.execScript(kSchema);
}

void SiteContext::seedIfNeeded()
{
    if (db.value("SELECT value FROM meta WHERE name='seeded'").isValid())
        return;
    db.begin();
    const qint64 t = now();
    struct Demo
    {
        qint64 id;
        const char *name, *password, *nick, *group;
        int level, vipLevel, coin, ticket;
    };
    const Demo demos[] = {
        {100001, "reader", "reader123", "读者小明", "0", 3, 0, 100, 3},
        {100002, "rich", "rich123", "土豪读者", "0", 8, 0, 100000, 20},
        {100003, "vip", "vip123", "会员读者", "1", 5, 3, 500, 5},
    };
    for (const Demo &d : demos) {
        db.run("INSERT OR IGNORE INTO users(user_id, username, password, nickname, group_user, level, vip_level, coin,"
               " ticket, site, sex, created) VALUES(?,?,?,?,?,?,?,?,?,'quorin','1',?)",
               {d.id, QString::fromUtf8(d.name), QString::fromUtf8(d.password), QString::fromUtf8(d.nick),
                QString::fromUtf8(d.group), d.level, d.vipLevel, d.coin, d.ticket, t});
    }
    // The authors of the demo tucao and comments: accounts nobody can sign in to.
    for (int i = 0; i < 20; ++i) {
        db.run("INSERT OR IGNORE INTO users(user_id, username, password, nickname, group_user, level, coin, ticket,"
               " site, sex, created) VALUES(?,?,NULL,?,?,?,0,0,'quorin',?,?)",
               {90001 + i, QStringLiteral("demo%1").arg(i + 1), QString::fromUtf8(kNicknames[i]),
                i % 4 == 0 ? QStringLiteral("1") : QStringLiteral("0"), 1 + i % 9,
                i % 2 ? QStringLiteral("2") : QStringLiteral("1"), t});
    }
    for (const SiteCatalogue::Keyword &k : catalogue.keywords())
        db.run("INSERT OR IGNORE INTO keywords(tag, count) VALUES(?, ?)", {k.tag, k.count});
    seedTucao();
    seedComments();
    seedWallet();
    db.run("INSERT OR REPLACE INTO meta(name, value) VALUES('seeded', ?)", {QString::number(catalogue.seed())});
    db.commit();
}

void SiteContext::seedTucao()
{
    SiteRandom rng(0x7AC0ull + catalogue.seed());
    const int phraseCount = int(sizeof(kTucao) / sizeof(kTucao[0]));
    for (const SiteCatalogue::Comic &c : catalogue.comics()) {
        for (const SiteCatalogue::Chapter &ch : c.chapters) {
            for (const SiteCatalogue::Page &p : ch.pages) {
                int n = 0;
                // The opening page of the first chapter of a few comics is crowded.
                if (ch.index == 0 && p.index == 0 && (c.ordinal == 0 || c.ordinal == 2 || c.ordinal == 7))
                    n = 205 + c.ordinal * 9;
                else if (rng.chance(25))
                    n = int(rng.range(1, 10));
                for (int i = 0; i < n; ++i) {
                    const int w = int(rng.range(120, 300));
                    const int h = int(rng.range(40, 90));
                    const int author = int(rng.range(0, 19));
                    db.run("INSERT INTO tucao(image_id, comic_id, user_id, nickname, content, color, back, x, y, w, h,"
                           " create_time) VALUES(?,?,?,?,?,0,0,?,?,?,?,?)",
                           {p.id, c.id, 90001 + author, QString::fromUtf8(kNicknames[author]),
                            QString::fromUtf8(kTucao[rng.range(0, phraseCount - 1)]),
                            rng.range(0, qMax(0, p.width - w)), rng.range(0, qMax(0, p.height - h)), w, h,
                            catalogue.anchor() - rng.range(0, 90 * SiteCatalogue::kDay)});
                }
            }
        }
    }
}

// A wallet history of "rich" long enough for every list to take three pages:
// 45 coin changes, 25 top-ups (paid), 30 ticket casts, over the last 60 days.
void SiteContext::seedWallet()
{
    constexpr qint64 rich = 100002;
    SiteRandom rng(0xC01Eull + catalogue.seed());
    const int replyCount = int(sizeof(kReplies) / sizeof(kReplies[0]));
    qint64 t = catalogue.anchor() - 60 * SiteCatalogue::kDay;
    for (int i = 0; i < 45; ++i) {
        t += rng.range(600, SiteCatalogue::kDay);
        const bool topUp = i % 3 == 0;
        const SiteCatalogue::Comic &c = rng.pick(catalogue.comics());
        db.run("INSERT INTO coinlog(user_id, amount, reason, time) VALUES(?,?,?,?)",
               {rich, topUp ? 3000 : -int(rng.range(1, 6)) * 10,
                topUp ? QStringLiteral("充值") : QStringLiteral("购买《%1》1个章节").arg(c.name), t});
        if (i < 25) {
            const bool vip = i % 5 == 4;
            db.run("INSERT INTO orders(order_id, user_id, product, product_num, rmb, way, created, paid)"
                   " VALUES(?,?,?,?,?,'web',?,1)",
                   {QStringLiteral("Q%1%2").arg(t).arg(100000 + i), rich, vip ? QStringLiteral("vip") : QStringLiteral("coin"),
                    vip ? 1 : 3000, vip ? 15 : 30, t});
        }
        if (i < 30)
            db.run("INSERT INTO tickets(user_id, comic_id, num, content, time) VALUES(?,?,?,?,?)",
                   {rich, c.id, int(rng.range(1, 3)), QString::fromUtf8(kReplies[i % replyCount]), t});
    }
}

void SiteContext::seedComments()
{
    SiteRandom rng(0xC0AAull + catalogue.seed());
    const int commentCount = int(sizeof(kComments) / sizeof(kComments[0]));
    const int replyCount = int(sizeof(kReplies) / sizeof(kReplies[0]));
    for (const SiteCatalogue::Comic &c : catalogue.comics()) {
        const int n = c.ordinal == 0 ? 45 : int(rng.range(0, 30));
        qint64 t = catalogue.anchor() - 60 * SiteCatalogue::kDay;
        for (int i = 0; i < n; ++i) {
            t += rng.range(600, SiteCatalogue::kDay);
            const int author = int(rng.range(0, 19));
            db.run("INSERT INTO comments(thread_id, comic_id, parent_id, user_id, nickname, sex, group_user, level,"
                   " content, floor, create_time) VALUES(?,?,0,?,?,?,?,?,?,?,?)",
                   {c.threadId, c.id, 90001 + author, QString::fromUtf8(kNicknames[author]),
                    author % 2 ? QStringLiteral("2") : QStringLiteral("1"), author % 4 == 0 ? 1 : 0, 1 + author % 9,
                    QString::fromUtf8(kComments[rng.range(0, commentCount - 1)]), i + 1, t});
            const qint64 commentId = db.lastInsertId();
            const int replies = rng.chance(40) ? int(rng.range(1, 6)) : 0;
            for (int j = 0; j < replies; ++j) {
                const int who = int(rng.range(0, 19));
                db.run("INSERT INTO comments(thread_id, comic_id, parent_id, user_id, nickname, sex, group_user, level,"
                       " content, floor, create_time) VALUES(?,?,?,?,?,?,?,?,?,?,?)",
                       {c.threadId, c.id, commentId, 90001 + who, QString::fromUtf8(kNicknames[who]),
                        who % 2 ? QStringLiteral("2") : QStringLiteral("1"), who % 4 == 0 ? 1 : 0, 1 + who % 9,
                        QString::fromUtf8(kReplies[rng.range(0, replyCount - 1)]), j + 1, t + 60 * (j + 1)});
            }
        }
    }
}

std::optional<SiteContext::User> SiteContext::user(qint64 id)
{
    const auto rows = db.select("SELECT user_id, username, nickname, group_user, site, sex, level, vip_level, coin,"
                                " ticket FROM users WHERE user_id=?",
                                {id});
    if (rows.isEmpty())
        return std::nullopt;
    const auto &r = rows.first();
    User u;
    u.id = r.at(0).toLongLong();
    u.username = r.at(1).toString();
    u.nickname = r.at(2).toString();
    u.groupUser = r.at(3).toString();
    u.site = r.at(4).toString();
    u.sex = r.at(5).toString();
    u.level = r.at(6).toInt();
    u.vipLevel = r.at(7).toInt();
    u.coin = r.at(8).toInt();
    u.ticket = r.at(9).toInt();
    return u;
}

std::optional<SiteContext::User> SiteContext::userByKey(const QString &key)
{
    if (key.isEmpty() || key.size() > 128)
        return std::nullopt;
    const QVariant id = db.value("SELECT user_id FROM keys WHERE key=?", {key});
    if (!id.isValid())
        return std::nullopt;
    return user(id.toLongLong());
}

std::optional<SiteContext::User> SiteContext::currentUser(const SiteHttpRequest &request)
{
    return userByKey(request.param(QStringLiteral("key")));
}

QString SiteContext::issueKey(qint64 userId)
{
    const QString key = QString::number(QRandomGenerator::system()->generate64(), 16)
        + QString::number(QRandomGenerator::system()->generate64(), 16);
    db.run("INSERT INTO keys(key, user_id, created) VALUES(?,?,?)", {key, userId, now()});
    return key;
}

QJsonObject SiteContext::userJson(const User &u, const SiteHttpRequest &request) const
{
    return QJsonObject{
        {"user_id", QString::number(u.id)},
        {"username", u.username},
        {"nickname", u.nickname},
        {"face", faceUrl(request, u.id)},
        {"site", u.site},
        {"sex", u.sex},
        {"group_user", u.groupUser},
        {"level", u.level},
        {"vip_level", u.vipLevel},
        {"coin", u.coin},
        {"ticket", u.ticket},
    };
}

void SiteContext::addCoins(qint64 userId, int amount, const QString &reason)
{
    db.run("UPDATE users SET coin = coin + ? WHERE user_id=?", {amount, userId});
    db.run("INSERT INTO coinlog(user_id, amount, reason, time) VALUES(?,?,?,?)", {userId, amount, reason, now()});
}

bool SiteContext::payOrder(const QString &orderId)
{
    const auto rows = db.select("SELECT user_id, product, product_num FROM orders WHERE order_id=? AND paid=0", {orderId});
    if (rows.isEmpty())
        return false;
    const qint64 userId = rows.first().at(0).toLongLong();
    const int num = rows.first().at(2).toInt();
    db.begin();
    db.run("UPDATE orders SET paid=1 WHERE order_id=?", {orderId});
    if (rows.first().at(1).toString() == QLatin1String("vip")) {
        db.run("UPDATE users SET group_user='1', vip_level=MAX(vip_level, 1), ticket = ticket + ? WHERE user_id=?",
               {num * 2, userId});
    } else {
        addCoins(userId, num, QStringLiteral("充值"));
    }
    db.commit();
    return true;
}

QString SiteContext::coverUrl(const SiteHttpRequest &r, qint64 comicId, bool original) const
{
    return base(r) + QStringLiteral("images/cover/%1%2.jpg").arg(comicId).arg(original ? QStringLiteral("_ori") : QString());
}

QString SiteContext::pageUrl(const SiteHttpRequest &r, const SiteCatalogue::Page &page, bool webp) const
{
    const QString ext = webp ? QStringLiteral("webp") : QString::fromLatin1(page.format);
    return base(r) + QStringLiteral("images/page/%1.%2").arg(page.id).arg(ext);
}

QString SiteContext::faceUrl(const SiteHttpRequest &r, qint64 userId) const
{
    return base(r) + QStringLiteral("images/face/%1.png").arg(userId);
}

QString SiteContext::slideUrl(const SiteHttpRequest &r, int number) const
{
    return base(r) + QStringLiteral("images/slide/%1.jpg").arg(number);
}

SiteHttpResponse SiteContext::php(QJsonObject payload, int code, const QString &message)
{
    payload.insert(QStringLiteral("code"), code);
    if (!payload.contains(QStringLiteral("message")))
        payload.insert(QStringLiteral("message"), message);
    return SiteHttpResponse::json(payload);
}

SiteHttpResponse SiteContext::phpRefusal(const QString &message, int code)
{
    return SiteHttpResponse::json(QJsonObject{{"code", code}, {"message", message}});
}

SiteHttpResponse SiteContext::v3(const QJsonValue &returnData, const QString &message)
{
    QJsonObject data{{"stateCode", 1}, {"message", message}};
    if (!returnData.isUndefined() && !returnData.isNull())
        data.insert(QStringLiteral("returnData"), returnData);
    return SiteHttpResponse::json(QJsonObject{{"code", 1}, {"data", data}});
}

SiteHttpResponse SiteContext::v3Refusal(const QString &message, int stateCode)
{
    return SiteHttpResponse::json(
        QJsonObject{{"code", 1}, {"data", QJsonObject{{"stateCode", stateCode}, {"message", message}}}});
}

bool SiteContext::readId(const QString &text, qint64 *out)
{
    if (text.isEmpty() || text.size() > 18)
        return false;
    for (QChar ch : text) {
        if (ch < QLatin1Char('0') || ch > QLatin1Char('9'))
            return false;
    }
    *out = text.toLongLong();
    return true;
}

bool SiteContext::readInt(const QString &text, int *out, int min, int max)
{
    const QString t = text.trimmed();
    if (t.isEmpty() || t.size() > 10)
        return false;
    for (int i = 0; i < t.size(); ++i) {
        const QChar ch = t.at(i);
        if (!(ch.isDigit() || (i == 0 && ch == QLatin1Char('-') && t.size() > 1)))
            return false;
    }
    bool ok = false;
    const qint64 v = t.toLongLong(&ok);
    if (!ok || v < min || v > max)
        return false;
    *out = int(v);
    return true;
}

qint64 SiteContext::tucaoTotal(qint64 comicId)
{
    return db.value("SELECT COUNT(*) FROM tucao WHERE comic_id=?", {comicId}, 0).toLongLong();
}

qint64 SiteContext::commentTotal(qint64 threadId)
{
    return db.value("SELECT COUNT(*) FROM comments WHERE thread_id=? AND parent_id=0", {threadId}, 0).toLongLong();
}

qint64 SiteContext::ticketTotal(const SiteCatalogue::Comic &comic)
{
    return comic.baseTickets + db.value("SELECT SUM(num) FROM tickets WHERE comic_id=?", {comic.id}, 0).toLongLong();
}

void SiteContext::gradeFigures(const SiteCatalogue::Comic &comic, qint64 *count, double *score)
{
    const auto rows = db.select("SELECT COUNT(*), SUM(grade) FROM grades WHERE comic_id=?", {comic.id});
    const qint64 n = rows.isEmpty() ? 0 : rows.first().at(0).toLongLong();
    const qint64 stars = rows.isEmpty() ? 0 : rows.first().at(1).toLongLong();
    *count = comic.baseGradeCount + n;
    const double total = comic.baseGradeSum + 2.0 * double(stars);
    *score = *count > 0 ? qRound(total / double(*count) * 10.0) / 10.0 : 0.0;
}

qint64 SiteContext::favourites(const SiteCatalogue::Comic &comic)
{
    return comic.baseFavourites + db.value("SELECT COUNT(*) FROM shelf WHERE comic_id=?", {comic.id}, 0).toLongLong();
}

bool SiteContext::hasBought(qint64 userId, qint64 chapterId)
{
    return db.value("SELECT 1 FROM purchases WHERE user_id=? AND chapter_id=?", {userId, chapterId}).isValid();
}

bool SiteContext::sealed(qint64 passTime, qint64 now)
{
    const qint64 d = now - passTime;
    return d >= -86399 && d <= 604799;
}
