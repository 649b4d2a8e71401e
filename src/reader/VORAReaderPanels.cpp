#include "reader/VORAReaderPanels.h"

#include "reader/VORAAdjustLuminanceView.h"
#include "reader/VORABookmarkManager.h"
#include "reader/VORAChapterManager.h"

VORAReaderPanels::VORAReaderPanels(VORAReadHomeViewControllerHooks *hooks, QObject *parent)
    : QObject(parent)
    , m_hooks(hooks)
{
}

VORAReaderPanels::~VORAReaderPanels()
{
    // The panels go with this object; they call back into the reader, which
    // is no longer there to hear.
    if (m_chapterManager)
        m_chapterManager->setReadHomeController(nullptr);
    if (m_bookmarkManager)
        m_bookmarkManager->setReadHomeController(nullptr);
}

template<typename Panel>
void VORAReaderPanels::closeWhenRemoved(QPointer<Panel> &slot, Panel *panel)
{
    slot = panel;
    connect(panel, &Panel::removeFromSuperview, this, [this, &slot, panel]() {
        if (slot == panel)
            slot = nullptr;
        panel->deleteLater();
        emit panelsChanged();
    });
    emit panelsChanged();
}

void VORAReaderPanels::popUpLuminanceView()
{
    if (m_luminanceView) {
        closeLuminanceView();
        return;
    }
    auto *panel = new VORAAdjustLuminanceView(this);
    connect(panel, &VORAAdjustLuminanceView::layerOpacityChanged, this, &VORAReaderPanels::layerOpacityChanged);
    closeWhenRemoved(m_luminanceView, panel);
}

void VORAReaderPanels::closeLuminanceView()
{
    if (m_luminanceView)
        m_luminanceView->close();
}

void VORAReaderPanels::popUpBookmarkView()
{
    if (m_bookmarkManager)
        return;
    auto *panel = new VORABookmarkManager(this);
    panel->setReadHomeController(m_hooks);
    closeWhenRemoved(m_bookmarkManager, panel);
}

void VORAReaderPanels::popUpChapterView(const QString &chapterId, const QString &comicId,
                                        const VORAComicInfoDTO &comic)
{
    if (m_chapterManager)
        return;
    auto *panel = new VORAChapterManager(chapterId, comicId, this);
    panel->setReadHomeController(m_hooks);
    panel->setComicInfoDTO(comic);
    closeWhenRemoved(m_chapterManager, panel);
}

void VORAReaderPanels::popUpHelpView()
{
    if (m_helpShown)
        return;
    m_helpShown = true;
    emit panelsChanged();
}

void VORAReaderPanels::hideHelpView()
{
    if (!m_helpShown)
        return;
    m_helpShown = false;
    emit panelsChanged();
}
