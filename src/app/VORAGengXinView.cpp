#include "VORAGengXinView.h"

VORAGengXinView::VORAGengXinView(QObject *parent)
    : QAbstractListModel(parent)
{
}

int VORAGengXinView::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant VORAGengXinView::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row &r = m_rows.at(index.row());
    switch (role) {
    case ComicIdRole:
        return r.comicId;
    case Qt::DisplayRole:
    case ComicNameRole:
        return r.comicName;
    case CoverUrlRole:
        return r.coverUrl;
    case LatestChapterNameRole:
        return r.latestChapterName;
    default:
        return {};
    }
}

QHash<int, QByteArray> VORAGengXinView::roleNames() const
{
    return {{ComicIdRole, "comicId"},
            {ComicNameRole, "comicName"},
            {CoverUrlRole, "coverUrl"},
            {LatestChapterNameRole, "latestChapterName"}};
}

void VORAGengXinView::setUpdatedRecords(const QList<VORABookShelf> &records)
{
    QList<Row> rows;
    rows.reserve(records.size());
    for (const VORABookShelf &entry : records)
        rows.append({entry.comicId, entry.comicName, entry.coverUrl, entry.latestUpdateChapterName});
    const bool counted = rows.size() != m_rows.size();
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
    if (counted)
        emit countChanged();
    if (m_rows.isEmpty())
        closePanel();
}

void VORAGengXinView::openPanel()
{
    if (!m_rows.isEmpty())
        setOpen(true);
}

void VORAGengXinView::closePanel()
{
    setOpen(false);
}

void VORAGengXinView::openRow(int row)
{
    if (row < 0 || row >= m_rows.size())
        return;
    const Row r = m_rows.at(row);
    closePanel();
    emit openComicRequested(r.comicId, r.comicName, r.coverUrl);
}

void VORAGengXinView::setOpen(bool open)
{
    if (m_open == open)
        return;
    m_open = open;
    emit openChanged();
}
