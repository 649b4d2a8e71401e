#pragma once

#include "ReadingPlaceScreen.h"

// The bookmarks screen: every stored bookmark. Deleting a row deletes the
// newest stored bookmark of the row's comic (BookshelfScreenLists), then the
// row.
class VORABookMarkView : public ReadingPlaceScreen
{
    Q_OBJECT
public:
    explicit VORABookMarkView(QObject *parent = nullptr);
    QString emptyText() const override;

protected:
    QList<ReadingPlaceRow> storedRows(VORADatabaseManager &db) const override;
    void deleteStored(VORADatabaseManager &db, const ReadingPlaceRow &row) const override;
};
