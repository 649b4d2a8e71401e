#include "SitePaymentApi.h"

#include <QJsonArray>
#include <QRandomGenerator>
#include <QUrl>

namespace {
constexpr int kLogPageSize = 20;
// The client's own URL scheme, by which the browser hands a paid order back to it.
const QString kAppScheme = QStringLiteral("quorin");

QByteArray appReturnUrl(const QString &orderId, bool paid)
{
    return kAppScheme.toLatin1() + "://pay?order_id=" + QUrl::toPercentEncoding(orderId) + "&state=" + (paid ? "1" : "0");
}

SiteHttpResponse htmlPage(const QString &body, int status = 200)
{
    const QString page = QStringLiteral(
        "<!DOCTYPE html>\n<html lang=\"zh-CN\"><head><meta charset=\"utf-8\">"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"><title>Quorin 收银台</title>"
        "<style>body{font-family:sans-serif;background:#f4f1ea;color:#333;margin:0}"
        "main{max-width:420px;margin:48px auto;background:#fff;border-radius:12px;padding:24px 28px}"
        "dt{color:#888;font-size:14px}dd{margin:0 0 12px;font-size:18px}"
        "a.button{display:inline-block;padding:10px 28px;border-radius:6px;text-decoration:none;margin-right:12px}"
        "a.confirm{background:#e8553e;color:#fff}a.cancel{background:#ddd;color:#333}"
        ".note{color:#999;font-size:12px;margin-top:24px}</style></head>"
        "<body><main><h1>Quorin 收银台</h1>%1</main></body></html>\n").arg(body);
    return SiteHttpResponse::bytes(page.toUtf8(), "text/html; charset=utf-8", status);
}

// "coin" / "1": coins, product_num coins, 100 coins a yuan; "vip" / "2":
// membership, product_num months.
QString productName(const QString &product)
{
    if (product == QLatin1String("coin") || product == QLatin1String("1"))
        return QStringLiteral("coin");
    if (product == QLatin1String("vip") || product == QLatin1String("2"))
        return QStringLiteral("vip");
    return {};
}
}

void SitePaymentApi::registerRoutes(SiteRouter &router)
{
    router.add(QStringLiteral("v3/app/ios/pad/pay/alipay"), [this](const SiteHttpRequest &r) { return alipay(r); });
    router.add(QStringLiteral("v3/app/ios/pad/pay/alipayStatus"), [this](const SiteHttpRequest &r) { return alipayStatus(r); });
    router.add(QStringLiteral("v3/app/ios/phone/vip/vipDiscount"), [this](const SiteHttpRequest &r) { return vipDiscount(r); });
    router.add(QStringLiteral("api/index.php"), [this](const SiteHttpRequest &r) { return payHostOrder(r); });
    router.add(QStringLiteral("pay/ajax.php"), [this](const SiteHttpRequest &r) { return payHostAjax(r); });
    router.add(QStringLiteral("pay/cashier.php"), [this](const SiteHttpRequest &r) { return cashier(r); });
    router.add(QStringLiteral("harrowpay/vip_member_coin_req.php"), [this](const SiteHttpRequest &r) { return partnerOrder(r); });
    router.add(QStringLiteral("android/phone/ticket_log.php"), [this](const SiteHttpRequest &r) { return ticketLog(r); });
    router.add(QStringLiteral("ios/pad/coin_log.php"), [this](const SiteHttpRequest &r) { return coinLog(r); });
    router.add(QStringLiteral("ios/pad/recharge_log.php"), [this](const SiteHttpRequest &r) { return rechargeLog(r); });
}

QJsonArray SitePaymentApi::vipPrices()
{
    return QJsonArray{
        QJsonObject{{"month", 1}, {"rmb", 15}, {"title", QStringLiteral("1个月会员")}, {"discount", QStringLiteral("")}},
        QJsonObject{{"month", 3}, {"rmb", 40}, {"title", QStringLiteral("3个月会员")}, {"discount", QStringLiteral("8.9折")}},
        QJsonObject{{"month", 6}, {"rmb", 75}, {"title", QStringLiteral("6个月会员")}, {"discount", QStringLiteral("8.3折")}},
        QJsonObject{{"month", 12}, {"rmb", 138}, {"title", QStringLiteral("12个月会员")}, {"discount", QStringLiteral("7.7折")}},
    };
}

