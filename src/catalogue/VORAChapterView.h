#pragma once

#include "net/VORAChapterInfoDTO.h"

#include <QAbstractListModel>
#include <QDateTime>
#include <QList>

// The chapter list of the comic detail page: one row per chapter of the
// comic's "chapter_list", sorted by chapterIndex (ascending = server order).
//
// Roles:
//   chapterId     text    the chapter's identifier
//   name          text    the chapter's title
//   chapterIndex  int     position in "chapter_list", from 0
//   sizeText      text    "%ldP/%.2fM": pages and size (kilobytes / 1024)
//   mark          text    "comicbuyed", "buyread", "delayread" or "" (markForChapter)
//   sealed        bool    inside the seven-day seal (comics with is_vip 3 only)
//   buyed, isView, type, price   int   the purchase fields as received
//   downloaded    bool    the chapter is downloaded completely on this device
class VORAChapterView : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(bool ascending READ ascending NOTIFY ascendingChanged)
    Q_PROPERTY(QString sortButtonImage READ sortButtonImage NOTIFY ascendingChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int rowHeight READ rowHeight CONSTANT)
    Q_PROPERTY(int tableTop READ tableTop CONSTANT)
public:
    enum Roles {
        ChapterIdRole = Qt::UserRole + 1,
        NameRole,
        ChapterIndexRole,
        SizeTextRole,
        MarkRole,
        SealedRole,
        BuyedRole,
        IsViewRole,
        TypeRole,
        PriceRole,
        DownloadedRole,
    };

    struct Row
    {
        VORAChapterInfoDTO chapter;
        bool downloaded = false;
    };

    explicit VORAChapterView(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    bool ascending() const { return m_ascending; }
    QString sortButtonImage() const { return m_sortButtonImage; }
    int count() const { return int(m_rows.size()); }
    int rowHeight() const { return 45; }
    int tableTop() const { return 35; }

    // Replaces the rows (kept in the current sort order).
    void updateDate(const QList<Row> &rows, qint64 isVip, const QDateTime &now);
    // Recomputes the marks for another "now" (the seal moves with time).
    void setNow(const QDateTime &now);
    const Row *rowAt(int row) const;
    QStringList chapterIds() const;

    // The sort button: flips the order and re-sorts.
    Q_INVOKABLE void chapterSortUp();
    void sortChapter();

    static QString sizeText(qint64 imageCount, qint64 imageSize);

signals:
    void ascendingChanged();
    void countChanged();

private:
    QList<Row> m_rows;
    qint64 m_isVip = 0;
    QDateTime m_now;
    bool m_ascending = true;
    QString m_sortButtonImage = QStringLiteral("comichomepagesort.png");
};
