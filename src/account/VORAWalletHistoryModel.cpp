#include "account/VORAWalletHistoryModel.h"

#include "account/AccountLogging.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORAUtility.h"
#include "net/VORATicket_logService.h"
#include "net/VORAUserCoinLogService.h"
#include "net/VORAUserRechargeLogService.h"

namespace {
const QString signInFirstText = QStringLiteral("请先登录");
const QString requestFailedText = QStringLiteral("请求服务器失败，网络信号不是太好哟~");
const QString badAnswerText = QStringLiteral("记录加载失败，请稍后再试");

// Binds the model's two hooks to one concrete log service.
template<class Service>
std::unique_ptr<VORAHttpBaseWebService> bind(std::function<void(qint64)> *setPage,
                                            std::function<std::optional<QJsonObject>()> *answer)
{
    auto service = std::make_unique<Service>();
    Service *s = service.get();
    *setPage = [s](qint64 page) { s->page = page; };
    *answer = [s] { return s->data; };
    return service;
}
}

VORAWalletHistoryModel::VORAWalletHistoryModel(QObject *parent)
    : VORAWalletHistoryModel(CoinLog, parent)
{
}

VORAWalletHistoryModel::VORAWalletHistoryModel(Kind kind, QObject *parent)
    : QAbstractListModel(parent), m_kind(kind)
{
    makeService();
}

VORAWalletHistoryModel::~VORAWalletHistoryModel()
{
    if (m_service)
        m_service->cancelRequest();
}

void VORAWalletHistoryModel::makeService()
{
    if (m_service)
        m_service->cancelRequest();
    switch (m_kind) {
    case CoinLog:
        m_service = bind<VORAUserCoinLogService>(&m_setPage, &m_answer);
        break;
    case RechargeLog:
        m_service = bind<VORAUserRechargeLogService>(&m_setPage, &m_answer);
        break;
    case TicketLog: {
        auto service = bind<VORATicket_logService>(&m_setPage, &m_answer);
        static_cast<VORATicket_logService *>(service.get())->type = QStringLiteral("0"); // every ticket
        m_service = std::move(service);
        break;
    }
    }
}

int VORAWalletHistoryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

QVariant VORAWalletHistoryModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() < 0 || index.row() >= m_entries.size())
        return {};
    const Entry &e = m_entries.at(index.row());
    switch (role) {
    case ItemIdRole:
        return e.itemId;
    case TimeRole:
        return e.time;
    case TimeTextRole:
        return e.time.isValid() ? e.time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm")) : QString();
    case Qt::DisplayRole:
    case TitleRole:
        return e.title;
    case AmountRole:
        return e.amount;
    case DetailRole:
        return e.detail;
    default:
        return {};
    }
}

QHash<int, QByteArray> VORAWalletHistoryModel::roleNames() const
{
    return {
        {ItemIdRole, "itemId"}, {TimeRole, "time"},     {TimeTextRole, "timeText"},
        {TitleRole, "title"},   {AmountRole, "amount"}, {DetailRole, "detail"},
    };
}

void VORAWalletHistoryModel::setKind(Kind kind)
{
    if (kind == m_kind)
        return;
    m_kind = kind;
    makeService();
    clear();
    emit kindChanged();
}

void VORAWalletHistoryModel::clear()
{
    const bool hadRows = !m_entries.isEmpty();
    if (hadRows) {
        beginResetModel();
        m_entries.clear();
        endResetModel();
        emit countChanged();
    }
    m_nextPage = 1;
    if (m_total != 0) {
        m_total = 0;
        emit totalChanged();
    }
    if (m_balance != -1) {
        m_balance = -1;
        emit balanceChanged();
    }
    setAtEnd(false);
    setStatus(false, QString());
}

void VORAWalletHistoryModel::reload()
{
    m_service->cancelRequest();
    clear();
    loadMore();
}

void VORAWalletHistoryModel::loadMore()
{
    if (busy() || m_atEnd)
        return;
    if (!VORAAppGlobalData::shareAppGlobalData()->user()->isLogin()) {
        setStatus(false, signInFirstText);
        return;
    }
    m_setPage(m_nextPage);
    setStatus(true, message());
    m_service->asynchronousRequestWithDelegate(this);
}

