#include "reader/VORAReadHomePageViewController.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORAUserConfig.h"
#include "core/VORAUtility.h"
#include "platform/NotificationCenter.h"
#include "reader/ReaderLog.h"
#include "reader/VORAAdjustLuminanceView.h"
#include "reader/VORABookmarkManager.h"
#include "reader/VORAChapterManager.h"
#include "reader/VORAComicViewManager.h"
#include "reader/VORAPageDownloadManager.h"
#include "reader/VORAPictureImageView.h"
#include "reader/VORAReadComicManager.h"
#include "reader/VORAReadGate.h"
#include "reader/VORAReadPageLog.h"
#include "store/ReadingPositionRecorder.h"
#include "store/VORADatabaseManager.h"
#include "store/VORAPersistenceManager.h"
#include "tucao/VORATuCaoEditManager.h"
#include "tucao/VORATuCaoInputView.h"
#include "tucao/VORATuCaoMenuView.h"
#include "tucao/VORATucaoPlayback.h"
#include "tucao/VORATucaoPublisher.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>

#include <cmath>

namespace {
// How long a reader that was left keeps its read-log upload alive.
constexpr int uploadGraceMs = 60000;
} // namespace

VORAReadHomePageViewController::VORAReadHomePageViewController(QObject *parent)
    : QObject(parent)
    , m_comicViewManager(new VORAComicViewManager(this))
    , m_readPageLog(new VORAReadPageLog(this))
    , m_tucaoInputView(new VORATuCaoInputView(this))
    , m_tucaoPublisher(new VORATucaoPublisher(this))
    , m_luminanceValue(VORAUserConfig::shareUserConfigInstance()->luminanceValue())
{
    m_store.setMaxThreadCount(1);
    m_store.setExpiryTimeout(5000);
    m_positionTimer.setSingleShot(true);
    m_positionTimer.setInterval(positionSaveDelayMs);
    connect(&m_positionTimer, &QTimer::timeout, this, &VORAReadHomePageViewController::saveReadHistoryInfo);

    connect(m_comicViewManager, &VORAComicViewManager::requestPageWithIndex, this,
            &VORAReadHomePageViewController::requestPageWithIndex);
    connect(m_comicViewManager, &VORAComicViewManager::toggleMenuRequested, this,
            &VORAReadHomePageViewController::toggleMenu);
    connect(m_comicViewManager, &VORAComicViewManager::showMenuRequested, this,
            &VORAReadHomePageViewController::showMenu);
    connect(m_comicViewManager, &VORAComicViewManager::reloadPageRequested, this,
            &VORAReadHomePageViewController::retryCurrentPage);
    connect(m_comicViewManager, &VORAComicViewManager::viewSizeChanged, this,
            &VORAReadHomePageViewController::screenStateChanged);
    connect(m_comicViewManager, &VORAComicViewManager::pageImageDecoded, this, [this](int index, bool ok) {
        if (!ok)
            dropCachedPage(index);
    });

    // The tucao menu shows and hides with the bars.
    connect(this, &VORAReadHomePageViewController::menuChanged, this, [this] {
        NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::isHiddenTuCao), this,
                                                 {{QStringLiteral("KTuCaoViewBOOLValue"), !m_menuShown}});
    });
    connect(m_comicViewManager, &VORAComicViewManager::writeTucaoRequested, this,
            &VORAReadHomePageViewController::popUpTucaoInputView);

    // Tucao editing.
    connect(m_tucaoInputView, &VORATuCaoInputView::signInRequested, this,
            &VORAReadHomePageViewController::createUserView);
    connect(m_tucaoInputView, &VORATuCaoInputView::placeTucao, this,
            &VORAReadHomePageViewController::popUPTucaoEditViewWithPoint);
    connect(m_tucaoPublisher, &VORATucaoPublisher::published, this, [this](const VORATucao &tucao) {
        if (m_tucaoEditPlayback)
            m_tucaoEditPlayback->addTucao(tucao);
    });
    connect(m_tucaoPublisher, &VORATucaoPublisher::updated, this, [this](const VORATucao &tucao) {
        if (m_tucaoEditPlayback)
            m_tucaoEditPlayback->addTucao(tucao);
    });
    connect(m_tucaoPublisher, &VORATucaoPublisher::removedFromPage, this, [this](const QString &tucaoId) {
        if (m_tucaoEditPlayback)
            m_tucaoEditPlayback->removeTucao(tucaoId);
    });
    connect(m_tucaoPublisher, &VORATucaoPublisher::closeEditRequested, this,
            &VORAReadHomePageViewController::hideEditTuCaoView);

    auto &center = NotificationCenter::defaultCenter();
    center.addObserver(this, VORATucaoPlayback::popUpTucaoEditView,
                       [this](const Notification &n) { onPopUpTucaoEditView(n); });
    center.addObserver(this, QString::fromLatin1(VORANotificationNames::applicationExit),
                       [this](const Notification &) { saveReadHistoryInfo(); });
    // A dialog of the gate (or of a purchase) for the chapter being opened:
    // the wait is over until it is answered.
    center.addObserver(this, QString::fromLatin1(VORANotificationNames::uiAlertRequest),
                       [this](const Notification &n) { onAlertRequest(n); });
}

