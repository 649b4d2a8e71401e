#include "account/VORAPayPackageListModel.h"

#include "core/VORAUtility.h"

#include <QJsonObject>

VORAPayPackageListModel::VORAPayPackageListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int VORAPayPackageListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_packages.size());
}

QVariant VORAPayPackageListModel::data(const QModelIndex &index, int role) const
{
    const Package *p = index.isValid() ? packageAt(index.row()) : nullptr;
    if (!p)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return p->title;
    case AmountRole:
        return p->amount;
    case PriceRole:
        return p->price;
    case PriceTextRole:
        return QStringLiteral("¥%1").arg(p->price);
    case DiscountRole:
        return p->discount;
    default:
        return {};
    }
}

QHash<int, QByteArray> VORAPayPackageListModel::roleNames() const
{
    return {
        {TitleRole, "title"}, {AmountRole, "amount"}, {PriceRole, "price"},
        {PriceTextRole, "priceText"}, {DiscountRole, "discount"},
    };
}

const VORAPayPackageListModel::Package *VORAPayPackageListModel::packageAt(int row) const
{
    return row >= 0 && row < m_packages.size() ? &m_packages.at(row) : nullptr;
}

void VORAPayPackageListModel::setPackages(const QList<Package> &packages)
{
    beginResetModel();
    const bool countChanges = packages.size() != m_packages.size();
    m_packages = packages;
    endResetModel();
    if (countChanges)
        emit countChanged();
}

QList<VORAPayPackageListModel::Package> VORAPayPackageListModel::coinPackages()
{
    QList<Package> packages;
    for (const int price : {6, 12, 30, 68, 128}) {
        const int coins = price * 100;
        packages.append({QStringLiteral("%1个quorin币").arg(coins), coins, price, QString()});
    }
    return packages;
}

QList<VORAPayPackageListModel::Package> VORAPayPackageListModel::membershipPackagesFrom(const QJsonArray &list)
{
    QList<Package> packages;
    for (const QJsonValue &v : list) {
        const QJsonObject o = VORAUtility::jsonObject(v);
        Package p;
        p.amount = int(VORAUtility::jsonInteger(o.value(QLatin1String("month"))));
        p.price = int(VORAUtility::jsonInteger(o.value(QLatin1String("rmb"))));
        if (p.amount <= 0 || p.price <= 0)
            continue;
        p.title = VORAUtility::jsonString(o.value(QLatin1String("title")));
        if (p.title.isEmpty())
            p.title = QStringLiteral("%1个月会员").arg(p.amount);
        p.discount = VORAUtility::jsonString(o.value(QLatin1String("discount")));
        packages.append(p);
    }
    return packages;
}
