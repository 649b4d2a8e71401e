#include "VORABookMarkView.h"

#include "BookshelfScreenLists.h"

VORABookMarkView::VORABookMarkView(QObject *parent)
    : ReadingPlaceScreen(parent)
{
}

QString VORABookMarkView::emptyText() const
{
    return QStringLiteral("还没有书签");
}

QList<ReadingPlaceRow> VORABookMarkView::storedRows(VORADatabaseManager &db) const
{
    QList<ReadingPlaceRow> rows;
    for (const VORABookMarkDTO &bookmark : BookshelfScreenLists::bookmarkRows(db))
        rows.append(ReadingPlaceRow::fromBookmark(bookmark));
    return rows;
}

void VORABookMarkView::deleteStored(VORADatabaseManager &db, const ReadingPlaceRow &row) const
{
    BookshelfScreenLists::deleteBookmarkRow(db, row.comicId);
}