VORAReadHomePageViewController::~VORAReadHomePageViewController()
{
    NotificationCenter::defaultCenter().removeObserver(this);
    m_positionTimer.stop();
    m_store.waitForDone();
    // The panels call back into the screen: they go first.
    delete m_chapterManager;
    delete m_bookmarkManager;
    delete m_luminanceView;
    delete m_pendingSession;
    delete m_session;
}

QObject *VORAReadHomePageViewController::comicViewManagerObject() const
{
    return m_comicViewManager;
}

QObject *VORAReadHomePageViewController::tucaoInputViewObject() const
{
    return m_tucaoInputView;
}

QObject *VORAReadHomePageViewController::tucaoEditManagerObject() const
{
    return m_tucaoEditManager;
}

QObject *VORAReadHomePageViewController::chapterPanelObject() const
{
    return m_chapterManager;
}

QObject *VORAReadHomePageViewController::bookmarkPanelObject() const
{
    return m_bookmarkManager;
}

QObject *VORAReadHomePageViewController::luminancePanelObject() const
{
    return m_luminanceView;
}

int VORAReadHomePageViewController::pageCount() const
{
    return m_session ? int(m_session->pageList().size()) : 0;
}

int VORAReadHomePageViewController::getCurrentScreenState() const
{
    return m_comicViewManager->isLandscape() ? 1 : 0;
}

bool VORAReadHomePageViewController::isVerticalScreen() const
{
    return VORAUserConfig::shareUserConfigInstance()->isVerticalScreen();
}

// --- Rules ---

int VORAReadHomePageViewController::roundHalfUp(double value)
{
    if (!std::isfinite(value))
        return 0;
    const double whole = std::floor(value);
    return int(value - whole < 0.5 ? whole : whole + 1);
}

QString VORAReadHomePageViewController::titleText(const QString &comicName, const QString &chapterName)
{
    return comicName + QLatin1Char('-') + chapterName;
}

QString VORAReadHomePageViewController::pageLabelText(int pageIndex, qsizetype pageCount)
{
    return QString::asprintf("%d/%ld", pageIndex + 1, long(pageCount));
}

// --- Opening ---

void VORAReadHomePageViewController::openComic(const QString &comicId, const QString &chapterId, const QString &pageId)
{
    m_active = true;
    m_closing = false;
    emit activeChanged();
    requestPageDataWithComicId(comicId, chapterId, pageId);
}

void VORAReadHomePageViewController::requestPageDataWithComicId(const QString &comicId, const QString &chapterId,
                                                                const QString &pageId)
{
    // A chapter still being opened is given up for this one.
    delete m_pendingSession;
    m_pendingSession = nullptr;
    m_pendingComicId = comicId;
    m_pendingChapterId = chapterId;
    m_pendingPageId = pageId.isEmpty() ? VORAReadComicManager::kFirstPage : pageId;
    m_chapterLoadFailed = false;
    if (!m_session && !m_menuShown) {
        // Nothing to read yet: the way back stays in reach until the pages come.
        showMenu();
        m_menuForLoading = true;
    }
    setLoading(true);
    auto *session = new VORAReadComicManager(comicId, chapterId, m_pendingPageId, this);
    session->setDelegate(this);
    session->setReadHomeViewController(this);
    m_pendingSession = session;
    session->load(); // a downloaded chapter answers before load() returns
}

