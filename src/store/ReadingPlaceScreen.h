#pragma once

#include "ReadingPlaceListModel.h"

#include <QObject>
#include <QString>

class VORADatabaseManager;

// What the bookmarks screen and the recent-reading screen share: the rows of a
// store list in one of two orders by their time (newest first unless the
// order switch says otherwise), an edit mode in which a row is deleted, and a
// tap on a row that asks for the reader at the row's chapter and page
// (readRequested; the root controller opens the reader).
//
// updateView reads the list again from the store (the persistence manager's
// main-thread instance; a few hundred rows read in a few milliseconds). The
// subclass says which list it is and what deleting a row deletes.
class ReadingPlaceScreen : public QObject
{
    Q_OBJECT
    Q_PROPERTY(ReadingPlaceListModel *rows READ rows CONSTANT)
    Q_PROPERTY(bool newestFirst READ newestFirst WRITE setNewestFirst NOTIFY newestFirstChanged)
    Q_PROPERTY(bool editing READ isEditing WRITE setEditing NOTIFY editingChanged)
    Q_PROPERTY(QString emptyText READ emptyText CONSTANT)
public:
    ~ReadingPlaceScreen() override;

    ReadingPlaceListModel *rows() const { return m_rows; }
    bool newestFirst() const { return m_newestFirst; }
    void setNewestFirst(bool newestFirst);
    bool isEditing() const { return m_editing; }
    void setEditing(bool editing);
    // Shown in place of the list while it is empty.
    virtual QString emptyText() const = 0;

    Q_INVOKABLE void toggleOrder() { setNewestFirst(!m_newestFirst); }
    Q_INVOKABLE void editButtonClick() { setEditing(!m_editing); }
    Q_INVOKABLE void updateView();
    // Edit mode only: deletes the row's place from the store and the row from
    // the list; the last row gone ends the edit mode.
    Q_INVOKABLE void deleteRow(int row);
    // Outside edit mode: readRequested for the row.
    Q_INVOKABLE void selectRow(int row);

signals:
    void newestFirstChanged();
    void editingChanged();
    void readRequested(const QString &comicId, const QString &chapterId, const QString &pageId);

protected:
    explicit ReadingPlaceScreen(QObject *parent);
    // The screen's list as the store holds it.
    virtual QList<ReadingPlaceRow> storedRows(VORADatabaseManager &db) const = 0;
    virtual void deleteStored(VORADatabaseManager &db, const ReadingPlaceRow &row) const = 0;

private:
    static VORADatabaseManager &store();
    QList<ReadingPlaceRow> sorted(QList<ReadingPlaceRow> rows) const;

    ReadingPlaceListModel *m_rows;
    bool m_newestFirst = true;
    bool m_editing = false;
};
