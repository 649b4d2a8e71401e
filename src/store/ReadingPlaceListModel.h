#pragma once

#include "ReadingPlaceRow.h"

#include <QAbstractListModel>
#include <QList>

// The rows of the bookmarks and recent-reading screens, in the screen's order.
//
// Roles:
//   comicId       text    the comic's identifier
//   comicName     text    the comic's name
//   coverUrl      text    the cover's address ("" when unknown)
//   chapterId     text
//   chapterName   text
//   pageId        text
//   pageNumber    int     the page's position in its chapter, counted from 1
//   timeText      text    when the place was marked or read, "yyyy-MM-dd HH:mm"
//                         in local time ("" for no time)
class ReadingPlaceListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    enum Roles {
        ComicIdRole = Qt::UserRole + 1,
        ComicNameRole,
        CoverUrlRole,
        ChapterIdRole,
        ChapterNameRole,
        PageIdRole,
        PageNumberRole,
        TimeTextRole,
    };

    explicit ReadingPlaceListModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return int(m_rows.size()); }
    const QList<ReadingPlaceRow> &placeRows() const { return m_rows; }
    // Replaces every row.
    void setPlaceRows(const QList<ReadingPlaceRow> &rows);
    void removePlaceRow(int row);

    static QString timeText(const QDateTime &time);

signals:
    void countChanged();

private:
    QList<ReadingPlaceRow> m_rows;
};
