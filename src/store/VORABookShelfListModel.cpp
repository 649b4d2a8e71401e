#include "VORABookShelfListModel.h"

VORABookShelfListModel::VORABookShelfListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int VORABookShelfListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant VORABookShelfListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case ComicIdRole:
        return row.comic.comicId;
    case Qt::DisplayRole:
    case ComicNameRole:
        return row.header ? row.section : row.comic.comicName;
    case CoverUrlRole:
        return row.comic.coverUrl;
    case LatestChapterNameRole:
        return row.comic.latestChapterName;
    case LatestReadChapterNameRole:
        return row.comic.latestReadChapterName;
    case IsHasUpdateRole:
        return row.comic.isHasUpdate;
    case IsNotReadRole:
        return row.comic.isNotRead;
    case SectionRole:
        return row.section;
    case IsSectionHeaderRole:
        return row.header;
    default:
        return {};
    }
}

QHash<int, QByteArray> VORABookShelfListModel::roleNames() const
{
    return {
        {ComicIdRole, "comicId"},
        {ComicNameRole, "comicName"},
        {CoverUrlRole, "coverUrl"},
        {LatestChapterNameRole, "latestChapterName"},
        {LatestReadChapterNameRole, "latestReadChapterName"},
        {IsHasUpdateRole, "isHasUpdate"},
        {IsNotReadRole, "isNotRead"},
        {SectionRole, "section"},
        {IsSectionHeaderRole, "isSectionHeader"},
    };
}

void VORABookShelfListModel::setRows(const QList<VORABookShelfDTO> &rows)
{
    QList<Row> flat;
    flat.reserve(rows.size());
    for (const auto &comic : rows)
        flat.append(Row{comic, QString(), false});
    reset(std::move(flat));
}

void VORABookShelfListModel::setSections(const QList<QPair<QString, QList<VORABookShelfDTO>>> &sections)
{
    QList<Row> flat;
    for (const auto &[title, comics] : sections) {
        flat.append(Row{VORABookShelfDTO(), title, true});
        for (const auto &comic : comics)
            flat.append(Row{comic, title, false});
    }
    reset(std::move(flat));
}

void VORABookShelfListModel::reset(QList<Row> rows)
{
    const bool countMoves = rows.size() != m_rows.size();
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
    if (countMoves)
        emit countChanged();
}

QStringList VORABookShelfListModel::sectionTitles() const
{
    QStringList titles;
    for (const Row &row : m_rows) {
        if (row.header)
            titles.append(row.section);
    }
    return titles;
}
