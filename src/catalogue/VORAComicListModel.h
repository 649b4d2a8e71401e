#pragma once

#include <QAbstractListModel>
#include <QDateTime>
#include <QList>
#include <QString>

// The comics of a category or a search result, for the grids and lists.
// Pages are appended (rows inserted), so a grid keeps its place while the
// next page arrives.
//
// Roles:
//   comicId, comicName, comicAuthor, comicCover, comicDescription   text
//   comicClickTotal   text   clicks as plain digits ("" when unknown)
//   badge             text   "dujia.png" (exclusive), "qianyue.png" (signed) or ""
//   lastUpdate        text   date of the last update, "yyyy-MM-dd" (local time)
class VORAComicListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    struct Comic
    {
        QString comicId;
        QString comicName;
        QString comicAuthor;
        QString comicCover;
        QString comicDescription;
        QString comicClickTotal;
        qint32 accredit = 0;
        QDateTime lastUpdate;
    };

    enum Roles {
        ComicIdRole = Qt::UserRole + 1,
        ComicNameRole,
        ComicAuthorRole,
        ComicCoverRole,
        ComicDescriptionRole,
        ComicClickTotalRole,
        BadgeRole,
        LastUpdateRole,
    };

    explicit VORAComicListModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return int(m_comics.size()); }
    const QList<Comic> &comics() const { return m_comics; }
    const Comic *comicAt(int row) const;

    void setComics(const QList<Comic> &comics);
    void appendComics(const QList<Comic> &comics);
    void clear() { setComics({}); }

    // The badge picture of an accredit value: "dujia.png" (1), "qianyue.png" (2), else "".
    static QString accreditBadge(qint32 accredit);
    // Rows of a grid of three cells a row: ceil(count / 3).
    static constexpr int cellsPerRow = 3;
    static int gridRows(int count);

signals:
    void countChanged();

private:
    QList<Comic> m_comics;
};
