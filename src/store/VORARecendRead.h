#pragma once

#include "ReadingPlaceScreen.h"

// The recent-reading screen: the comics last opened (the reader keeps at most
// 30), each at the chapter and page reached. Deleting a row deletes the
// comic's entry.
class VORARecendRead : public ReadingPlaceScreen
{
    Q_OBJECT
public:
    explicit VORARecendRead(QObject *parent = nullptr);
    QString emptyText() const override;

protected:
    QList<ReadingPlaceRow> storedRows(VORADatabaseManager &db) const override;
    void deleteStored(VORADatabaseManager &db, const ReadingPlaceRow &row) const override;
};
