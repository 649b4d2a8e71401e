#include "account/VORAPayViewController.h"

#include "account/AccountLogging.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORAUtility.h"
#include "net/VORACheckBuyService.h"
#include "net/VORASafariPayService.h"
#include "net/VORAVipOrQ42PayAiaxService.h"
#include "platform/NotificationCenter.h"

#include <QUrlQuery>

namespace {
// The payload of a "v3/app/" answer that succeeded; otherwise none, with the
// site's reason in *refusal when it gave one.
std::optional<QJsonObject> v3ReturnData(const std::optional<QJsonObject> &answer, QString *refusal)
{
    if (!answer || VORAUtility::jsonInteger(answer->value(QLatin1String("code"))) != 1)
        return std::nullopt;
    const QJsonObject data = VORAUtility::jsonObject(answer->value(QLatin1String("data")));
    if (VORAUtility::jsonInteger(data.value(QLatin1String("stateCode"))) != 1) {
        *refusal = VORAUtility::jsonString(data.value(QLatin1String("message")));
        return std::nullopt;
    }
    return VORAUtility::jsonObject(data.value(QLatin1String("returnData")));
}

QString orDefault(const QString &text, const QString &fallback)
{
    return text.isEmpty() ? fallback : text;
}
}

VORAPayViewController::VORAPayViewController(QObject *parent)
    : QObject(parent), m_packages(new VORAPayPackageListModel(this)),
      m_priceService(std::make_unique<VORASafariPayService>()),
      m_orderService(std::make_unique<VORAVipOrQ42PayAiaxService>()),
      m_checkService(std::make_unique<VORACheckBuyService>())
{
    NotificationCenter::defaultCenter().addObserver(
        this, QString::fromLatin1(VORANotificationNames::safariSuccess),
        [this](const Notification &n) { safariBuy(n.userInfo.value(QStringLiteral("object")).toString()); });
}

VORAPayViewController::~VORAPayViewController()
{
    m_priceService->cancelRequest();
    m_orderService->cancelRequest();
    m_checkService->cancelRequest();
}

void VORAPayViewController::setSelectedIndex(int index)
{
    if (!m_packages->packageAt(index))
        index = -1;
    if (index == m_selectedIndex)
        return;
    m_selectedIndex = index;
    emit selectedIndexChanged();
}

void VORAPayViewController::pushPayVC(int kind)
{
    if (kind != Membership && kind != Coins) {
        qCWarning(lcAccount) << "no payment screen of kind" << kind;
        return;
    }
    m_priceService->cancelRequest();
    m_orderService->cancelRequest();
    m_checkService->cancelRequest();
    setOrder(QString(), QUrl());
    if (m_kind != kind) {
        m_kind = Kind(kind);
        emit kindChanged();
    }
    if (m_kind == Coins) {
        m_packages->setPackages(VORAPayPackageListModel::coinPackages());
        setSelectedIndex(0);
        setState(Choosing, QString());
        return;
    }
    m_packages->setPackages({});
    setSelectedIndex(-1);
    setState(LoadingPackages, QString());
    m_priceService->asynchronousRequestWithDelegate(this);
}

void VORAPayViewController::placeOrder()
{
    if (busy() || !requireSignIn())
        return;
    const VORAPayPackageListModel::Package *package = m_packages->packageAt(m_selectedIndex);
    if (!package) {
        setState(m_state, QStringLiteral("请先选择一个套餐"));
        return;
    }
    m_orderService->product = m_kind == Membership ? QStringLiteral("vip") : QStringLiteral("coin");
    m_orderService->productNum = QString::number(package->amount);
    m_orderService->totalMoney = QString::number(package->price);
    m_orderService->way = QStringLiteral("web");
    m_orderService->contact = VORAAppGlobalData::shareAppGlobalData()->user()->userName();
    setOrder(QString(), QUrl());
    setState(Ordering, QStringLiteral("正在创建订单..."));
    m_orderService->asynchronousRequestWithDelegate(this);
}

void VORAPayViewController::openPayPage()
{
    if (m_state == WaitingForPayment && m_payUrl.isValid())
        emit openUrlRequested(m_payUrl);
}

void VORAPayViewController::checkPayment()
{
    if (m_orderId.isEmpty() || m_state == Checking || m_state == Ordering || !requireSignIn())
        return;
    m_checkService->orderId = m_orderId;
    setState(Checking, QStringLiteral("正在查询支付结果..."));
    m_checkService->asynchronousRequestWithDelegate(this);
}

void VORAPayViewController::safariBuy(const QString &rest)
{
    const qsizetype q = rest.indexOf(QLatin1Char('?'));
    const QString target = q < 0 ? rest : rest.left(q);
    if (target != QLatin1String("pay") && target != QLatin1String("pay/"))
        return;
    const QString returned = QUrlQuery(q < 0 ? QString() : rest.mid(q + 1)).queryItemValue(QStringLiteral("order_id"));
    if (!returned.isEmpty() && returned != m_orderId) {
        qCInfo(lcAccount) << "the browser returned order" << returned << "while waiting for" << m_orderId;
        m_checkService->cancelRequest();
        setOrder(returned, QUrl());
        setState(WaitingForPayment, message());
    } else if (m_state == Paid) {
        return; // credited already
    }
    checkPayment();
}

