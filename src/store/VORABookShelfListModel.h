#pragma once

#include "VORABookShelfDTO.h"

#include <QAbstractListModel>
#include <QList>
#include <QPair>
#include <QString>

// The rows of the bookshelf screen. By update the rows are the comics alone;
// by first letter each section opens with a header row (isSectionHeader true,
// section its title, every other role empty) followed by its comics.
//
// Roles:
//   comicId               text   the comic's identifier ("" on a header row)
//   comicName             text   the title
//   coverUrl              text   address of the cover image
//   latestChapterName     text   name of the newest chapter
//   latestReadChapterName text   name of the chapter last read ("" when none)
//   isHasUpdate           bool   the update mark: a newer chapter is out
//   isNotRead             bool   the not-read mark
//   section               text   the row's letter section ("" by update)
//   isSectionHeader       bool   the row is a section's header
class VORABookShelfListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)
public:
    enum Role {
        ComicIdRole = Qt::UserRole + 1,
        ComicNameRole,
        CoverUrlRole,
        LatestChapterNameRole,
        LatestReadChapterNameRole,
        IsHasUpdateRole,
        IsNotReadRole,
        SectionRole,
        IsSectionHeaderRole,
    };
    Q_ENUM(Role)

    explicit VORABookShelfListModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // The comics in the order given, without headers.
    void setRows(const QList<VORABookShelfDTO> &rows);
    // The sections in the order given, each after its header row.
    void setSections(const QList<QPair<QString, QList<VORABookShelfDTO>>> &sections);

    // The section titles shown, in order ("" by update).
    QStringList sectionTitles() const;

signals:
    void countChanged();

private:
    struct Row
    {
        VORABookShelfDTO comic;
        QString section;
        bool header = false;
    };
    void reset(QList<Row> rows);

    QList<Row> m_rows;
};
