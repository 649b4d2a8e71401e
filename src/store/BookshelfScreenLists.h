#pragma once

#include "VORABookMarkDTO.h"
#include "VORABookShelfDTO.h"
#include "VORARecendReadDTO.h"

#include <QList>
#include <QPair>
#include <QStringList>

#include <algorithm>

class VORADatabaseManager;

// The list orders of the bookshelf, bookmarks and recent-reading screens.
class BookshelfScreenLists
{
public:
    // Entries with an update, then not-read entries, then the rest; each group
    // newest updateTime first.
    static QList<VORABookShelfDTO> sortedByUpdate(QList<VORABookShelfDTO> rows);

    // The screen's section titles: "A".."Z" and "#" for every other letter.
    static QStringList defaultSectionTitles();
    // Rows grouped by nameFirstLetter into the given sections, in the given
    // order, empty sections dropped. A letter not among the titles goes to the
    // last section. Within a section, ordered by nameFirstLetter.
    static QList<QPair<QString, QList<VORABookShelfDTO>>>
    sectionsByFirstLetter(const QList<VORABookShelfDTO> &rows,
                          const QStringList &sectionTitles = defaultSectionTitles());

    // The bookmarks and recent-reading orders: by the row's time, newest or
    // oldest first; rows of equal time keep their order.
    template<class Row, class TimeOf>
    static QList<Row> sortedByTime(QList<Row> rows, bool newestFirst, TimeOf timeOf)
    {
        std::stable_sort(rows.begin(), rows.end(), [&](const Row &a, const Row &b) {
            return newestFirst ? timeOf(a) > timeOf(b) : timeOf(a) < timeOf(b);
        });
        return rows;
    }
    static QList<VORABookMarkDTO> sortedBookmarks(QList<VORABookMarkDTO> rows, bool newestFirst);
    static QList<VORARecendReadDTO> sortedRecentRead(QList<VORARecendReadDTO> rows, bool newestFirst);

    static QList<VORABookMarkDTO> bookmarkRows(VORADatabaseManager &db);
    static QList<VORARecendReadDTO> recentReadRows(VORADatabaseManager &db);

    // Deleting a bookmark row deletes the newest stored bookmark of the row's
    // comic (not necessarily the row's own page), on the bookmarks screen and
    // in the reader's bookmark panel alike; the screen removes the row.
    static void deleteBookmarkRow(VORADatabaseManager &db, const QString &comicId);
};
