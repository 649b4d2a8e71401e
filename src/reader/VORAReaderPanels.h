#pragma once

#include "net/VORAComicInfoDTO.h"
#include "reader/VORAAdjustLuminanceView.h"
#include "reader/VORABookmarkManager.h"
#include "reader/VORAChapterManager.h"

#include <QObject>
#include <QPointer>
#include <QString>

class VORAReadHomeViewControllerHooks;

// The reader's panels while they are open: the chapter list, the bookmarks,
// the brightness panel and the help view. A menu entry opens one (a second
// press while it is open does nothing); a panel asks for its removal when it
// has slid out, and is then deleted by its parent here, after its last signal.
// The chapter and bookmark panels call the reader back through its hooks.
class VORAReaderPanels : public QObject
{
    Q_OBJECT
public:
    explicit VORAReaderPanels(VORAReadHomeViewControllerHooks *hooks, QObject *parent = nullptr);
    ~VORAReaderPanels() override;

    VORAChapterManager *chapterManager() const { return m_chapterManager; }
    VORABookmarkManager *bookmarkManager() const { return m_bookmarkManager; }
    VORAAdjustLuminanceView *luminanceView() const { return m_luminanceView; }
    bool helpShown() const { return m_helpShown; }

    // Its entry again closes it.
    void popUpLuminanceView();
    // Every other menu entry closes the brightness panel before it acts.
    void closeLuminanceView();
    void popUpBookmarkView();
    // The chapter list of the comic, with the chapter being read marked.
    void popUpChapterView(const QString &chapterId, const QString &comicId, const VORAComicInfoDTO &comic);
    void popUpHelpView();
    void hideHelpView();

signals:
    void panelsChanged();
    // The brightness panel's slider moved: the black layer's new opacity.
    void layerOpacityChanged(qreal opacity);

private:
    // Drops a panel once it asked for its removal.
    template<typename Panel>
    void closeWhenRemoved(QPointer<Panel> &slot, Panel *panel);

    VORAReadHomeViewControllerHooks *m_hooks = nullptr;
    QPointer<VORAChapterManager> m_chapterManager;
    QPointer<VORABookmarkManager> m_bookmarkManager;
    QPointer<VORAAdjustLuminanceView> m_luminanceView;
    bool m_helpShown = false;
};
