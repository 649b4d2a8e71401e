#include "reader/VORAReaderTucaoEditing.h"

#include "core/VORAAppGlobalData.h"
#include "platform/NotificationCenter.h"
#include "reader/ReaderLog.h"
#include "reader/VORAComicViewManager.h"
#include "reader/VORAPictureImageView.h"
#include "reader/VORAReadHomePageViewController.h"
#include "tucao/VORATuCaoEditManager.h"
#include "tucao/VORATuCaoInputView.h"
#include "tucao/VORATucaoPlayback.h"
#include "tucao/VORATucaoPublisher.h"

VORAReaderTucaoEditing::VORAReaderTucaoEditing(VORAReadHomePageViewController *reader)
    : QObject(reader)
    , m_reader(reader)
    , m_tucaoInputView(new VORATuCaoInputView(this))
    , m_tucaoPublisher(new VORATucaoPublisher(this))
{
    connect(m_tucaoInputView, &VORATuCaoInputView::signInRequested, this, &VORAReaderTucaoEditing::signInRequested);
    connect(m_tucaoInputView, &VORATuCaoInputView::placeTucao, this,
            &VORAReaderTucaoEditing::popUPTucaoEditViewWithPoint);
    // A published or moved tucao goes back on its page, a deleted one off it.
    connect(m_tucaoPublisher, &VORATucaoPublisher::published, this, &VORAReaderTucaoEditing::cancelEdit);
    connect(m_tucaoPublisher, &VORATucaoPublisher::updated, this, &VORAReaderTucaoEditing::cancelEdit);
    connect(m_tucaoPublisher, &VORATucaoPublisher::removedFromPage, this, [this](const QString &tucaoId) {
        if (m_tucaoEditPlayback)
            m_tucaoEditPlayback->removeTucao(tucaoId);
    });
    connect(m_tucaoPublisher, &VORATucaoPublisher::closeEditRequested, this,
            &VORAReaderTucaoEditing::hideEditTuCaoView);

    NotificationCenter::defaultCenter().addObserver(this, VORATucaoPlayback::popUpTucaoEditView,
                                                    [this](const Notification &n) { onPopUpTucaoEditView(n); });
}

VORAReaderTucaoEditing::~VORAReaderTucaoEditing()
{
    NotificationCenter::defaultCenter().removeObserver(this);
}

void VORAReaderTucaoEditing::popUpTucaoInputView()
{
    // Nobody signed in: the input view saves the jump type and asks for the
    // sign-in; it does not open.
    if (!VORAAppGlobalData::shareAppGlobalData()->user()->isLogin()) {
        m_tucaoInputView->popUpTucaoInputView();
        return;
    }
    resetComicViewWhenTucao();
    m_tucaoInputView->popUpTucaoInputView();
    emit tucaoInputRequested();
}

void VORAReaderTucaoEditing::resetComicViewWhenTucao()
{
    VORAComicViewManager *surface = m_reader->comicViewManager();
    if (VORAPictureImageView *view = surface->pageViewAt(surface->pageIndex()))
        view->killScrollViewZoom(false);
}

void VORAReaderTucaoEditing::popUPTucaoEditViewWithPoint(const QString &text, const QPointF &point)
{
    VORAComicViewManager *surface = m_reader->comicViewManager();
    VORAPictureImageView *view = surface->pageViewAt(surface->pageIndex());
    if (!view || view->state() != VORAPictureImageView::Shown) {
        qCInfo(lcReader) << "no page to place a tucao on";
        return;
    }
    resetComicViewWhenTucao();
    openTucaoEdit(new VORATuCaoEditManager(text, point, tucaoPlacement(view), m_reader->getCurrentScreenState(), this),
                  view->tucaoPlayback());
}

