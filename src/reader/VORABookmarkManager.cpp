#include "reader/VORABookmarkManager.h"

#include "reader/VORABookmarkListModel.h"
#include "reader/VORAReadHomeViewControllerHooks.h"
#include "store/BookshelfScreenLists.h"
#include "store/VORADatabaseManager.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

namespace {
// One thread, jobs in the order given: a deletion is in the store before a
// panel opened after it reads the list. Lives as long as the application.
QThreadPool *bookmarkStoreQueue()
{
    static QThreadPool *queue = [] {
        auto *pool = new QThreadPool(QCoreApplication::instance());
        pool->setMaxThreadCount(1);
        pool->setObjectName(QStringLiteral("VORABookmarkStoreQueue"));
        return pool;
    }();
    return queue;
}
} // namespace

VORABookmarkManager::VORABookmarkManager(QObject *parent)
    : VORAReaderSidePanel(parent)
    , m_model(new VORABookmarkListModel(this))
{
    updateBookmarkInfo();
}

VORABookmarkManager::~VORABookmarkManager() = default;

QList<VORABookMarkDTO> VORABookmarkManager::getBookmarkList(VORADatabaseManager &dbM)
{
    QList<VORABookMarkDTO> list;
    for (const BookmarkPtr &record : dbM.getBookmark()) {
        if (record)
            list.append(VORABookMarkDTO::fromRecord(*record));
    }
    return list;
}

void VORABookmarkManager::updateBookmarkInfo()
{
    const quint64 generation = ++m_generation;
    QPointer<VORABookmarkManager> self(this);
    bookmarkStoreQueue()->start([self, generation]() {
        QList<VORABookMarkDTO> list;
        {
            VORADatabaseManager dbM;
            list = getBookmarkList(dbM);
        }
        // Checked on the main thread: the panel may be gone by then.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, generation, list]() {
                if (self && self->m_generation == generation)
                    self->applyBookmarkList(list);
            },
            Qt::QueuedConnection);
    });
}

void VORABookmarkManager::applyBookmarkList(const QList<VORABookMarkDTO> &list)
{
    m_mybookmarkList = list;
    reloadTable();
    bookmarkSort();
    m_loaded = true;
    emit bookmarksLoaded();
}

void VORABookmarkManager::reloadTable()
{
    m_model->setBookmarks(m_mybookmarkList);
}

void VORABookmarkManager::bookmarkSort()
{
    if (m_bookmarkType != 1) {
        m_bookmarkType = 1;
        sortBookmarkPositive();
    } else {
        m_bookmarkType = 0;
        sortBookmarkAntitone();
    }
    emit bookmarkTypeChanged();
}

void VORABookmarkManager::sortBookmarkPositive()
{
    if (m_mybookmarkList.isEmpty())
        return;
    // positiveUpdate: a later addBookmarkTime first, equal times keep their order.
    m_mybookmarkList = BookshelfScreenLists::sortedBookmarks(m_mybookmarkList, true);
    reloadTable();
}

void VORABookmarkManager::sortBookmarkAntitone()
{
    if (m_mybookmarkList.isEmpty())
        return;
    m_mybookmarkList = BookshelfScreenLists::sortedBookmarks(m_mybookmarkList, false);
    reloadTable();
}

void VORABookmarkManager::deleteCurrentBookmark(const VORABookMarkDTO &bookmark)
{
    const QString comicId = bookmark.comicId;
    bookmarkStoreQueue()->start([comicId]() {
        VORADatabaseManager dbM;
        BookshelfScreenLists::deleteBookmarkRow(dbM, comicId);
    });
    m_mybookmarkList.removeOne(bookmark);
    reloadTable();
}

void VORABookmarkManager::deleteCurrentBookmarkAtRow(int row)
{
    if (row < 0 || row >= m_mybookmarkList.size() || isClosing())
        return;
    const VORABookMarkDTO bookmark = m_mybookmarkList.at(row);
    deleteCurrentBookmark(bookmark);
}

void VORABookmarkManager::selectBookmarkAtRow(int row)
{
    if (row < 0 || row >= m_mybookmarkList.size() || isClosing())
        return;
    const VORABookMarkDTO bookmark = m_mybookmarkList.at(row);
    QPointer<VORABookmarkManager> self(this);
    if (m_readHomeController)
        m_readHomeController->skipeToComicWithBookmark(bookmark);
    if (self)
        mengbanBtnClick();
}