QString SitePaymentApi::createOrder(qint64 userId, const QString &productText, const QString &numText,
                                    const QString &rmbText, const QString &way, QString *orderId)
{
    const QString product = productName(productText);
    if (product.isEmpty())
        return QStringLiteral("参数错误：product 应为 coin 或 vip");
    int num = 0;
    if (product == QLatin1String("coin") ? !SiteContext::readInt(numText, &num, 1, 1000000)
                                         : !SiteContext::readInt(numText, &num, 1, 12))
        return QStringLiteral("参数错误：product_num");
    int rmb = 0;
    if (!SiteContext::readInt(rmbText, &rmb, 0, 100000))
        return QStringLiteral("参数错误：金额");
    *orderId = QStringLiteral("Q%1%2").arg(SiteContext::now()).arg(QRandomGenerator::global()->bounded(100000, 999999));
    m_ctx.db.run("INSERT INTO orders(order_id, user_id, product, product_num, rmb, way, created, paid) VALUES(?,?,?,?,?,?,?,0)",
                 {*orderId, userId, product, num, rmb, way, SiteContext::now()});
    return {};
}

QJsonObject SitePaymentApi::orderJson(const QString &orderId, const SiteHttpRequest &r)
{
    const auto rows = m_ctx.db.select("SELECT order_id, product, product_num, rmb, created, paid FROM orders WHERE order_id=?",
                                      {orderId});
    if (rows.isEmpty())
        return {};
    const auto &o = rows.first();
    return QJsonObject{
        {"order_id", o.at(0).toString()},
        {"product", o.at(1).toString()},
        {"product_num", o.at(2).toInt()},
        {"rmb", o.at(3).toInt()},
        {"create_time", o.at(4).toLongLong()},
        {"state", o.at(5).toInt()},
        {"pay_url", m_ctx.base(r) + QStringLiteral("pay/cashier.php?order_id=") + orderId},
    };
}

SiteHttpResponse SitePaymentApi::alipay(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::v3Refusal(QStringLiteral("请先登录"));
    QString id;
    const QString refusal = createOrder(user->id, r.param(QStringLiteral("product")), r.param(QStringLiteral("product_num")),
                                        r.param(QStringLiteral("rmb")), QStringLiteral("alipay"), &id);
    if (!refusal.isEmpty())
        return SiteContext::v3Refusal(refusal);
    return SiteContext::v3(orderJson(id, r), QStringLiteral("订单已创建"));
}

SiteHttpResponse SitePaymentApi::alipayStatus(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::v3Refusal(QStringLiteral("请先登录"));
    const QString orderId = r.param(QStringLiteral("order_id"));
    if (orderId.isEmpty())
        return SiteContext::v3Refusal(QStringLiteral("缺少参数 order_id"));
    const QVariant owner = m_ctx.db.value("SELECT user_id FROM orders WHERE order_id=?", {orderId});
    if (!owner.isValid() || owner.toLongLong() != user->id)
        return SiteContext::v3Refusal(QStringLiteral("订单不存在"));
    QJsonObject o = orderJson(orderId, r);
    o.insert(QStringLiteral("coin"), user->coin);
    o.insert(QStringLiteral("group_user"), user->groupUser);
    o.insert(QStringLiteral("ticket"), user->ticket);
    return SiteContext::v3(o, o.value(QStringLiteral("state")).toInt() == 1 ? QStringLiteral("支付成功")
                                                                           : QStringLiteral("等待支付"));
}

SiteHttpResponse SitePaymentApi::vipDiscount(const SiteHttpRequest &)
{
    return SiteContext::v3(QJsonObject{{"list", vipPrices()}});
}