bool VORAReaderTucaoEditing::showTucaoEditViewWithTucaoView(VORATucaoPlayback *playback, const QString &tucaoId)
{
    VORAComicViewManager *surface = m_reader->comicViewManager();
    VORAPictureImageView *view = surface->pageViewAt(surface->pageIndex());
    if (!view || !playback || view->tucaoPlayback() != playback || m_tucaoInputView->isOpen())
        return false;
    const std::optional<VORATucao> tucao = playback->tucaoWithId(tucaoId);
    if (!tucao || !playback->isOwnTucao(*tucao))
        return false;
    playback->removeTucao(tucaoId);
    resetComicViewWhenTucao();
    openTucaoEdit(new VORATuCaoEditManager(*tucao, tucaoPlacement(view), m_reader->getCurrentScreenState(), this),
                  playback);
    return true;
}

// The page's placement with the surface the editing layer covers.
VORATucaoPagePlacement VORAReaderTucaoEditing::tucaoPlacement(const VORAPictureImageView *view) const
{
    VORATucaoPagePlacement placement = view->tucaoPagePlacement();
    placement.surfaceSize = m_reader->comicViewManager()->viewSize();
    return placement;
}

void VORAReaderTucaoEditing::onPopUpTucaoEditView(const Notification &n)
{
    auto *playback = qobject_cast<VORATucaoPlayback *>(n.userInfo.value(QStringLiteral("playback")).value<QObject *>());
    const QString tucaoId = n.userInfo.value(QStringLiteral("tucao")).toMap().value(QStringLiteral("tucaoId")).toString();
    showTucaoEditViewWithTucaoView(playback, tucaoId);
}

void VORAReaderTucaoEditing::openTucaoEdit(VORATuCaoEditManager *edit, VORATucaoPlayback *playback)
{
    dropTucaoEdit();
    m_tucaoEditManager = edit;
    m_tucaoEditPlayback = playback;
    m_tucaoEditPageId = m_reader->pageId();
    connect(edit, &VORATuCaoEditManager::publishTucaoRequested, this, &VORAReaderTucaoEditing::publishTucao);
    connect(edit, &VORATuCaoEditManager::confirmEditRequested, this, &VORAReaderTucaoEditing::confirmEdit);
    connect(edit, &VORATuCaoEditManager::deleteTucaoRequested, this, &VORAReaderTucaoEditing::deleteTucao);
    connect(edit, &VORATuCaoEditManager::tucaoPutBack, this, &VORAReaderTucaoEditing::cancelEdit);
    connect(edit, &VORATuCaoEditManager::removed, this, [this, edit] {
        if (m_tucaoEditManager == edit)
            dropTucaoEdit();
    });
    emit tucaoEditChanged();
}

void VORAReaderTucaoEditing::dropTucaoEdit()
{
    if (!m_tucaoEditManager)
        return;
    VORATuCaoEditManager *edit = m_tucaoEditManager;
    m_tucaoEditManager = nullptr;
    edit->disconnect(this);
    edit->deleteLater();
    emit tucaoEditChanged();
}

void VORAReaderTucaoEditing::publishTucao(const VORATucaoDTO &dto)
{
    if (!m_tucaoEditManager)
        return;
    m_tucaoPublisher->setPagePlacement(m_tucaoEditManager->placement());
    m_tucaoPublisher->publishTucao(dto, m_tucaoEditPageId);
}

void VORAReaderTucaoEditing::confirmEdit(const VORATucaoDTO &dto)
{
    if (!m_tucaoEditManager)
        return;
    m_tucaoPublisher->setPagePlacement(m_tucaoEditManager->placement());
    m_tucaoPublisher->confirmEdit(dto);
}

void VORAReaderTucaoEditing::deleteTucao(const VORATucaoDTO &dto)
{
    if (!m_tucaoEditManager)
        return;
    m_tucaoPublisher->deleteTucao(dto, m_reader->comicId());
}

void VORAReaderTucaoEditing::cancelEdit(const VORATucao &tucao)
{
    if (m_tucaoEditPlayback)
        m_tucaoEditPlayback->addTucao(tucao);
}

void VORAReaderTucaoEditing::hideEditTuCaoView()
{
    if (m_tucaoEditManager)
        m_tucaoEditManager->hideEditTuCaoView();
}
