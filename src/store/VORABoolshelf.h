#pragma once

#include "VORABookShelfListModel.h"

#include <QObject>
#include <QString>
#include <QThreadPool>

class VORABookShelfManager;

Q_MOC_INCLUDE("store/VORABookShelfListModel.h")

// The bookshelf screen (main button 105): the shelf of the bookshelf manager
// as rows in one of two orders (by update: updated, then not read, then the
// rest; by first letter: A-Z sections and "#" for the rest, empty sections
// dropped), an edit mode in which a comic is removed (locally, then the site
// is told), and the synchronise button, which merges the reader's shelf on
// the site into this one after a confirmation.
//
// A tap on a comic ends in openComicRequested (the detail page); "continue"
// in readRequested at the comic's reading position, read off the main
// thread (empty chapter and page: the first chapter from its first page).
// Sign-in is asked for with signInRequested. Alerts go through the app's
// overlay layer and come back to alertView.
class VORABoolshelf : public QObject
{
    Q_OBJECT
    Q_PROPERTY(VORABookShelfListModel *shelfList READ shelfList CONSTANT)
    Q_PROPERTY(int sortMode READ sortMode WRITE setSortMode NOTIFY sortModeChanged)
    Q_PROPERTY(bool editing READ isEditing WRITE setEditing NOTIFY editingChanged)
    Q_PROPERTY(bool synchronizeEnabled READ synchronizeEnabled NOTIFY synchronizeEnabledChanged)
    Q_PROPERTY(int comicCount READ comicCount NOTIFY shelfChanged)
    Q_PROPERTY(QString emptyText READ emptyText CONSTANT)
public:
    enum SortMode { ByUpdate = 0, ByFirstLetter = 1 };
    Q_ENUM(SortMode)
    static constexpr int synchronizeAlertTag = 1050;
    static QString removingText() { return QStringLiteral("正从书架删除..."); }

    explicit VORABoolshelf(QObject *parent = nullptr);
    ~VORABoolshelf() override;

    VORABookShelfListModel *shelfList() const { return m_list; }
    int sortMode() const { return m_sortMode; }
    void setSortMode(int mode);
    bool isEditing() const { return m_editing; }
    void setEditing(bool editing);
    bool synchronizeEnabled() const { return m_synchronizeEnabled; }
    int comicCount() const { return m_comicCount; }
    static QString emptyText();

    // Rebuilds the rows from the manager's shelf in the current order.
    Q_INVOKABLE void updateView();
    Q_INVOKABLE void editButtonClick() { setEditing(!m_editing); }
    // Edit mode: removes the comic here, then tells the site.
    Q_INVOKABLE void deleteComic(const QString &comicId);
    Q_INVOKABLE void synchronizeButtonClick();
    Q_INVOKABLE void alertView(int tag, int buttonIndex);
    // A tap on a comic (outside edit mode): its detail page.
    Q_INVOKABLE void openComic(const QString &comicId);
    Q_INVOKABLE void continueReading(const QString &comicId);

signals:
    void sortModeChanged();
    void editingChanged();
    void synchronizeEnabledChanged();
    void shelfChanged();
    void openComicRequested(const QString &comicId, const QString &comicName, const QString &comicCover);
    void readRequested(const QString &comicId, const QString &chapterId, const QString &pageId);
    void signInRequested();

private:
    void setSynchronizeEnabled(bool enabled);
    void synchronizationFinished(const QString &message);

    VORABookShelfListModel *m_list = nullptr;
    int m_sortMode = ByUpdate;
    bool m_editing = false;
    bool m_synchronizeEnabled = true;
    int m_comicCount = 0;
    int m_removals = 0;
    QThreadPool m_io;
};
