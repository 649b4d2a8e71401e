#include "reader/VORABookmarkListModel.h"

VORABookmarkListModel::VORABookmarkListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int VORABookmarkListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant VORABookmarkListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() < 0 || index.row() >= m_rows.size())
        return {};
    const VORABookMarkDTO &b = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case ComicNameRole:
        return b.comicName;
    case ComicIdRole:
        return b.comicId;
    case CoverUrlRole:
        return b.coverUrl;
    case DateTextRole:
        return dateText(b.addBookmarkTime);
    case InfoTextRole:
        return infoText(b);
    case ChapterNameRole:
        return b.chapterName;
    case PageIndexRole:
        return b.pageIndex;
    default:
        return {};
    }
}

QHash<int, QByteArray> VORABookmarkListModel::roleNames() const
{
    return {
        {ComicIdRole, "comicId"},   {ComicNameRole, "comicName"},     {CoverUrlRole, "coverUrl"},
        {DateTextRole, "dateText"}, {InfoTextRole, "infoText"},       {ChapterNameRole, "chapterName"},
        {PageIndexRole, "pageIndex"},
    };
}

void VORABookmarkListModel::setBookmarks(const QList<VORABookMarkDTO> &rows)
{
    const int before = count();
    beginResetModel();
    m_rows = rows;
    endResetModel();
    if (before != count())
        emit countChanged();
}

QString VORABookmarkListModel::dateText(const QDateTime &time)
{
    return time.isValid() ? time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd")) : QString();
}

QString VORABookmarkListModel::infoText(const VORABookMarkDTO &bookmark)
{
    // Concatenated, not formatted: names may hold "%1" and the like.
    return bookmark.comicId + QLatin1Char('_') + bookmark.chapterName + QStringLiteral("_第")
        + QString::number(bookmark.pageIndex + 1) + QStringLiteral("页");
}