void VORAPayViewController::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error)
{
    if (service == m_priceService.get())
        pricesArrived(error);
    else if (service == m_orderService.get())
        orderArrived(error);
    else if (service == m_checkService.get())
        checkArrived(error);
}

void VORAPayViewController::pricesArrived(const NetError *error)
{
    if (error) {
        setState(Choosing, failureText(QStringLiteral("会员价格加载失败")));
        return;
    }
    QString refusal;
    const std::optional<QJsonObject> prices = v3ReturnData(m_priceService->data, &refusal);
    const QList<VORAPayPackageListModel::Package> terms =
        prices ? VORAPayPackageListModel::membershipPackagesFrom(VORAUtility::jsonArray(prices->value(QLatin1String("list"))))
               : QList<VORAPayPackageListModel::Package>();
    if (terms.isEmpty()) {
        setState(Choosing, orDefault(refusal, QStringLiteral("暂时没有可开通的会员套餐，请稍后再试")));
        return;
    }
    m_packages->setPackages(terms);
    setSelectedIndex(0);
    setState(Choosing, message());
}

void VORAPayViewController::orderArrived(const NetError *error)
{
    if (error) {
        setState(Choosing, failureText(QStringLiteral("下单失败")));
        return;
    }
    const QJsonObject order = m_orderService->data.value_or(QJsonObject());
    const QString id = VORAUtility::jsonString(order.value(QLatin1String("order_id")));
    const QUrl url(VORAUtility::jsonString(order.value(QLatin1String("pay_url"))));
    const bool web = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    if (VORAUtility::jsonInteger(order.value(QLatin1String("code"))) != 1 || id.isEmpty() || !web) {
        const QString refusal = VORAUtility::jsonInteger(order.value(QLatin1String("code"))) == 1
            ? QString()
            : VORAUtility::jsonString(order.value(QLatin1String("message")));
        setState(Choosing, orDefault(refusal, QStringLiteral("下单失败，请稍后再试")));
        return;
    }
    setOrder(id, url);
    setState(WaitingForPayment, QStringLiteral("请在浏览器中完成支付，支付后会自动返回；没有返回时请点“我已完成支付”"));
    emit openUrlRequested(url);
}

void VORAPayViewController::checkArrived(const NetError *error)
{
    if (error) {
        setState(WaitingForPayment, failureText(QStringLiteral("查询支付结果失败")));
        return;
    }
    QString refusal;
    const std::optional<QJsonObject> order = v3ReturnData(m_checkService->data, &refusal);
    if (!order) {
        setState(WaitingForPayment, orDefault(refusal, QStringLiteral("查询支付结果失败，请稍后再试")));
        return;
    }
    if (VORAUtility::jsonInteger(order->value(QLatin1String("state"))) != 1) {
        setState(WaitingForPayment, QStringLiteral("订单尚未支付，请在浏览器中完成支付后点“我已完成支付”"));
        return;
    }
    applyPaid(*order);
}

void VORAPayViewController::applyPaid(const QJsonObject &order)
{
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    VORAUser *user = global->user();
    if (order.contains(QLatin1String("coin")))
        user->setUserCoin(VORAUtility::jsonInteger(order.value(QLatin1String("coin"))));
    const QString group = VORAUtility::jsonString(order.value(QLatin1String("group_user")));
    if (!group.isEmpty())
        user->setVipUser(group);
    if (order.contains(QLatin1String("ticket")))
        user->setTicket(VORAUtility::jsonInteger(order.value(QLatin1String("ticket"))));
    global->saveUser();
    const bool membership = VORAUtility::jsonString(order.value(QLatin1String("product"))) == QLatin1String("vip");
    setState(Paid, membership ? QStringLiteral("开通会员成功")
                              : QStringLiteral("充值成功，您当前的quorin币余额为%1").arg(user->userCoin()));
    NotificationCenter &center = NotificationCenter::defaultCenter();
    center.post(QString::fromLatin1(VORANotificationNames::userViewPostInfo), this);
    center.post(QString::fromLatin1(VORANotificationNames::buyVIPorCoinSuccess), this);
    emit paid();
}

bool VORAPayViewController::requireSignIn()
{
    if (VORAAppGlobalData::shareAppGlobalData()->user()->isLogin())
        return true;
    setState(m_state, QStringLiteral("请先登录"));
    emit signInRequested();
    return false;
}

QString VORAPayViewController::failureText(const QString &what) const
{
    return RequestStatus::transportFailure(what + QStringLiteral("，网络信号不是太好哟~"));
}

void VORAPayViewController::setState(State state, const QString &message)
{
    const bool moved = state != m_state;
    m_state = state;
    if (m_status.set(state == LoadingPackages || state == Ordering || state == Checking, message) || moved)
        emit stateChanged();
}

void VORAPayViewController::setOrder(const QString &orderId, const QUrl &payUrl)
{
    if (orderId == m_orderId && payUrl == m_payUrl)
        return;
    m_orderId = orderId;
    m_payUrl = payUrl;
    emit orderChanged();
}