void VORAReadHomePageViewController::comicInfoLoadDidFinishedWithError(const NetError *error)
{
    // Which session speaks: the one being opened, unless it has not got its
    // comic yet (then the one on screen reloaded its pages after a sign-in).
    VORAReadComicManager *session = m_session;
    if (m_pendingSession && (error || m_pendingSession->comicInfoDTO().has_value() || !m_session))
        session = m_pendingSession;
    if (!session)
        return;
    if (error) {
        qCWarning(lcReader) << "chapter" << session->chapterId() << "of comic" << session->comicId()
                            << "could not be opened:" << error->localizedDescription;
        if (session == m_pendingSession) {
            m_pendingSession = nullptr;
            session->deleteLater();
        }
        setLoading(false);
        m_chapterLoadFailed = true;
        if (!m_session) {
            // Nothing on screen: the comic information goes with the failure.
            m_comicInfoDTO.reset();
            m_chapterDTOList.clear();
        }
        m_comicViewManager->PopUpLoadingFailView();
        emit chapterLoadFailed();
        return;
    }
    adoptSession(session);
}

void VORAReadHomePageViewController::adoptSession(VORAReadComicManager *session)
{
    const bool reload = session == m_session;
    if (!reload) {
        if (m_session) {
            // The chapter that was on screen is left: its position is kept.
            saveReadHistoryInfo();
            m_session->setDelegate(nullptr);
            m_session->deleteLater();
        }
        m_session = session;
        m_pendingSession = nullptr;
    }
    setLoading(false);
    m_chapterLoadFailed = false;
    m_comicViewManager->hideLoadingFailView();
    if (m_menuForLoading) {
        m_menuForLoading = false;
        hideMenu();
    }

    m_comicId = session->comicId();
    m_comicInfoDTO = session->comicInfoDTO();
    if (m_comicInfoDTO && m_comicInfoDTO->comicId.isEmpty())
        m_comicInfoDTO->comicId = m_comicId;
    m_chapterDTOList = m_comicInfoDTO ? m_comicInfoDTO->chapterList : QList<VORAChapterInfoDTO>();
    const int count = int(session->pageList().size());
    if (count == 0) {
        // A chapter without pages shows nothing.
        qCWarning(lcReader) << "chapter" << session->chapterId() << "has no pages";
        m_comicViewManager->reloadWithPageCount(0);
        m_currentChapterIndex = session->chapterIndex();
        m_chapterId = session->chapterId();
        m_pageInfoDTO.reset();
        m_sliderEnabled = false;
        showMenu();
        emit dataChanged();
        emit chapterLoaded();
        return;
    }
    m_currentChapterIndex = session->chapterIndex();
    m_currentPageIndex = std::clamp(session->pageIndex(), 0, count - 1);
    m_pageId = session->pageList().at(m_currentPageIndex).pageId;
    if (!reload || m_comicViewManager->pageCount() != count)
        m_comicViewManager->reloadWithPageCount(count);
    m_comicViewManager->moveToPhotoAtIndex(m_currentPageIndex, false);
    emit chapterLoaded();
}

void VORAReadHomePageViewController::pageLoadDidFinishedWithPage(const std::optional<QByteArray> &imageData,
                                                                 const std::optional<QList<VORATucao>> &tucao,
                                                                 int pageIndex)
{
    // Only the session on screen is ever asked for pages.
    m_comicViewManager->currentDisplayImage(imageData, tucao, pageIndex);
}

// --- Pages and chapters ---

