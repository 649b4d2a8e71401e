#include "reader/VORAChapterListModel.h"

#include "catalogue/VORAChapterView.h"
#include "catalogue/VORAComicHomePageView.h"
#include "catalogue/VORAReadGate.h"

VORAChapterListModel::VORAChapterListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int VORAChapterListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_chapters.size());
}

QVariant VORAChapterListModel::data(const QModelIndex &index, int role) const
{
    const VORAChapterInfoDTO *c = index.isValid() ? chapterAt(index.row()) : nullptr;
    if (!c)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return c->name;
    case ChapterIdRole:
        return c->chapterId;
    case ChapterIndexRole:
        return c->index;
    case SizeTextRole:
        return VORAChapterView::sizeText(c->imageCount, c->imageSize);
    case MarkRole:
        return VORAComicHomePageView::markForChapter(m_isVip, *c, m_now);
    case SealedRole:
        return m_isVip == 3 && VORAReadGate::isSealed(c->pass_time, m_now);
    case PriceRole:
        return c->price;
    case CurrentRole:
        return !m_currentChapterId.isEmpty() && c->chapterId == m_currentChapterId;
    default:
        return {};
    }
}

QHash<int, QByteArray> VORAChapterListModel::roleNames() const
{
    return {
        {ChapterIdRole, "chapterId"}, {NameRole, "name"},     {ChapterIndexRole, "chapterIndex"},
        {SizeTextRole, "sizeText"},   {MarkRole, "mark"},     {SealedRole, "sealed"},
        {PriceRole, "price"},         {CurrentRole, "current"},
    };
}

int VORAChapterListModel::currentRow() const
{
    if (m_currentChapterId.isEmpty())
        return -1;
    for (int i = 0; i < m_chapters.size(); ++i) {
        if (m_chapters.at(i).chapterId == m_currentChapterId)
            return i;
    }
    return -1;
}

void VORAChapterListModel::setChapters(const QList<VORAChapterInfoDTO> &chapters, qint64 isVip,
                                       const QDateTime &now, const QString &currentChapterId)
{
    const int before = count();
    const int rowBefore = currentRow();
    beginResetModel();
    m_chapters = chapters;
    m_isVip = isVip;
    m_now = now;
    m_currentChapterId = currentChapterId;
    endResetModel();
    if (before != count())
        emit countChanged();
    if (rowBefore != currentRow())
        emit currentRowChanged();
}

const VORAChapterInfoDTO *VORAChapterListModel::chapterAt(int row) const
{
    if (row < 0 || row >= m_chapters.size())
        return nullptr;
    return &m_chapters.at(row);
}