void VORAWalletHistoryModel::requestDidFinishWithService(VORAHttpBaseWebService *, const NetError *error)
{
    if (error) {
        qCInfo(lcAccount) << "wallet history page" << m_nextPage << "failed:" << error->localizedDescription;
        setStatus(false, RequestStatus::transportFailure(requestFailedText));
        return;
    }
    const std::optional<QJsonObject> answer = m_answer();
    if (!answer || VORAUtility::jsonInteger(answer->value(QLatin1String("code"))) != 1) {
        const QString refusal = answer ? VORAUtility::jsonString(answer->value(QLatin1String("message"))) : QString();
        setStatus(false, refusal.isEmpty() ? badAnswerText : refusal);
        return;
    }
    applyPage(*answer);
}

void VORAWalletHistoryModel::applyPage(const QJsonObject &answer)
{
    const QList<Entry> page = entriesFrom(m_kind, VORAUtility::jsonArray(answer.value(QLatin1String("data"))));
    if (!page.isEmpty()) {
        beginInsertRows({}, int(m_entries.size()), int(m_entries.size() + page.size()) - 1);
        m_entries.append(page);
        endInsertRows();
        emit countChanged();
    }
    ++m_nextPage;
    const int total = int(VORAUtility::jsonInteger(answer.value(QLatin1String("total"))));
    if (total != m_total) {
        m_total = total;
        emit totalChanged();
    }
    const QLatin1String balanceKey(m_kind == TicketLog ? "ticket" : "coin");
    const int balance = m_kind != RechargeLog && answer.contains(balanceKey)
        ? int(VORAUtility::jsonInteger(answer.value(balanceKey)))
        : -1;
    if (balance != m_balance) {
        m_balance = balance;
        emit balanceChanged();
    }
    setStatus(false, QString());
    setAtEnd(page.isEmpty() || m_entries.size() >= total);
}

QList<VORAWalletHistoryModel::Entry> VORAWalletHistoryModel::entriesFrom(Kind kind, const QJsonArray &data)
{
    QList<Entry> entries;
    for (const QJsonValue &v : data) {
        const QJsonObject o = VORAUtility::jsonObject(v);
        Entry e;
        e.time = VORAUtility::dateFromSeconds(VORAUtility::jsonInteger(o.value(QLatin1String("create_time"))));
        switch (kind) {
        case CoinLog:
            e.title = VORAUtility::jsonString(o.value(QLatin1String("reason")));
            e.amount = VORAUtility::jsonInteger(o.value(QLatin1String("amount")));
            break;
        case RechargeLog: {
            e.itemId = VORAUtility::jsonString(o.value(QLatin1String("order_id")));
            const qint64 num = VORAUtility::jsonInteger(o.value(QLatin1String("product_num")));
            e.title = VORAUtility::jsonString(o.value(QLatin1String("product"))) == QLatin1String("vip")
                ? QStringLiteral("%1个月会员").arg(num)
                : QStringLiteral("%1个quorin币").arg(num);
            e.amount = VORAUtility::jsonInteger(o.value(QLatin1String("rmb")));
            e.detail = VORAUtility::jsonInteger(o.value(QLatin1String("state"))) == 1 ? QStringLiteral("已到账")
                                                                                     : QStringLiteral("等待支付");
            break;
        }
        case TicketLog:
            e.itemId = VORAUtility::jsonString(o.value(QLatin1String("comic_id")));
            e.title = VORAUtility::jsonString(o.value(QLatin1String("comic_name")));
            e.amount = VORAUtility::jsonInteger(o.value(QLatin1String("ticket_num")));
            e.detail = VORAUtility::jsonString(o.value(QLatin1String("content")));
            break;
        }
        entries.append(e);
    }
    return entries;
}

void VORAWalletHistoryModel::setAtEnd(bool atEnd)
{
    if (atEnd == m_atEnd)
        return;
    m_atEnd = atEnd;
    emit atEndChanged();
}

void VORAWalletHistoryModel::setStatus(bool busy, const QString &message)
{
    if (m_status.set(busy, message))
        emit statusChanged();
}