void VORAReadHomePageViewController::requestPageWithIndex(int index)
{
    if (!m_session)
        return;
    const int count = pageCount();
    if (index < 0) {
        turnToLastPageWithIndex(index);
        return;
    }
    if (index >= count) {
        turnToNextPageWithIndex(index);
        return;
    }
    m_chapterLoadFailed = false; // the reader moved on within the chapter on screen
    m_currentPageIndex = index;
    UpdateData();
}

void VORAReadHomePageViewController::turnToLastPageWithIndex(int index)
{
    if (index >= 0) {
        if (index < pageCount()) {
            m_currentPageIndex = index;
            UpdateData();
        }
        return;
    }
    if (m_currentChapterIndex < 1 || m_currentChapterIndex - 1 >= m_chapterDTOList.size()) {
        showIndicator(firstChapterText);
        return;
    }
    openChapter(m_chapterDTOList.at(m_currentChapterIndex - 1), VORAReadComicManager::kLastPage);
}

void VORAReadHomePageViewController::turnToNextPageWithIndex(int index)
{
    if (index < pageCount()) {
        if (index >= 0) {
            m_currentPageIndex = index;
            UpdateData();
        }
        return;
    }
    if (m_currentChapterIndex + 1 >= m_chapterDTOList.size()) {
        showIndicator(lastChapterText);
        return;
    }
    openChapter(m_chapterDTOList.at(m_currentChapterIndex + 1), VORAReadComicManager::kFirstPage);
}

void VORAReadHomePageViewController::openChapter(const VORAChapterInfoDTO &chapter, const QString &pageId)
{
    // A chapter the gate would refuse without a word (no purchase offered in
    // this build) is not opened: the reader stays where it is.
    if (m_comicInfoDTO
        && VORAReadGate::decide(chapter, *m_comicInfoDTO, QDateTime::currentDateTimeUtc()) == VORAReadGate::Outcome::Nothing) {
        qCInfo(lcReader) << "chapter" << chapter.chapterId << "is not offered";
        return;
    }
    requestPageDataWithComicId(m_comicId, chapter.chapterId, pageId);
}

void VORAReadHomePageViewController::UpdateData()
{
    if (!m_session)
        return;
    m_chapterInfoDTO.reset();
    for (const VORAChapterInfoDTO &chapter : std::as_const(m_chapterDTOList)) {
        if (chapter.index == m_currentChapterIndex) {
            m_chapterInfoDTO = chapter;
            break;
        }
    }
    if (m_chapterInfoDTO)
        m_chapterId = m_chapterInfoDTO->chapterId;
    else
        m_chapterId = m_session->chapterId();
    const QList<VORAPageInfoDTO> &pages = m_session->pageList();
    m_pageInfoDTO.reset();
    for (const VORAPageInfoDTO &page : pages) {
        if (page.index == m_currentPageIndex) {
            m_pageInfoDTO = page;
            break;
        }
    }
    if (m_pageInfoDTO)
        m_pageId = m_pageInfoDTO->pageId;

    const QString comicName = m_comicInfoDTO ? m_comicInfoDTO->name : QString();
    m_title = titleText(comicName, m_chapterInfoDTO ? m_chapterInfoDTO->name : QString());
    m_pageLabel = pageLabelText(m_currentPageIndex, pages.size());
    if (!pages.isEmpty()) {
        m_sliderEnabled = true;
        m_sliderMaximum = int(pages.size()) - 1;
        m_tucaoMenuTitle = m_title;
        m_tucaoMenuPageLabel = m_pageLabel;
        m_tucaoTotal = m_pageInfoDTO ? m_pageInfoDTO->tucaoTotal : 0;
        VORATuCaoMenuView *menu = m_comicViewManager->tucaoMenuView();
        menu->setTitle(m_tucaoMenuTitle);
        menu->setPageLabel(m_tucaoMenuPageLabel);
        menu->setTucaoTotal(int(m_tucaoTotal));
    }
    emit dataChanged();

    m_readPageLog->addReadPageToList(m_currentPageIndex, m_chapterId, m_pageId, m_comicId);
    m_positionTimer.start();
    m_session->getPageWithIndex(m_currentPageIndex);
}

