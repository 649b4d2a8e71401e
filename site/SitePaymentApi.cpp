#include "SitePaymentApi.h"

#include <QJsonArray>
#include <QRandomGenerator>

namespace {
constexpr int kLogPageSize = 20;

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
        {"pay_url", m_ctx.base(r) + QStringLiteral("pay/ajax.php?mod=order&act=pay&order_id=") + orderId},
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
    const auto fresh = m_ctx.user(user->id); // currentUser settled due orders already
    QJsonObject o = orderJson(orderId, r);
    o.insert(QStringLiteral("coin"), fresh->coin);
    o.insert(QStringLiteral("group_user"), fresh->groupUser);
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
        if (act == QLatin1String("pay")) // the pay page: the order counts as paid at once
            m_ctx.db.run("UPDATE orders SET created = MIN(created, ?) WHERE order_id=? AND paid=0",
                         {SiteContext::now() - 3600, orderId});
        m_ctx.settleOrders(owner.toLongLong());
        return SiteContext::php(orderJson(orderId, r), 1,
                                act == QLatin1String("pay") ? QStringLiteral("支付成功") : QString());
    }
    return SiteContext::phpRefusal(QStringLiteral("未知的操作：mod=%1 act=%2").arg(mod.left(20), act.left(20)));
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
