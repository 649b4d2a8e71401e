#pragma once

#include "reader/VORAReaderSidePanel.h"
#include "store/VORABookMarkDTO.h"

#include <QList>

class VORABookmarkListModel;
class VORADatabaseManager;
class VORAReadHomeViewControllerHooks;

Q_MOC_INCLUDE("reader/VORABookmarkListModel.h")

// The reader's bookmark panel: every stored bookmark of every comic, read from
// the store once when the panel is made and shown newest first (the panel
// sorts once as it opens; each press of the sort button reverses the order).
// A tap on a row opens the bookmarked page through the reader screen
// (skipeToComicWithBookmark) and closes the panel.
//
// Deleting a row (deleteCurrentBookmark) removes that row from the list and
// deletes from the store what the bookmarks screen deletes for it
// (BookshelfScreenLists::deleteBookmarkRow: the comic's newest stored
// bookmark, which need not be the row's own).
//
// The store is read and written on a worker queue shared by every bookmark
// panel, each job with a store manager of its own, so a panel opened after a
// deletion sees it. bookmarksLoaded() tells that the list is in.
//
// Main thread only. The reader controller sets itself as readHomeController
// (not owned; it must outlive the panel) and deletes the panel on
// removeFromSuperview().
class VORABookmarkManager : public VORAReaderSidePanel
{
    Q_OBJECT
    Q_PROPERTY(VORABookmarkListModel *model READ bookmarkListModel CONSTANT)
    Q_PROPERTY(int bookmarkType READ bookmarkType NOTIFY bookmarkTypeChanged)
    Q_PROPERTY(bool loaded READ isLoaded NOTIFY bookmarksLoaded)
    Q_PROPERTY(int rowHeight READ rowHeight CONSTANT)
public:
    // initWithFrame: builds the panel and calls updateBookmarkInfo().
    explicit VORABookmarkManager(QObject *parent = nullptr);
    ~VORABookmarkManager() override;

    void setReadHomeController(VORAReadHomeViewControllerHooks *controller) { m_readHomeController = controller; }
    VORAReadHomeViewControllerHooks *readHomeController() const { return m_readHomeController; }

    VORABookmarkListModel *bookmarkListModel() const { return m_model; }
    const QList<VORABookMarkDTO> &mybookmarkList() const { return m_mybookmarkList; }
    int bookmarkType() const { return m_bookmarkType; }
    bool isLoaded() const { return m_loaded; }
    int rowHeight() const { return 122; }

    // Every stored bookmark, in store order.
    static QList<VORABookMarkDTO> getBookmarkList(VORADatabaseManager &dbM);

    // Reads the list (off the main thread), then bookmarkSort().
    Q_INVOKABLE void updateBookmarkInfo();
    Q_INVOKABLE void bookmarkSort();
    // The sort button's action.
    Q_INVOKABLE void chapterSort() { bookmarkSort(); }
    void sortBookmarkPositive();
    void sortBookmarkAntitone();

    void deleteCurrentBookmark(const VORABookMarkDTO &bookmark);
    // The row's delete action, after its "删除" confirmation.
    Q_INVOKABLE void deleteCurrentBookmarkAtRow(int row);
    // A tap on the row as shown.
    Q_INVOKABLE void selectBookmarkAtRow(int row);

signals:
    void bookmarkTypeChanged();
    void bookmarksLoaded();

private:
    void applyBookmarkList(const QList<VORABookMarkDTO> &list);
    void reloadTable();

    VORAReadHomeViewControllerHooks *m_readHomeController = nullptr;
    VORABookmarkListModel *m_model = nullptr;
    QList<VORABookMarkDTO> m_mybookmarkList;
    int m_bookmarkType = 0;
    bool m_loaded = false;
    quint64 m_generation = 0;
};
