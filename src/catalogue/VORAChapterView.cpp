#include "catalogue/VORAChapterView.h"

#include "catalogue/VORAComicHomePageView.h"
#include "catalogue/VORAReadGate.h"

#include <algorithm>

VORAChapterView::VORAChapterView(QObject *parent)
    : QAbstractListModel(parent)
{
}

int VORAChapterView::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant VORAChapterView::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() < 0 || index.row() >= m_rows.size())
        return {};
    const Row &r = m_rows.at(index.row());
    const VORAChapterInfoDTO &c = r.chapter;
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return c.name;
    case ChapterIdRole:
        return c.chapterId;
    case ChapterIndexRole:
        return c.index;
    case SizeTextRole:
        return sizeText(c.imageCount, c.imageSize);
    case MarkRole:
        return VORAComicHomePageView::markForChapter(m_isVip, c, m_now);
    case SealedRole:
        return m_isVip == 3 && VORAReadGate::isSealed(c.pass_time, m_now);
    case BuyedRole:
        return c.buyed;
    case IsViewRole:
        return c.is_view;
    case TypeRole:
        return c.type;
    case PriceRole:
        return c.price;
    case DownloadedRole:
        return r.downloaded;
    default:
        return {};
    }
}

QHash<int, QByteArray> VORAChapterView::roleNames() const
{
    return {
        {ChapterIdRole, "chapterId"}, {NameRole, "name"},       {ChapterIndexRole, "chapterIndex"},
        {SizeTextRole, "sizeText"},   {MarkRole, "mark"},       {SealedRole, "sealed"},
        {BuyedRole, "buyed"},         {IsViewRole, "isView"},   {TypeRole, "type"},
        {PriceRole, "price"},         {DownloadedRole, "downloaded"},
    };
}

void VORAChapterView::updateDate(const QList<Row> &rows, qint64 isVip, const QDateTime &now)
{
    const int before = int(m_rows.size());
    beginResetModel();
    m_rows = rows;
    m_isVip = isVip;
    m_now = now;
    std::stable_sort(m_rows.begin(), m_rows.end(), [this](const Row &a, const Row &b) {
        return m_ascending ? a.chapter.index < b.chapter.index : a.chapter.index > b.chapter.index;
    });
    endResetModel();
    if (before != m_rows.size())
        emit countChanged();
}

void VORAChapterView::setNow(const QDateTime &now)
{
    m_now = now;
    if (!m_rows.isEmpty())
        emit dataChanged(index(0), index(int(m_rows.size()) - 1), {MarkRole, SealedRole});
}

const VORAChapterView::Row *VORAChapterView::rowAt(int row) const
{
    if (row < 0 || row >= m_rows.size())
        return nullptr;
    return &m_rows.at(row);
}

QStringList VORAChapterView::chapterIds() const
{
    QStringList ids;
    for (const Row &r : m_rows)
        ids.append(r.chapter.chapterId);
    return ids;
}

void VORAChapterView::chapterSortUp()
{
    m_ascending = !m_ascending;
    m_sortButtonImage = m_ascending ? QStringLiteral("comichomepagesort.png") : QStringLiteral("comichomepagesort_up.png");
    emit ascendingChanged();
    sortChapter();
}

void VORAChapterView::sortChapter()
{
    beginResetModel();
    std::stable_sort(m_rows.begin(), m_rows.end(), [this](const Row &a, const Row &b) {
        return m_ascending ? a.chapter.index < b.chapter.index : a.chapter.index > b.chapter.index;
    });
    endResetModel();
}

QString VORAChapterView::sizeText(qint64 imageCount, qint64 imageSize)
{
    return QString::asprintf("%ldP/%.2fM", long(imageCount), double(imageSize) * (1.0 / 1024));
}
