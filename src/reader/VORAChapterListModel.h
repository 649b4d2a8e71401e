#pragma once

#include "net/VORAChapterInfoDTO.h"

#include <QAbstractListModel>
#include <QDateTime>
#include <QList>

// The rows of the reader's chapter panel, in the panel's order, with the marks
// of the detail page's chapter cells.
//
// Roles:
//   chapterId     text    the chapter's identifier
//   name          text    the chapter's title
//   chapterIndex  int     position in the comic's "chapter_list", from 0
//   sizeText      text    "%ldP/%.2fM" as on the detail page
//   mark          text    "comicbuyed", "buyread", "delayread" or "" (the detail page's rule)
//   sealed        bool    inside the seven-day seal (comics with is_vip 3 only)
//   price         int     coins
//   current       bool    the chapter being read
class VORAChapterListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int currentRow READ currentRow NOTIFY currentRowChanged)
public:
    enum Roles {
        ChapterIdRole = Qt::UserRole + 1,
        NameRole,
        ChapterIndexRole,
        SizeTextRole,
        MarkRole,
        SealedRole,
        PriceRole,
        CurrentRole,
    };

    explicit VORAChapterListModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return int(m_chapters.size()); }
    // The row of the chapter being read, -1 when it is not listed.
    int currentRow() const;

    // Replaces every row (the table's reload).
    void setChapters(const QList<VORAChapterInfoDTO> &chapters, qint64 isVip, const QDateTime &now,
                     const QString &currentChapterId);
    const VORAChapterInfoDTO *chapterAt(int row) const;

signals:
    void countChanged();
    void currentRowChanged();

private:
    QList<VORAChapterInfoDTO> m_chapters;
    qint64 m_isVip = 0;
    QDateTime m_now;
    QString m_currentChapterId;
};