void VORAReadHomePageViewController::quickTurnPage(double value)
{
    const int count = pageCount();
    if (count == 0)
        return;
    const int index = std::clamp(roundHalfUp(value), 0, count - 1);
    if (index == m_comicViewManager->pageIndex())
        return;
    m_comicViewManager->moveToPhotoAtIndex(index, false);
}

// --- Menu ---

void VORAReadHomePageViewController::showMenu()
{
    if (m_menuShown)
        return;
    m_menuShown = true;
    emit menuChanged();
}

void VORAReadHomePageViewController::hideMenu()
{
    if (!m_menuShown)
        return;
    m_menuShown = false;
    emit menuChanged();
}

void VORAReadHomePageViewController::toggleMenu()
{
    m_menuForLoading = false;
    m_menuShown ? hideMenu() : showMenu();
}

void VORAReadHomePageViewController::backPreviousPage()
{
    closeLuminanceView();
    if (m_closing)
        return;
    m_closing = true;
    m_active = false;
    emit activeChanged();
    m_positionTimer.stop();
    if (VORAAppGlobalData::shareAppGlobalData()->user()->isLogin() && !m_comicId.isEmpty()) {
        m_readPageLog->uploadingReadHistoryInfo(m_comicId);
        // The upload outlives the screen for a while; its answer is not awaited.
        m_readPageLog->setParent(QCoreApplication::instance());
        QTimer::singleShot(uploadGraceMs, m_readPageLog, &QObject::deleteLater);
        m_readPageLog = new VORAReadPageLog(this);
    }
    delete m_pendingSession;
    m_pendingSession = nullptr;
    setLoading(false);
    saveReadHistoryInfo();
    // The store queue runs in order: closed() comes after the save.
    storeJob([this]() { QMetaObject::invokeMethod(this, [this]() { emit closed(); }, Qt::QueuedConnection); });
}

void VORAReadHomePageViewController::addBookmark()
{
    closeLuminanceView();
    if (!m_comicInfoDTO || !m_chapterInfoDTO || !m_pageInfoDTO)
        return;
    const VORAComicInfoDTO comic = *m_comicInfoDTO;
    const VORAChapterInfoDTO chapter = *m_chapterInfoDTO;
    const VORAPageInfoDTO page = *m_pageInfoDTO;
    storeJob([this, comic, chapter, page]() {
        VORADatabaseManager db;
        bool exists = false;
        // Page ids are compared across every comic.
        for (const BookmarkPtr &bookmark : db.getBookmark()) {
            if (bookmark && bookmark->pageId() == page.pageId) {
                exists = true;
                break;
            }
        }
        if (!exists) {
            db.addBookmarkWithComic(comic, chapter, page);
            db.save();
        }
        QMetaObject::invokeMethod(
            this, [this, exists]() { showIndicator(exists ? bookmarkExistsText : bookmarkAddedText); },
            Qt::QueuedConnection);
    });
}

void VORAReadHomePageViewController::popUpLuminanceView()
{
    if (m_luminanceView) {
        // Its entry again: the panel goes.
        closeLuminanceView();
        return;
    }
    m_luminanceView = new VORAAdjustLuminanceView(this);
    connect(m_luminanceView, &VORAAdjustLuminanceView::layerOpacityChanged, this,
            &VORAReadHomePageViewController::setLuminanceValue);
    VORAAdjustLuminanceView *panel = m_luminanceView;
    connect(panel, &VORAAdjustLuminanceView::removeFromSuperview, this, [this, panel]() {
        if (m_luminanceView == panel)
            m_luminanceView = nullptr;
        panel->deleteLater();
        emit panelsChanged();
    });
    emit panelsChanged();
}

// Every other menu entry closes the brightness panel before it acts.
void VORAReadHomePageViewController::closeLuminanceView()
{
    if (m_luminanceView)
        m_luminanceView->close();
}

void VORAReadHomePageViewController::popUpBookmarkView()
{
    closeLuminanceView();
    if (m_bookmarkManager)
        return;
    auto *panel = new VORABookmarkManager(this);
    panel->setReadHomeController(this);
    m_bookmarkManager = panel;
    connect(panel, &VORAReaderSidePanel::removeFromSuperview, this, [this, panel]() {
        if (m_bookmarkManager == panel)
            m_bookmarkManager = nullptr;
        panel->deleteLater();
        emit panelsChanged();
    });
    emit panelsChanged();
}

