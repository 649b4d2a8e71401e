#include "ReadingPlaceScreen.h"

#include "BookshelfScreenLists.h"
#include "VORADatabaseManager.h"
#include "VORAPersistenceManager.h"

ReadingPlaceScreen::ReadingPlaceScreen(QObject *parent)
    : QObject(parent)
    , m_rows(new ReadingPlaceListModel(this))
{
}

ReadingPlaceScreen::~ReadingPlaceScreen() = default;

VORADatabaseManager &ReadingPlaceScreen::store()
{
    return *VORAPersistenceManager::getPersistenceManager()->databaseManager();
}

QList<ReadingPlaceRow> ReadingPlaceScreen::sorted(QList<ReadingPlaceRow> rows) const
{
    return BookshelfScreenLists::sortedByTime(std::move(rows), m_newestFirst,
                                              [](const ReadingPlaceRow &r) { return r.time; });
}

void ReadingPlaceScreen::setNewestFirst(bool newestFirst)
{
    if (m_newestFirst == newestFirst)
        return;
    m_newestFirst = newestFirst;
    m_rows->setPlaceRows(sorted(m_rows->placeRows()));
    emit newestFirstChanged();
}

void ReadingPlaceScreen::setEditing(bool editing)
{
    if (m_editing == editing)
        return;
    m_editing = editing;
    emit editingChanged();
}

void ReadingPlaceScreen::updateView()
{
    m_rows->setPlaceRows(sorted(storedRows(store())));
}

void ReadingPlaceScreen::deleteRow(int row)
{
    if (!m_editing || row < 0 || row >= m_rows->count())
        return;
    deleteStored(store(), m_rows->placeRows().at(row));
    m_rows->removePlaceRow(row);
    if (m_rows->count() == 0)
        setEditing(false);
}

void ReadingPlaceScreen::selectRow(int row)
{
    if (m_editing || row < 0 || row >= m_rows->count())
        return;
    const ReadingPlaceRow &place = m_rows->placeRows().at(row);
    emit readRequested(place.comicId, place.chapterId, place.pageId);
}
