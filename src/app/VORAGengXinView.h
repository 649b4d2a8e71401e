#pragma once

#include "store/VORABookShelf.h"

#include <QAbstractListModel>
#include <QList>
#include <QString>
#include <QtQml/qqmlregistration.h>

// The side panel of updated comics: the shelf entries with a new chapter, as
// the bookshelf badge last counted them (store order). The badge opens it, a
// row opens the comic's detail page and closes the panel.
//
// Roles:
//   comicId            text  the comic's identifier
//   comicName          text  its name
//   coverUrl           text  the cover's address ("" for none)
//   latestChapterName  text  the newest chapter's name
class VORAGengXinView : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the root controller keeps the one side panel")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(bool open READ isOpen NOTIFY openChanged)
public:
    enum Roles {
        ComicIdRole = Qt::UserRole + 1,
        ComicNameRole,
        CoverUrlRole,
        LatestChapterNameRole,
    };

    explicit VORAGengXinView(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return int(m_rows.size()); }
    bool isOpen() const { return m_open; }

    // The updated records; an empty list also closes the panel.
    void setUpdatedRecords(const QList<VORABookShelf> &records);
    Q_INVOKABLE void openPanel();
    Q_INVOKABLE void closePanel();
    // A tap on a row: the panel closes and the comic's page opens.
    Q_INVOKABLE void openRow(int row);

signals:
    void countChanged();
    void openChanged();
    void openComicRequested(const QString &comicId, const QString &comicName, const QString &comicCover);

private:
    void setOpen(bool open);

    struct Row
    {
        QString comicId;
        QString comicName;
        QString coverUrl;
        QString latestChapterName;
    };
    QList<Row> m_rows;
    bool m_open = false;
};