void VORAReadHomePageViewController::popUpChapterView()
{
    closeLuminanceView();
    if (m_chapterManager || !m_comicInfoDTO)
        return;
    auto *panel = new VORAChapterManager(m_chapterId, m_comicId, this);
    panel->setReadHomeController(this);
    panel->setComicInfoDTO(*m_comicInfoDTO);
    m_chapterManager = panel;
    connect(panel, &VORAReaderSidePanel::removeFromSuperview, this, [this, panel]() {
        if (m_chapterManager == panel)
            m_chapterManager = nullptr;
        panel->deleteLater();
        emit panelsChanged();
    });
    emit panelsChanged();
}

void VORAReadHomePageViewController::popUpHelpView()
{
    closeLuminanceView();
    if (m_helpShown)
        return;
    m_helpShown = true;
    emit panelsChanged();
}

void VORAReadHomePageViewController::hideHelpView()
{
    if (!m_helpShown)
        return;
    m_helpShown = false;
    emit panelsChanged();
}

void VORAReadHomePageViewController::popUpTucaoInputView()
{
    closeLuminanceView();
    showMenu();
    // Nobody signed in: the input view saves the jump type and asks for the
    // sign-in (createUserView); it does not open.
    if (!VORAAppGlobalData::shareAppGlobalData()->user()->isLogin()) {
        m_tucaoInputView->popUpTucaoInputView();
        return;
    }
    resetComicViewWhenTucao();
    m_tucaoInputView->popUpTucaoInputView();
    emit tucaoInputRequested();
}

// --- Tucao editing ---

void VORAReadHomePageViewController::resetComicViewWhenTucao()
{
    if (VORAPictureImageView *view = m_comicViewManager->pageViewAt(m_comicViewManager->pageIndex()))
        view->killScrollViewZoom(false);
}

void VORAReadHomePageViewController::popUPTucaoEditViewWithPoint(const QString &text, const QPointF &point)
{
    VORAPictureImageView *view = m_comicViewManager->pageViewAt(m_comicViewManager->pageIndex());
    if (!view || view->state() != VORAPictureImageView::Shown) {
        qCInfo(lcReader) << "no page to place a tucao on";
        return;
    }
    resetComicViewWhenTucao();
    openTucaoEdit(new VORATuCaoEditManager(text, point, tucaoPlacement(view), getCurrentScreenState(), this),
                  view->tucaoPlayback());
}

// The page's placement with the surface the editing layer covers.
VORATucaoPagePlacement VORAReadHomePageViewController::tucaoPlacement(const VORAPictureImageView *view) const
{
    VORATucaoPagePlacement placement = view->tucaoPagePlacement();
    placement.surfaceSize = m_comicViewManager->viewSize();
    return placement;
}

bool VORAReadHomePageViewController::showTucaoEditViewWithTucaoView(VORATucaoPlayback *playback,
                                                                    const QString &tucaoId)
{
    VORAPictureImageView *view = m_comicViewManager->pageViewAt(m_comicViewManager->pageIndex());
    if (!view || !playback || view->tucaoPlayback() != playback || m_tucaoInputView->isOpen())
        return false;
    const std::optional<VORATucao> tucao = playback->tucaoWithId(tucaoId);
    if (!tucao || !playback->isOwnTucao(*tucao))
        return false;
    playback->removeTucao(tucaoId);
    resetComicViewWhenTucao();
    openTucaoEdit(new VORATuCaoEditManager(*tucao, tucaoPlacement(view), getCurrentScreenState(), this),
                  playback);
    return true;
}

void VORAReadHomePageViewController::onPopUpTucaoEditView(const Notification &n)
{
    auto *playback = qobject_cast<VORATucaoPlayback *>(n.userInfo.value(QStringLiteral("playback")).value<QObject *>());
    const QString tucaoId = n.userInfo.value(QStringLiteral("tucao")).toMap().value(QStringLiteral("tucaoId")).toString();
    showTucaoEditViewWithTucaoView(playback, tucaoId);
}

