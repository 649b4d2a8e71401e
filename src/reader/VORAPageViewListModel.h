#pragma once

#include <QAbstractListModel>
#include <QList>

class VORAPictureImageView;

// The page views that exist (at most five around the current page), for the
// strip's Repeater. Rows come and go one by one as the reader moves, so the
// QML keeps the delegates of the pages that stay.
//
// Roles: "pageView" (the VORAPictureImageView), "pageIndex" (its page).
class VORAPageViewListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)
public:
    enum Roles { PageViewRole = Qt::UserRole + 1, PageIndexRole };

    explicit VORAPageViewListModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void append(VORAPictureImageView *view);
    void remove(VORAPictureImageView *view);
    void clear();
    const QList<VORAPictureImageView *> &views() const { return m_views; }

signals:
    void countChanged();

private:
    QList<VORAPictureImageView *> m_views;
};
