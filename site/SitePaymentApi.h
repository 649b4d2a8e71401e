#pragma once

#include "SiteContext.h"
#include "SiteRouter.h"

// The demo payment flow: an order (coins or membership months) is created; it is
// paid when the buyer confirms it on its cashier page (the order's "pay_url",
// an HTML page for the system browser, which then returns to the app through
// its URL scheme) or through "pay/ajax.php?mod=order&act=pay", which credits
// the coins or the membership. Also the wallet's history lists.
class SitePaymentApi
{
public:
    explicit SitePaymentApi(SiteContext &context) : m_ctx(context) {}
    void registerRoutes(SiteRouter &router);

private:
    SiteHttpResponse alipay(const SiteHttpRequest &r);
    SiteHttpResponse alipayStatus(const SiteHttpRequest &r);
    SiteHttpResponse vipDiscount(const SiteHttpRequest &r);
    SiteHttpResponse payHostOrder(const SiteHttpRequest &r);
    SiteHttpResponse payHostAjax(const SiteHttpRequest &r);
    SiteHttpResponse cashier(const SiteHttpRequest &r);
    SiteHttpResponse partnerOrder(const SiteHttpRequest &r);
    SiteHttpResponse ticketLog(const SiteHttpRequest &r);
    SiteHttpResponse coinLog(const SiteHttpRequest &r);
    SiteHttpResponse rechargeLog(const SiteHttpRequest &r);

    // Validates and stores an order; returns a refusal message or "" with the id.
    QString createOrder(qint64 userId, const QString &product, const QString &num, const QString &rmb,
                        const QString &way, QString *orderId);
    QJsonObject orderJson(const QString &orderId, const SiteHttpRequest &r);
    static QJsonArray vipPrices();

    SiteContext &m_ctx;
};