void VORAReadHomePageViewController::openTucaoEdit(VORATuCaoEditManager *edit, VORATucaoPlayback *playback)
{
    dropTucaoEdit();
    m_tucaoEditManager = edit;
    m_tucaoEditPlayback = playback;
    m_tucaoEditPageId = m_pageId;
    connect(edit, &VORATuCaoEditManager::publishTucaoRequested, this, &VORAReadHomePageViewController::publishTucao);
    connect(edit, &VORATuCaoEditManager::confirmEditRequested, this, &VORAReadHomePageViewController::confirmEdit);
    connect(edit, &VORATuCaoEditManager::deleteTucaoRequested, this, &VORAReadHomePageViewController::deleteTucao);
    connect(edit, &VORATuCaoEditManager::tucaoPutBack, this, &VORAReadHomePageViewController::cancelEdit);
    connect(edit, &VORATuCaoEditManager::removed, this, [this, edit] {
        if (m_tucaoEditManager == edit)
            dropTucaoEdit();
    });
    emit tucaoEditChanged();
}

void VORAReadHomePageViewController::dropTucaoEdit()
{
    if (!m_tucaoEditManager)
        return;
    VORATuCaoEditManager *edit = m_tucaoEditManager;
    m_tucaoEditManager = nullptr;
    edit->disconnect(this);
    edit->deleteLater();
    emit tucaoEditChanged();
}

void VORAReadHomePageViewController::publishTucao(const VORATucaoDTO &dto)
{
    if (!m_tucaoEditManager)
        return;
    m_tucaoPublisher->setPagePlacement(m_tucaoEditManager->placement());
    m_tucaoPublisher->publishTucao(dto, m_tucaoEditPageId);
}

void VORAReadHomePageViewController::confirmEdit(const VORATucaoDTO &dto)
{
    if (!m_tucaoEditManager)
        return;
    m_tucaoPublisher->setPagePlacement(m_tucaoEditManager->placement());
    m_tucaoPublisher->confirmEdit(dto);
}

void VORAReadHomePageViewController::deleteTucao(const VORATucaoDTO &dto)
{
    if (!m_tucaoEditManager)
        return;
    m_tucaoPublisher->deleteTucao(dto, m_comicId);
}

void VORAReadHomePageViewController::cancelEdit(const VORATucao &tucao)
{
    if (m_tucaoEditPlayback)
        m_tucaoEditPlayback->addTucao(tucao);
}

void VORAReadHomePageViewController::hideEditTuCaoView()
{
    if (m_tucaoEditManager)
        m_tucaoEditManager->hideEditTuCaoView();
}

void VORAReadHomePageViewController::swtichScreen()
{
    closeLuminanceView();
    if (getCurrentScreenState() == 1)
        swtichScreenToportraitScreen();
    else
        swtichScreenToLandscape();
}

void VORAReadHomePageViewController::swtichScreenToLandscape()
{
    VORAUserConfig::shareUserConfigInstance()->setIsVerticalScreen(false);
    applyReadMode();
    emit readModeChanged();
}

void VORAReadHomePageViewController::swtichScreenToportraitScreen()
{
    VORAUserConfig::shareUserConfigInstance()->setIsVerticalScreen(true);
    applyReadMode();
    emit readModeChanged();
}

void VORAReadHomePageViewController::applyReadMode()
{
    m_comicViewManager->setPortraitReading(isVerticalScreen());
}

void VORAReadHomePageViewController::setLuminanceValue(qreal value)
{
    const qreal v = std::clamp<qreal>(std::isfinite(value) ? value : 0, 0, 1);
    if (qFuzzyCompare(v + 1, m_luminanceValue + 1))
        return;
    m_luminanceValue = v;
    emit luminanceChanged();
}

// --- Position ---

