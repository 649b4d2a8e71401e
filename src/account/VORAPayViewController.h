#pragma once

#include "account/VORAPayPackageListModel.h"
#include "core/RequestStatus.h"
#include "net/VORAHttpBaseWebServiceDelegate.h"

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QUrl>

#include <memory>

class VORACheckBuyService;
class VORASafariPayService;
class VORAVipOrQ42PayAiaxService;

// The payment screen: topping up coins or buying membership.
//
// Flow:
// 1. pushPayVC(kind) opens the screen for one kind (1 membership, as the VIP
//    seal's "成为VIP" asks; 2 coins, as the not-enough-coins dialogs ask).
//    Coins show the fixed packages at once; membership terms are read from the
//    site ("vipDiscount", state LoadingPackages). The first package is selected.
// 2. placeOrder() orders the selected package on the payment host
//    ("api/index.php"). Signed out, nothing is sent: `message` asks for sign-in
//    and signInRequested() is emitted. A made order fills `orderId` and
//    `payUrl`, the state becomes WaitingForPayment and openUrlRequested(payUrl)
//    asks the app to open the site's cashier page in the system browser
//    (openPayPage() asks again, e.g. after the browser was closed).
// 3. The cashier page sends the browser back to the app with
//    "quorin://pay?order_id=<id>&state=<0|1>"; the app posts "safariSuccess"
//    with "pay?order_id=…" and this screen checks the order ("alipayStatus"),
//    whatever the state in the address says. checkPayment() ("我已完成支付")
//    checks it by hand.
// 4. Paid: the global user takes the coins, membership and tickets the site
//    reports and is saved, "UserViewPostInfo" and "BuyVIPorCoinSuccess" are
//    posted, the state becomes Paid and paid() is emitted. Not paid yet: the
//    state returns to WaitingForPayment with a message, and the check stays
//    available. A failed request leaves the order as it was and says why in
//    `message`; nothing is lost, the check can be repeated.
//
// The QML draws `packages` (selection by `selectedIndex`), a "立即支付" button
// for placeOrder() while the state is Choosing, and, while WaitingForPayment,
// "我已完成支付" (checkPayment) and "重新打开支付页面" (openPayPage); `message`
// under them, a busy indicator while `busy`.
class VORAPayViewController : public QObject, public VORAHttpBaseWebServiceDelegate
{
    Q_OBJECT
    Q_PROPERTY(Kind kind READ kind NOTIFY kindChanged)
    Q_PROPERTY(VORAPayPackageListModel *packages READ packages CONSTANT)
    // The package placeOrder() buys; -1 when there is none.
    Q_PROPERTY(int selectedIndex READ selectedIndex WRITE setSelectedIndex NOTIFY selectedIndexChanged)
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    // A request is on its way (packages, order or check).
    Q_PROPERTY(bool busy READ busy NOTIFY stateChanged)
    // What the user should read now (progress, refusal, failure or success); may be "".
    // It changes with `state` and `busy` under one signal.
    Q_PROPERTY(QString message READ message NOTIFY stateChanged)
    Q_PROPERTY(QString orderId READ orderId NOTIFY orderChanged)
    Q_PROPERTY(QUrl payUrl READ payUrl NOTIFY orderChanged)
public:
    enum Kind { NoKind = 0, Membership = 1, Coins = 2 };
    Q_ENUM(Kind)
    enum State {
        Idle,              // not opened yet
        LoadingPackages,   // membership terms on their way
        Choosing,          // packages shown, no order waiting
        Ordering,          // the order on its way
        WaitingForPayment, // the cashier page is open in the browser
        Checking,          // the order's state on its way
        Paid,              // the order is paid and credited
    };
    Q_ENUM(State)

    explicit VORAPayViewController(QObject *parent = nullptr);
    ~VORAPayViewController() override;

    Kind kind() const { return m_kind; }
    VORAPayPackageListModel *packages() const { return m_packages; }
    int selectedIndex() const { return m_selectedIndex; }
    void setSelectedIndex(int index);
    State state() const { return m_state; }
    bool busy() const { return m_status.busy(); }
    QString message() const { return m_status.message(); }
    QString orderId() const { return m_orderId; }
    QUrl payUrl() const { return m_payUrl; }

    // Opens the screen for kind 1 (membership) or 2 (coins); anything else is
    // ignored. Requests on their way are dropped and a waiting order forgotten
    // (it stays unpaid on the site unless it is paid later).
    Q_INVOKABLE void pushPayVC(int kind);
    Q_INVOKABLE void placeOrder();
    Q_INVOKABLE void openPayPage();
    Q_INVOKABLE void checkPayment();
    // The answer to "safariSuccess": `rest` is the returned address without the
    // app's scheme ("pay?order_id=…&state=…"). Other addresses are not for
    // this screen. An order named there is the one checked, so an order paid
    // after the screen was reopened is still credited.
    void safariBuy(const QString &rest);

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;

signals:
    void kindChanged();
    void selectedIndexChanged();
    void stateChanged();
    void orderChanged();
    // The system browser should open this address (the cashier page).
    void openUrlRequested(const QUrl &url);
    // Nobody is signed in: the app shows the sign-in view.
    void signInRequested();
    // The order was paid and the user record updated.
    void paid();

private:
    // The state and the message that goes with it, one stateChanged() for both.
    void setState(State state, const QString &message);
    void setOrder(const QString &orderId, const QUrl &payUrl);
    bool requireSignIn();
    QString failureText(const QString &what) const;
    void pricesArrived(const NetError *error);
    void orderArrived(const NetError *error);
    void checkArrived(const NetError *error);
    void applyPaid(const QJsonObject &order);

    VORAPayPackageListModel *m_packages;
    Kind m_kind = NoKind;
    int m_selectedIndex = -1;
    State m_state = Idle;
    RequestStatus m_status; // busy while packages, an order or a check are on their way
    QString m_orderId;
    QUrl m_payUrl;
    std::unique_ptr<VORASafariPayService> m_priceService;
    std::unique_ptr<VORAVipOrQ42PayAiaxService> m_orderService;
    std::unique_ptr<VORACheckBuyService> m_checkService;
};
