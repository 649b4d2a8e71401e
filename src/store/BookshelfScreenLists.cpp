#include "BookshelfScreenLists.h"

#include "VORADatabaseManager.h"

QList<VORABookShelfDTO> BookshelfScreenLists::sortedByUpdate(QList<VORABookShelfDTO> rows)
{
    auto group = [](const VORABookShelfDTO &row) { return row.isHasUpdate ? 0 : (row.isNotRead ? 1 : 2); };
    std::stable_sort(rows.begin(), rows.end(), [&](const VORABookShelfDTO &a, const VORABookShelfDTO &b) {
        if (group(a) != group(b))
            return group(a) < group(b);
        return a.updateTime > b.updateTime;
    });
    return rows;
}

QStringList BookshelfScreenLists::defaultSectionTitles()
{
    QStringList titles;
    for (char c = 'A'; c <= 'Z'; ++c)
        titles << QString(QLatin1Char(c));
    titles << QStringLiteral("#");
    return titles;
}

QList<QPair<QString, QList<VORABookShelfDTO>>>
BookshelfScreenLists::sectionsByFirstLetter(const QList<VORABookShelfDTO> &rows, const QStringList &sectionTitles)
{
    QList<QPair<QString, QList<VORABookShelfDTO>>> sections;
    if (sectionTitles.isEmpty())
        return sections;
    QList<QList<VORABookShelfDTO>> buckets(sectionTitles.size());
    QList<VORABookShelfDTO> sorted = rows;
    std::stable_sort(sorted.begin(), sorted.end(), [](const VORABookShelfDTO &a, const VORABookShelfDTO &b) {
        return a.nameFirstLetter < b.nameFirstLetter;
    });
    for (const auto &row : std::as_const(sorted)) {
        qsizetype index = sectionTitles.indexOf(row.nameFirstLetter);
        if (index < 0)
            index = sectionTitles.size() - 1;
        buckets[index].append(row);
    }
    for (qsizetype i = 0; i < sectionTitles.size(); ++i) {
        if (!buckets.at(i).isEmpty())
            sections.append({sectionTitles.at(i), buckets.at(i)});
    }
    return sections;
}

QList<VORABookMarkDTO> BookshelfScreenLists::sortedBookmarks(QList<VORABookMarkDTO> rows, bool newestFirst)
{
    return sortedByTime(std::move(rows), newestFirst, [](const VORABookMarkDTO &r) { return r.addBookmarkTime; });
}

QList<VORARecendReadDTO> BookshelfScreenLists::sortedRecentRead(QList<VORARecendReadDTO> rows, bool newestFirst)
{
    return sortedByTime(std::move(rows), newestFirst, [](const VORARecendReadDTO &r) { return r.readTime; });
}

QList<VORABookMarkDTO> BookshelfScreenLists::bookmarkRows(VORADatabaseManager &db)
{
    QList<VORABookMarkDTO> rows;
    for (const auto &record : db.getBookmark())
        rows.append(VORABookMarkDTO::fromRecord(*record));
    return rows;
}

QList<VORARecendReadDTO> BookshelfScreenLists::recentReadRows(VORADatabaseManager &db)
{
    QList<VORARecendReadDTO> rows;
    for (const auto &record : db.getRecentReadInfo())
        rows.append(VORARecendReadDTO::fromRecord(*record));
    return rows;
}

void BookshelfScreenLists::deleteBookmarkRow(VORADatabaseManager &db, const QString &comicId)
{
    for (const auto &record : db.getBookmark()) {
        if (record && record->comicId() == comicId) {
            db.deleteBookmark(record);
            return;
        }
    }
}