SiteHttpResponse SitePaymentApi::payHostOrder(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录"));
    QString id;
    const QString way = r.param(QStringLiteral("way")).isEmpty() ? QStringLiteral("web") : r.param(QStringLiteral("way"));
    const QString refusal = createOrder(user->id, r.param(QStringLiteral("product")), r.param(QStringLiteral("product_num")),
                                        r.param(QStringLiteral("total_money")), way.left(20), &id);
    if (!refusal.isEmpty())
        return SiteContext::phpRefusal(refusal);
    return SiteContext::php(orderJson(id, r), 1, QStringLiteral("订单已创建"));
}

SiteHttpResponse SitePaymentApi::payHostAjax(const SiteHttpRequest &r)
{
    const QString mod = r.param(QStringLiteral("mod"));
    const QString act = r.param(QStringLiteral("act"));
    if (mod == QLatin1String("vip") && act == QLatin1String("price"))
        return SiteContext::php(QJsonObject{{"data", vipPrices()}});
    if (mod == QLatin1String("order") && (act == QLatin1String("status") || act == QLatin1String("pay"))) {
        const QString orderId = r.param(QStringLiteral("order_id"));
        const QVariant owner = m_ctx.db.value("SELECT user_id FROM orders WHERE order_id=?", {orderId});
        if (orderId.isEmpty() || !owner.isValid())
            return SiteContext::phpRefusal(QStringLiteral("订单不存在"));
        if (act == QLatin1String("pay"))
            m_ctx.payOrder(orderId);
        return SiteContext::php(orderJson(orderId, r), 1,
                                act == QLatin1String("pay") ? QStringLiteral("支付成功") : QString());
    }
    return SiteContext::phpRefusal(QStringLiteral("未知的操作：mod=%1 act=%2").arg(mod.left(20), act.left(20)));
}

SiteHttpResponse SitePaymentApi::cashier(const SiteHttpRequest &r)
{
    const QString orderId = r.param(QStringLiteral("order_id"));
    const auto rows = m_ctx.db.select("SELECT product, product_num, rmb, paid FROM orders WHERE order_id=?", {orderId});
    if (orderId.isEmpty() || rows.isEmpty())
        return htmlPage(QStringLiteral("<p>订单不存在或已失效。</p>"), 404);
    const QString act = r.param(QStringLiteral("act"));
    if (act == QLatin1String("confirm") || act == QLatin1String("cancel")) {
        if (act == QLatin1String("confirm"))
            m_ctx.payOrder(orderId);
        const bool paid = m_ctx.db.value("SELECT paid FROM orders WHERE order_id=?", {orderId}).toInt() == 1;
        SiteHttpResponse back = SiteHttpResponse::bytes(QByteArray(), "text/html; charset=utf-8", 302);
        back.headers.append({"Location", appReturnUrl(orderId, paid)});
        return back;
    }
    const auto &o = rows.first();
    const QString product = o.at(0).toString() == QLatin1String("vip") ? QStringLiteral("%1个月会员").arg(o.at(1).toInt())
                                                                       : QStringLiteral("%1个quorin币").arg(o.at(1).toInt());
    const QString id = orderId.toHtmlEscaped();
    const QString link = QStringLiteral("cashier.php?order_id=") + QString::fromLatin1(QUrl::toPercentEncoding(orderId));
    QString body = QStringLiteral("<dl><dt>商品</dt><dd>%1</dd><dt>金额</dt><dd>¥%2</dd><dt>订单号</dt><dd>%3</dd></dl>")
                       .arg(product.toHtmlEscaped())
                       .arg(o.at(2).toInt())
                       .arg(id);
    if (o.at(3).toInt() == 1) {
        body += QStringLiteral("<p>该订单已支付。</p><p><a class=\"button confirm\" href=\"%1\">返回 Quorin</a></p>")
                    .arg(QString::fromLatin1(appReturnUrl(orderId, true)).toHtmlEscaped());
    } else {
        body += QStringLiteral("<p><a class=\"button confirm\" href=\"%1&amp;act=confirm\">确认支付</a>"
                               "<a class=\"button cancel\" href=\"%1&amp;act=cancel\">取消</a></p>"
                               "<p class=\"note\">演示站点的收银台：确认后即视为支付成功，不会产生真实扣款。</p>")
                    .arg(link.toHtmlEscaped());
    }
    return htmlPage(body);
}

