#pragma once

#include "store/VORABookMarkDTO.h"

#include <QAbstractListModel>
#include <QList>

// The rows of the reader's bookmark panel, in the panel's order.
//
// Roles:
//   comicId       text    the comic's identifier
//   comicName     text    the comic's name
//   coverUrl      text    the cover's address (the row shows "dcoverdefault.png" until it is loaded)
//   dateText      text    the day the bookmark was added, "yyyy-MM-dd" (local time)
//   infoText      text    "<comic id>_<chapter name>_第<page index + 1>页"
//   chapterName   text
//   pageIndex     int     0-based
class VORABookmarkListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    enum Roles {
        ComicIdRole = Qt::UserRole + 1,
        ComicNameRole,
        CoverUrlRole,
        DateTextRole,
        InfoTextRole,
        ChapterNameRole,
        PageIndexRole,
    };

    explicit VORABookmarkListModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return int(m_rows.size()); }
    // Replaces every row (the table's reload).
    void setBookmarks(const QList<VORABookMarkDTO> &rows);

    static QString dateText(const QDateTime &time);
    static QString infoText(const VORABookMarkDTO &bookmark);

signals:
    void countChanged();

private:
    QList<VORABookMarkDTO> m_rows;
};
