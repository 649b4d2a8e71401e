#include "ReadingPlaceListModel.h"

ReadingPlaceListModel::ReadingPlaceListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int ReadingPlaceListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant ReadingPlaceListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const ReadingPlaceRow &r = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case ComicNameRole:
        return r.comicName;
    case ComicIdRole:
        return r.comicId;
    case CoverUrlRole:
        return r.coverUrl;
    case ChapterIdRole:
        return r.chapterId;
    case ChapterNameRole:
        return r.chapterName;
    case PageIdRole:
        return r.pageId;
    case PageNumberRole:
        return int(r.pageIndex + 1);
    case TimeTextRole:
        return timeText(r.time);
    default:
        return {};
    }
}

QHash<int, QByteArray> ReadingPlaceListModel::roleNames() const
{
    return {
        {ComicIdRole, "comicId"}, {ComicNameRole, "comicName"},   {CoverUrlRole, "coverUrl"},
        {ChapterIdRole, "chapterId"}, {ChapterNameRole, "chapterName"}, {PageIdRole, "pageId"},
        {PageNumberRole, "pageNumber"}, {TimeTextRole, "timeText"},
    };
}

void ReadingPlaceListModel::setPlaceRows(const QList<ReadingPlaceRow> &rows)
{
    const int before = count();
    beginResetModel();
    m_rows = rows;
    endResetModel();
    if (before != count())
        emit countChanged();
}

void ReadingPlaceListModel::removePlaceRow(int row)
{
    if (row < 0 || row >= count())
        return;
    beginRemoveRows({}, row, row);
    m_rows.removeAt(row);
    endRemoveRows();
    emit countChanged();
}

QString ReadingPlaceListModel::timeText(const QDateTime &time)
{
    return time.isValid() ? time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm")) : QString();
}
