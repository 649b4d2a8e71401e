#include "VORARecendRead.h"

#include "BookshelfScreenLists.h"
#include "VORADatabaseManager.h"

VORARecendRead::VORARecendRead(QObject *parent)
    : ReadingPlaceScreen(parent)
{
}

QString VORARecendRead::emptyText() const
{
    return QStringLiteral("还没有阅读记录");
}

QList<ReadingPlaceRow> VORARecendRead::storedRows(VORADatabaseManager &db) const
{
    QList<ReadingPlaceRow> rows;
    for (const VORARecendReadDTO &entry : BookshelfScreenLists::recentReadRows(db))
        rows.append(ReadingPlaceRow::fromRecentRead(entry));
    return rows;
}

void VORARecendRead::deleteStored(VORADatabaseManager &db, const ReadingPlaceRow &row) const
{
    if (const RecentReadInfoPtr entry = db.getRecentReadInfoWithComic(row.comicId))
        db.deleteRecentReadInfo(entry);
}