void VORAReadHomePageViewController::saveReadHistoryInfo()
{
    if (!m_comicInfoDTO || !m_chapterInfoDTO || !m_pageInfoDTO)
        return;
    m_positionTimer.stop();
    VORAComicInfoDTO comic = *m_comicInfoDTO;
    if (comic.comicId.isEmpty())
        comic.comicId = m_comicId;
    const VORAChapterInfoDTO chapter = *m_chapterInfoDTO;
    const VORAPageInfoDTO page = *m_pageInfoDTO;
    storeJob([this, comic, chapter, page]() {
        VORADatabaseManager db;
        ReadingPositionRecorder::saveReadingPosition(db, comic, chapter, page);
        const QString comicId = comic.comicId;
        QMetaObject::invokeMethod(this, [this, comicId]() { emit readingPositionSaved(comicId); },
                                  Qt::QueuedConnection);
    });
}

void VORAReadHomePageViewController::storeJob(std::function<void()> job)
{
    // The destructor waits for the queue, so `this` outlives every job.
    m_store.start(std::move(job));
}

// --- Hooks ---

void VORAReadHomePageViewController::skipeToChapterWithChapterId(const QString &chapterId)
{
    // The callers (a purchase, the chapter panel) have been through the gate.
    const QString comicId = m_comicId.isEmpty() ? m_pendingComicId : m_comicId;
    requestPageDataWithComicId(comicId, chapterId, VORAReadComicManager::kFirstPage);
}

void VORAReadHomePageViewController::backCurrentChapterIndex()
{
    // The chapter on screen is still there: only the one being opened goes.
    if (m_pendingSession) {
        m_pendingSession->deleteLater();
        m_pendingSession = nullptr;
    }
    setLoading(false);
    if (!m_session)
        backPreviousPage(); // nothing was being read
}

void VORAReadHomePageViewController::createUserView()
{
    setLoading(false);
    emit signInRequested();
}

void VORAReadHomePageViewController::pushPayVC(int kind)
{
    emit payRequested(kind);
}

void VORAReadHomePageViewController::skipeToComicWithBookmark(const VORABookMarkDTO &bookmark)
{
    if (bookmark.comicId.isEmpty())
        return;
    requestPageDataWithComicId(bookmark.comicId, bookmark.chapterId,
                               bookmark.pageId.isEmpty() ? VORAReadComicManager::kFirstPage : bookmark.pageId);
}

// --- Helpers ---

void VORAReadHomePageViewController::setLoading(bool loading)
{
    if (m_loading == loading)
        return;
    m_loading = loading;
    emit loadingChanged();
}

void VORAReadHomePageViewController::showIndicator(const QString &text)
{
    VORAUtility::openMBProgressHUDView(text, indicatorSeconds);
}

void VORAReadHomePageViewController::retryCurrentPage(int index)
{
    if (m_chapterLoadFailed || !m_session) {
        // The chapter itself did not open: open it again.
        if (!m_pendingChapterId.isEmpty() || !m_pendingComicId.isEmpty())
            requestPageDataWithComicId(m_pendingComicId, m_pendingChapterId, m_pendingPageId);
        return;
    }
    // A loader that finished (failed, or brought bytes that do not decode) is
    // started again; the others are asked for as usual.
    for (VORAPageDownloadManager *loader : m_session->pageCache()) {
        if (loader && loader->pageInfoDTO().index == index && loader->isLoadFinish() && !loader->isLoading())
            loader->startLoadPage();
    }
    requestPageWithIndex(index);
}

void VORAReadHomePageViewController::dropCachedPage(int index)
{
    if (!m_session || !m_session->isOnlineComic() || index < 0 || index >= m_session->pageList().size())
        return;
    // Damaged bytes in the page cache: the next load of the page downloads it again.
    const QString file = VORAPersistenceManager::pageCacheFileWithPageId(m_session->pageList().at(index).pageId);
    if (file.isEmpty())
        return;
    storeJob([file]() { QFile::remove(file); });
}

void VORAReadHomePageViewController::onAlertRequest(const Notification &n)
{
    if (!m_pendingSession)
        return;
    if (n.userInfo.value(QStringLiteral("delegate")).value<QObject *>() == m_pendingSession)
        setLoading(false);
}
