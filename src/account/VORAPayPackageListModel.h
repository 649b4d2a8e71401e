#pragma once

#include <QAbstractListModel>
#include <QJsonArray>
#include <QList>
#include <QString>

// The packages the payment screen offers for one kind of top-up: coin
// packages, or terms of membership as the site prices them.
//
// Roles:
//   title      text   "600个quorin币", or the site's title of a term ("3个月会员")
//   amount     int    coins, or months of membership
//   price      int    the price in yuan
//   priceText  text   "¥6"
//   discount   text   the site's discount note ("8.9折"), "" for none and for coins
class VORAPayPackageListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    struct Package
    {
        QString title;
        int amount = 0;
        int price = 0;
        QString discount;
    };

    enum Roles {
        TitleRole = Qt::UserRole + 1,
        AmountRole,
        PriceRole,
        PriceTextRole,
        DiscountRole,
    };

    explicit VORAPayPackageListModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return int(m_packages.size()); }
    const Package *packageAt(int row) const;
    void setPackages(const QList<Package> &packages);

    // The coin packages: no service lists them, so this table is the one place
    // they are defined. A yuan buys 100 coins, as on the site.
    static QList<Package> coinPackages();
    // Terms of membership from the price list of "vipDiscount" ("list":
    // "month", "rmb", "title", "discount"); entries without months or price are
    // left out, a missing title becomes "<months>个月会员".
    static QList<Package> membershipPackagesFrom(const QJsonArray &list);

signals:
    void countChanged();

private:
    QList<Package> m_packages;
};
