#include "reader/VORAPageViewListModel.h"

#include "reader/VORAPictureImageView.h"

VORAPageViewListModel::VORAPageViewListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int VORAPageViewListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_views.size());
}

QVariant VORAPageViewListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    VORAPictureImageView *view = m_views.at(index.row());
    switch (role) {
    case PageViewRole:
        return QVariant::fromValue<QObject *>(view);
    case PageIndexRole:
        return view->pageIndex();
    default:
        return {};
    }
}

QHash<int, QByteArray> VORAPageViewListModel::roleNames() const
{
    return {{PageViewRole, "pageView"}, {PageIndexRole, "pageIndex"}};
}

void VORAPageViewListModel::append(VORAPictureImageView *view)
{
    const int row = int(m_views.size());
    beginInsertRows(QModelIndex(), row, row);
    m_views.append(view);
    endInsertRows();
    emit countChanged();
}

void VORAPageViewListModel::remove(VORAPictureImageView *view)
{
    const int row = int(m_views.indexOf(view));
    if (row < 0)
        return;
    beginRemoveRows(QModelIndex(), row, row);
    m_views.removeAt(row);
    endRemoveRows();
    emit countChanged();
}

void VORAPageViewListModel::clear()
{
    if (m_views.isEmpty())
        return;
    beginResetModel();
    m_views.clear();
    endResetModel();
    emit countChanged();
}
