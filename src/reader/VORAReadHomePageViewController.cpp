#include "reader/VORAReadHomePageViewController.h"

#include "catalogue/VORAReadGate.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORAUserConfig.h"
#include "core/VORAUtility.h"
#include "platform/NotificationCenter.h"
#include "reader/ReaderLog.h"
#include "reader/VORAPageDownloadManager.h"
#include "reader/VORAReaderStore.h"
#include "store/VORAPersistenceManager.h"
#include "tucao/VORATuCaoMenuView.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QTimer>

#include <cmath>

namespace {
// How long a reader that was left keeps its read-log upload alive.
constexpr int uploadGraceMs = 60000;
} // namespace

VORAReadHomePageViewController::VORAReadHomePageViewController(QObject *parent)
    : QObject(parent)
    , m_comicViewManager(new VORAComicViewManager(this))
    , m_readPageLog(new VORAReadPageLog(this))
    , m_panels(new VORAReaderPanels(this, this))
    , m_tucaoEditing(new VORAReaderTucaoEditing(this))
    , m_store(new VORAReaderStore(this))
    , m_luminanceValue(VORAUserConfig::shareUserConfigInstance()->luminanceValue())
{
    connect(m_store, &VORAReaderStore::positionSaveDue, this, &VORAReadHomePageViewController::saveReadHistoryInfo);
    connect(m_store, &VORAReaderStore::readingPositionSaved, this,
            &VORAReadHomePageViewController::readingPositionSaved);
    connect(m_store, &VORAReaderStore::bookmarkAdded, this,
            [this](bool added) { showIndicator(added ? bookmarkAddedText : bookmarkExistsText); });

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
    connect(m_comicViewManager, &VORAComicViewManager::writeTucaoRequested, this,
            &VORAReadHomePageViewController::popUpTucaoInputView);

    // The tucao menu shows and hides with the bars.
    connect(this, &VORAReadHomePageViewController::menuChanged, this, [this] {
        NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::isHiddenTuCao), this,
                                                 {{QStringLiteral("KTuCaoViewBOOLValue"), !m_menuShown}});
    });

    connect(m_panels, &VORAReaderPanels::panelsChanged, this, &VORAReadHomePageViewController::panelsChanged);
    connect(m_panels, &VORAReaderPanels::layerOpacityChanged, this,
            &VORAReadHomePageViewController::setLuminanceValue);
    connect(m_tucaoEditing, &VORAReaderTucaoEditing::tucaoEditChanged, this,
            &VORAReadHomePageViewController::tucaoEditChanged);
    connect(m_tucaoEditing, &VORAReaderTucaoEditing::signInRequested, this,
            &VORAReadHomePageViewController::createUserView);
    connect(m_tucaoEditing, &VORAReaderTucaoEditing::tucaoInputRequested, this,
            &VORAReadHomePageViewController::tucaoInputRequested);

    NotificationCenter::defaultCenter().addObserver(this, QString::fromLatin1(VORANotificationNames::applicationExit),
                                                    [this](const Notification &) { saveReadHistoryInfo(); });
}

VORAReadHomePageViewController::~VORAReadHomePageViewController()
{
    NotificationCenter::defaultCenter().removeObserver(this);
    // The children go after this object's own part: nothing may reach it
    // from them any more.
    for (VORAReadComicManager *session : {m_pendingSession.data(), m_session.data()}) {
        if (session) {
            session->setDelegate(nullptr);
            session->setReadHomeViewController(nullptr);
            session->disconnect(this);
        }
    }
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
    releaseSession(m_pendingSession);
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
    connect(session, &VORAReadComicManager::readRefused, this,
            [this, session](VORAReadGate::Outcome outcome) { onReadRefused(session, outcome); });
    m_pendingSession = session;
    session->load(); // a downloaded chapter answers before load() returns
}

