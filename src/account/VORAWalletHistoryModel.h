#pragma once

#include "core/RequestStatus.h"
#include "net/VORAHttpBaseWebServiceDelegate.h"

#include <QAbstractListModel>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class VORAHttpBaseWebService;

// One of the wallet's history lists of the signed-in user, newest first, read
// page by page from the site: coin spending ("ios/pad/coin_log.php"), top-ups
// ("ios/pad/recharge_log.php") or monthly tickets cast
// ("android/phone/ticket_log.php").
//
// Use: set `kind` (or pass it to the constructor), call reload() when the list
// is shown, and loadMore() when its end comes into view. A loadMore() while a
// page is on its way, or once `atEnd` is true, does nothing, so a list never
// holds a page twice. A failed page keeps the rows already loaded, says why in
// `message` and leaves `atEnd` false: the next loadMore() asks for the same
// page again. Signed out, nothing is sent and `message` is "请先登录".
//
// Roles (one row):
//   itemId     text      the order id (top-ups), the comic id (tickets), "" (coins)
//   time       date      when it happened
//   timeText   text      the same as "yyyy-MM-dd HH:mm", local time
//   title      text      coins: the reason ("充值", "购买《…》2个章节");
//                        top-ups: "600个quorin币" or "3个月会员"; tickets: the comic's name
//   amount     int       coins: the change (negative when spent); top-ups: the
//                        price in yuan; tickets: the number of tickets cast
//   detail     text      top-ups: "已到账" or "等待支付"; tickets: the words sent
//                        with them; coins: ""
class VORAWalletHistoryModel : public QAbstractListModel, public VORAHttpBaseWebServiceDelegate
{
    Q_OBJECT
    Q_PROPERTY(Kind kind READ kind WRITE setKind NOTIFY kindChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    // Rows the site holds for this list (0 until the first page arrives).
    Q_PROPERTY(int total READ total NOTIFY totalChanged)
    // The coin balance (coins) or tickets left (tickets) the site reported with
    // the last page; -1 when unknown and for top-ups.
    Q_PROPERTY(int balance READ balance NOTIFY balanceChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY statusChanged)
    Q_PROPERTY(bool atEnd READ atEnd NOTIFY atEndChanged)
    // Why the last page did not come, "" after a page arrived.
    Q_PROPERTY(QString message READ message NOTIFY statusChanged)
public:
    enum Kind { CoinLog, RechargeLog, TicketLog };
    Q_ENUM(Kind)

    enum Roles {
        ItemIdRole = Qt::UserRole + 1,
        TimeRole,
        TimeTextRole,
        TitleRole,
        AmountRole,
        DetailRole,
    };

    struct Entry
    {
        QString itemId;
        QDateTime time;
        QString title;
        qint64 amount = 0;
        QString detail;
    };

    explicit VORAWalletHistoryModel(QObject *parent = nullptr);
    explicit VORAWalletHistoryModel(Kind kind, QObject *parent = nullptr);
    ~VORAWalletHistoryModel() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    Kind kind() const { return m_kind; }
    // A new kind empties the list; call reload() to fill it.
    void setKind(Kind kind);
    int count() const { return int(m_entries.size()); }
    int total() const { return m_total; }
    int balance() const { return m_balance; }
    bool busy() const { return m_status.busy(); }
    bool atEnd() const { return m_atEnd; }
    QString message() const { return m_status.message(); }
    const QList<Entry> &entries() const { return m_entries; }

    // Empties the list and asks for the first page (a page on its way is dropped).
    Q_INVOKABLE void reload();
    // Asks for the next page.
    Q_INVOKABLE void loadMore();

    // The rows of one page's "data" array.
    static QList<Entry> entriesFrom(Kind kind, const QJsonArray &data);

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;

signals:
    void kindChanged();
    void countChanged();
    void totalChanged();
    void balanceChanged();
    void statusChanged();
    void atEndChanged();

private:
    void clear();
    void setAtEnd(bool atEnd);
    void applyPage(const QJsonObject &answer);
    void setStatus(bool busy, const QString &message);
    void makeService();

    Kind m_kind = CoinLog;
    QList<Entry> m_entries;
    int m_total = 0;
    int m_balance = -1;
    qint64 m_nextPage = 1;
    bool m_atEnd = false;
    RequestStatus m_status;
    // The kind's service, kept for the model's life and started once a page.
    std::unique_ptr<VORAHttpBaseWebService> m_service;
    std::function<void(qint64 page)> m_setPage;
    std::function<std::optional<QJsonObject>()> m_answer;
};
