#include "catalogue/VORAComicListModel.h"

VORAComicListModel::VORAComicListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int VORAComicListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_comics.size());
}

QVariant VORAComicListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() < 0 || index.row() >= m_comics.size())
        return {};
    const Comic &c = m_comics.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case ComicNameRole:
        return c.comicName;
    case ComicIdRole:
        return c.comicId;
    case ComicAuthorRole:
        return c.comicAuthor;
    case ComicCoverRole:
        return c.comicCover;
    case ComicDescriptionRole:
        return c.comicDescription;
    case ComicClickTotalRole:
        return c.comicClickTotal;
    case BadgeRole:
        return accreditBadge(c.accredit);
    case LastUpdateRole:
        return c.lastUpdate.isValid() ? c.lastUpdate.toLocalTime().toString(QStringLiteral("yyyy-MM-dd")) : QString();
    default:
        return {};
    }
}

QHash<int, QByteArray> VORAComicListModel::roleNames() const
{
    return {
        {ComicIdRole, "comicId"},
        {ComicNameRole, "comicName"},
        {ComicAuthorRole, "comicAuthor"},
        {ComicCoverRole, "comicCover"},
        {ComicDescriptionRole, "comicDescription"},
        {ComicClickTotalRole, "comicClickTotal"},
        {BadgeRole, "badge"},
        {LastUpdateRole, "lastUpdate"},
    };
}

const VORAComicListModel::Comic *VORAComicListModel::comicAt(int row) const
{
    if (row < 0 || row >= m_comics.size())
        return nullptr;
    return &m_comics.at(row);
}

void VORAComicListModel::setComics(const QList<Comic> &comics)
{
    const int before = int(m_comics.size());
    beginResetModel();
    m_comics = comics;
    endResetModel();
    if (before != m_comics.size())
        emit countChanged();
}

void VORAComicListModel::appendComics(const QList<Comic> &comics)
{
    if (comics.isEmpty())
        return;
    const int first = int(m_comics.size());
    beginInsertRows({}, first, first + int(comics.size()) - 1);
    m_comics.append(comics);
    endInsertRows();
    emit countChanged();
}

QString VORAComicListModel::accreditBadge(qint32 accredit)
{
    switch (accredit) {
    case 1:
        return QStringLiteral("dujia.png");
    case 2:
        return QStringLiteral("qianyue.png");
    default:
        return {};
    }
}

int VORAComicListModel::gridRows(int count)
{
    if (count <= 0)
        return 0;
    return (count + cellsPerRow - 1) / cellsPerRow;
}