SiteHttpResponse SitePaymentApi::partnerOrder(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录"));
    QString id;
    const QString refusal = createOrder(user->id, r.param(QStringLiteral("product_id")), r.param(QStringLiteral("product_num")),
                                        r.param(QStringLiteral("total_money")), QStringLiteral("harrow"), &id);
    if (!refusal.isEmpty())
        return SiteContext::phpRefusal(refusal);
    return SiteContext::php(orderJson(id, r), 1, QStringLiteral("订单已创建"));
}

SiteHttpResponse SitePaymentApi::ticketLog(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录"));
    int page = 1;
    if (r.has(QStringLiteral("page")) && !SiteContext::readInt(r.param(QStringLiteral("page")), &page, 1, 100000))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：page"));
    const qint64 total = m_ctx.db.value("SELECT COUNT(*) FROM tickets WHERE user_id=?", {user->id}, 0).toLongLong();
    const auto rows = m_ctx.db.select("SELECT comic_id, num, content, time FROM tickets WHERE user_id=? ORDER BY id DESC"
                                      " LIMIT ? OFFSET ?",
                                      {user->id, kLogPageSize, qint64(page - 1) * kLogPageSize});
    QJsonArray data;
    for (const auto &row : rows) {
        const SiteCatalogue::Comic *c = m_ctx.catalogue.comic(row.at(0).toLongLong());
        data.append(QJsonObject{{"comic_id", QString::number(row.at(0).toLongLong())},
                                {"comic_name", c ? c->name : QString()},
                                {"ticket_num", row.at(1).toInt()},
                                {"content", row.at(2).toString()},
                                {"create_time", row.at(3).toLongLong()}});
    }
    return SiteContext::php(QJsonObject{{"total", total}, {"page", page}, {"data", data}, {"ticket", user->ticket}});
}

SiteHttpResponse SitePaymentApi::coinLog(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录"));
    int page = 1;
    if (r.has(QStringLiteral("page")) && !SiteContext::readInt(r.param(QStringLiteral("page")), &page, 1, 100000))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：page"));
    const qint64 total = m_ctx.db.value("SELECT COUNT(*) FROM coinlog WHERE user_id=?", {user->id}, 0).toLongLong();
    const auto rows = m_ctx.db.select("SELECT amount, reason, time FROM coinlog WHERE user_id=? ORDER BY id DESC"
                                      " LIMIT ? OFFSET ?",
                                      {user->id, kLogPageSize, qint64(page - 1) * kLogPageSize});
    QJsonArray data;
    for (const auto &row : rows)
        data.append(QJsonObject{{"amount", row.at(0).toInt()}, {"reason", row.at(1).toString()},
                                {"create_time", row.at(2).toLongLong()}});
    return SiteContext::php(QJsonObject{{"total", total}, {"page", page}, {"data", data}, {"coin", user->coin}});
}

SiteHttpResponse SitePaymentApi::rechargeLog(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录"));
    int page = 1;
    if (r.has(QStringLiteral("page")) && !SiteContext::readInt(r.param(QStringLiteral("page")), &page, 1, 100000))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：page"));
    const qint64 total = m_ctx.db.value("SELECT COUNT(*) FROM orders WHERE user_id=?", {user->id}, 0).toLongLong();
    const auto rows = m_ctx.db.select("SELECT order_id FROM orders WHERE user_id=? ORDER BY created DESC, order_id"
                                      " LIMIT ? OFFSET ?",
                                      {user->id, kLogPageSize, qint64(page - 1) * kLogPageSize});
    QJsonArray data;
    for (const auto &row : rows)
        data.append(orderJson(row.at(0).toString(), r));
    return SiteContext::php(QJsonObject{{"total", total}, {"page", page}, {"data", data}});
}
