#include "VORABoolshelf.h"

#include "BookshelfScreenLists.h"
#include "VORABookShelfManager.h"
#include "VORADatabaseManager.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORAUser.h"
#include "core/VORAUtility.h"

VORABoolshelf::VORABoolshelf(QObject *parent)
    : QObject(parent)
    , m_list(new VORABookShelfListModel(this))
{
    m_io.setMaxThreadCount(1);
    m_io.setExpiryTimeout(2000);
    if (VORABookShelfManager *shelf = VORABookShelfManager::sharedManager()) {
        connect(shelf, &VORABookShelfManager::synchronizationFinished, this,
                [this](bool, const QString &message, int) { synchronizationFinished(message); });
        connect(shelf, &VORABookShelfManager::removalExchangeFinished, this, [this](bool) {
            if (m_removals > 0 && --m_removals == 0)
                VORAUtility::hideLoadingViewWithParentView(this);
            updateView();
        });
    }
    updateView();
}

VORABoolshelf::~VORABoolshelf()
{
    m_io.waitForDone();
}

QString VORABoolshelf::emptyText()
{
    return QStringLiteral("书架上还没有漫画，在漫画详情页点“加入书架”收藏喜欢的漫画吧");
}

void VORABoolshelf::setSortMode(int mode)
{
    if (mode != ByUpdate && mode != ByFirstLetter)
        return;
    if (mode == m_sortMode)
        return;
    m_sortMode = mode;
    emit sortModeChanged();
    updateView();
}

void VORABoolshelf::setEditing(bool editing)
{
    if (editing && m_comicCount == 0)
        editing = false; // nothing to edit
    if (editing == m_editing)
        return;
    m_editing = editing;
    emit editingChanged();
}

void VORABoolshelf::updateView()
{
    QList<VORABookShelfDTO> rows;
    if (VORABookShelfManager *shelf = VORABookShelfManager::sharedManager()) {
        for (const VORABookShelf &entry : shelf->getAllBookshelf())
            rows.append(VORABookShelfDTO::fromBookShelf(entry));
    }
    if (m_sortMode == ByFirstLetter)
        m_list->setSections(BookshelfScreenLists::sectionsByFirstLetter(rows));
    else
        m_list->setRows(BookshelfScreenLists::sortedByUpdate(rows));
    m_comicCount = int(rows.size());
    emit shelfChanged();
    if (m_comicCount == 0)
        setEditing(false);
}

void VORABoolshelf::deleteComic(const QString &comicId)
{
    VORABookShelfManager *shelf = VORABookShelfManager::sharedManager();
    const auto entry = shelf ? shelf->getBookshelfWithComicId(comicId) : std::nullopt;
    if (!entry)
        return;
    if (m_removals++ == 0)
        VORAUtility::showLoadingViewWithParentView(this, removingText());
    shelf->removeBookshelfAndTellSite(*entry);
    updateView();
}

void VORABoolshelf::synchronizeButtonClick()
{
    if (!m_synchronizeEnabled)
        return;
    if (!VORAUtility::isExistenceNetwork()) {
        VORAUtility::requestAtlerMessage(VORABookShelfManager::networkDownMessage(), VORABookShelfManager::alertTitle(),
                                         this);
        return;
    }
    const bool signedIn = VORAAppGlobalData::shareAppGlobalData()->user()->isLogin();
    VORAUtility::requestAlertMessage(VORABookShelfManager::confirmationMessage(signedIn),
                                     VORABookShelfManager::alertTitle(), synchronizeAlertTag, QStringLiteral("确定"),
                                     QStringLiteral("取消"), this);
}

void VORABoolshelf::alertView(int tag, int buttonIndex)
{
    if (tag != synchronizeAlertTag || buttonIndex != 0)
        return;
    // Signed out meanwhile, or never signed in: the sign-in comes first.
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    if (!global->user()->isLogin()) {
        global->setUserViewJump(1, 2); // back to the shelf, no top-up
        emit signInRequested();
        return;
    }
    VORABookShelfManager *shelf = VORABookShelfManager::sharedManager();
    if (!shelf || shelf->isSynchronizing())
        return;
    setSynchronizeEnabled(false);
    shelf->synchronizeBookshelfWithSite();
}

void VORABoolshelf::synchronizationFinished(const QString &message)
{
    VORAUtility::requestAtlerMessage(message, VORABookShelfManager::alertTitle(), this);
    updateView();
    setSynchronizeEnabled(true);
}

void VORABoolshelf::setSynchronizeEnabled(bool enabled)
{
    if (enabled == m_synchronizeEnabled)
        return;
    m_synchronizeEnabled = enabled;
    emit synchronizeEnabledChanged();
}

void VORABoolshelf::openComic(const QString &comicId)
{
    if (m_editing)
        return;
    VORABookShelfManager *shelf = VORABookShelfManager::sharedManager();
    if (const auto entry = shelf ? shelf->getBookshelfWithComicId(comicId) : std::nullopt)
        emit openComicRequested(entry->comicId, entry->comicName, entry->coverUrl);
}

void VORABoolshelf::continueReading(const QString &comicId)
{
    if (m_editing || comicId.isEmpty())
        return;
    // The reading position is a store read: off the main thread. The pool is
    // waited for on destruction, and a queued call to a deleted object is dropped.
    m_io.start([this, comicId] {
        QString chapterId;
        QString pageId;
        {
            VORADatabaseManager db;
            if (const ReadHistoryPtr history = db.getReadHistoryWithComic(comicId)) {
                chapterId = history->chapterId();
                pageId = history->pageId();
            }
        }
        QMetaObject::invokeMethod(
            this, [this, comicId, chapterId, pageId] { emit readRequested(comicId, chapterId, pageId); },
            Qt::QueuedConnection);
    });
}