void VORAReadHomePageViewController::comicInfoLoadDidFinishedWithError(VORAReadComicManager *session,
                                                                       const NetError *error)
{
    if (!session || (session != m_session && session != m_pendingSession))
        return; // released already
    if (error) {
        qCWarning(lcReader) << "chapter" << session->chapterId() << "of comic" << session->comicId()
                            << "could not be opened:" << error->localizedDescription;
        if (session == m_session)
            return; // the chapter on screen stays as it was
        releaseSession(session);
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

void VORAReadHomePageViewController::releaseSession(VORAReadComicManager *session)
{
    if (!session)
        return;
    if (session == m_pendingSession)
        m_pendingSession = nullptr;
    if (session == m_session)
        m_session = nullptr;
    session->setDelegate(nullptr);
    session->setReadHomeViewController(nullptr);
    session->disconnect(this);
    session->deleteLater();
}

void VORAReadHomePageViewController::onReadRefused(VORAReadComicManager *session, VORAReadGate::Outcome outcome)
{
    if (session != m_pendingSession)
        return;
    // A dialog or the sign-in view now waits for the user; the session stays
    // for its answer. Refused without a word, nothing will come of it.
    setLoading(false);
    if (outcome == VORAReadGate::Outcome::Nothing)
        backCurrentChapterIndex();
}

void VORAReadHomePageViewController::adoptSession(VORAReadComicManager *session)
{
    const bool reload = session == m_session;
    if (!reload) {
        if (m_session) {
            // The chapter that was on screen is left: its position is kept.
            saveReadHistoryInfo();
            releaseSession(m_session);
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

void VORAReadHomePageViewController::pageLoadDidFinishedWithPage(VORAReadComicManager *session,
                                                                 const std::optional<QByteArray> &imageData,
                                                                 const std::optional<QList<VORATucao>> &tucao,
                                                                 int pageIndex)
{
    // Only the session on screen is asked for pages.
    if (session && session == m_session)
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
    // this build) is not opened: the reader stays where it is. A downloaded
    // chapter is read without the gate.
    if (m_comicInfoDTO && !VORAReadComicManager::isFinishedDownload(chapter.chapterId)
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
    m_store->schedulePositionSave();
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
    m_panels->closeLuminanceView();
    if (m_closing)
        return;
    m_closing = true;
    m_active = false;
    emit activeChanged();
    m_store->cancelPositionSave();
    if (VORAAppGlobalData::shareAppGlobalData()->user()->isLogin() && !m_comicId.isEmpty()) {
        m_readPageLog->uploadingReadHistoryInfo(m_comicId);
        // The upload outlives the screen for a while; its answer is not awaited.
        m_readPageLog->setParent(QCoreApplication::instance());
        QTimer::singleShot(uploadGraceMs, m_readPageLog, &QObject::deleteLater);
        m_readPageLog = new VORAReadPageLog(this);
    }
    releaseSession(m_pendingSession);
    setLoading(false);
    saveReadHistoryInfo();
    // The store queue runs in order: closed() comes after the save.
    m_store->afterQueuedWork([this]() { emit closed(); });
}

void VORAReadHomePageViewController::addBookmark()
{
    m_panels->closeLuminanceView();
    if (!m_comicInfoDTO || !m_chapterInfoDTO || !m_pageInfoDTO)
        return;
    m_store->addBookmark(*m_comicInfoDTO, *m_chapterInfoDTO, *m_pageInfoDTO);
}

void VORAReadHomePageViewController::popUpLuminanceView()
{
    m_panels->popUpLuminanceView();
}

void VORAReadHomePageViewController::popUpBookmarkView()
{
    m_panels->closeLuminanceView();
    m_panels->popUpBookmarkView();
}

void VORAReadHomePageViewController::popUpChapterView()
{
    m_panels->closeLuminanceView();
    if (m_comicInfoDTO)
        m_panels->popUpChapterView(m_chapterId, m_comicId, *m_comicInfoDTO);
}

void VORAReadHomePageViewController::popUpHelpView()
{
    m_panels->closeLuminanceView();
    m_panels->popUpHelpView();
}

void VORAReadHomePageViewController::hideHelpView()
{
    m_panels->hideHelpView();
}

void VORAReadHomePageViewController::popUpTucaoInputView()
{
    m_panels->closeLuminanceView();
    showMenu();
    m_tucaoEditing->popUpTucaoInputView();
}

void VORAReadHomePageViewController::swtichScreen()
{
    m_panels->closeLuminanceView();
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
    VORAComicInfoDTO comic = *m_comicInfoDTO;
    if (comic.comicId.isEmpty())
        comic.comicId = m_comicId;
    m_store->saveReadingPosition(comic, *m_chapterInfoDTO, *m_pageInfoDTO);
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
    releaseSession(m_pendingSession);
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
    m_store->removeFile(file);
}
