#include "reader/VORAComicViewManager.h"

#include "core/VORANotificationNames.h"
#include "core/VORAUserConfig.h"
#include "platform/NotificationCenter.h"
#include "reader/ReaderLog.h"
#include "reader/VORAPageViewListModel.h"
#include "reader/VORAPictureImageView.h"
#include "reader/VORAPictureScrollView.h"
#include "tucao/VORATuCaoMenuView.h"
#include "tucao/VORATucaoPlayback.h"

#include <QGuiApplication>
#include <QStyleHints>

#include <algorithm>
#include <cmath>

VORAComicViewManager::VORAComicViewManager(QObject *parent)
    : QObject(parent)
    , m_pageViews(new VORAPageViewListModel(this))
    , m_isShowTucao(VORAUserConfig::shareUserConfigInstance()->isDisplayTuCao())
    , m_tucaoMenuView(new VORATuCaoMenuView(this))
{
    connect(m_tucaoMenuView, &VORATuCaoMenuView::showTucao, this, &VORAComicViewManager::showTucao);
    connect(m_tucaoMenuView, &VORATuCaoMenuView::playTucao, this, &VORAComicViewManager::playTucao);
    connect(m_tucaoMenuView, &VORATuCaoMenuView::previousGroupRequested, this, [this] {
        if (VORAPictureImageView *view = pageViewAt(m_pageIndex); view && m_isShowTucao)
            view->tucaoPlayback()->showLastPageTucao();
    });
    connect(m_tucaoMenuView, &VORATuCaoMenuView::nextGroupRequested, this, [this] {
        if (VORAPictureImageView *view = pageViewAt(m_pageIndex); view && m_isShowTucao)
            view->tucaoPlayback()->showNextPageTucao();
    });
    connect(m_tucaoMenuView, &VORATuCaoMenuView::writeTucaoRequested, this,
            &VORAComicViewManager::writeTucaoRequested);
    NotificationCenter::defaultCenter().addObserver(
        this, QString::fromLatin1(VORANotificationNames::isHiddenTuCao), [this](const Notification &n) {
            if (n.sender && n.sender != this->parent())
                return; // another reader's bars
            hiddeTucaoMenuView(n.userInfo.value(QStringLiteral("KTuCaoViewBOOLValue")).toBool());
        });
    m_toggleTimer.setSingleShot(true);
    m_toggleTimer.setInterval(std::max(toggleDelayMs, QGuiApplication::styleHints()->mouseDoubleClickInterval()));
    connect(&m_toggleTimer, &QTimer::timeout, this, [this] {
        emit tucaoToolBarHideRequested();
        emit toggleMenuRequested();
    });
    m_retryTimer.setSingleShot(true);
    m_retryTimer.setInterval(retryDelayMs);
    connect(&m_retryTimer, &QTimer::timeout, this, &VORAComicViewManager::waitRoading);
    // Two cores: one decode per core at most, the main thread stays free.
    m_decodePool.setMaxThreadCount(2);
    m_decodePool.setExpiryTimeout(5000);
}

VORAComicViewManager::~VORAComicViewManager()
{
    NotificationCenter::defaultCenter().removeObserver(this);
    m_decodePool.clear();
    m_decodePool.waitForDone();
    // The page views take their images out of the cache as they go.
    qDeleteAll(m_pictureImageViewArray);
}

void VORAComicViewManager::setDevicePixelRatio(qreal ratio)
{
    if (!(ratio > 0) || qFuzzyCompare(ratio, m_devicePixelRatio))
        return;
    m_devicePixelRatio = ratio;
    emit viewSizeChanged();
}

VORAPictureImageView *VORAComicViewManager::pageViewAt(int index) const
{
    if (index < 0 || index >= m_pictureImageViewArray.size())
        return nullptr;
    return m_pictureImageViewArray.at(index);
}

QList<int> VORAComicViewManager::existingPageIndexes() const
{
    QList<int> list;
    for (int i = 0; i < m_pictureImageViewArray.size(); ++i) {
        if (m_pictureImageViewArray.at(i))
            list.append(i);
    }
    return list;
}

void VORAComicViewManager::reloadWithPageCount(int count)
{
    m_toggleTimer.stop();
    m_pageViews->clear();
    for (VORAPictureImageView *view : std::as_const(m_pictureImageViewArray)) {
        if (view) {
            m_latestDecode.remove(view);
            view->deleteLater();
        }
    }
    m_pictureImageViewArray = QList<VORAPictureImageView *>(std::max(0, count), nullptr);
    m_pageIndex = 0;
    m_canMoveToRequest = false;
    emit pagesChanged();
    emit stripChanged();
    emit pageIndexChanged();
}

void VORAComicViewManager::setViewSize(qreal width, qreal height)
{
    const QSizeF size(width, height);
    if (!(width > 0) || !(height > 0) || size == m_viewSize)
        return;
    m_viewSize = size;
    m_surfaceRect.setSize(size);
    emit viewSizeChanged();
    emit stripChanged();
    // Rotation: every page view takes its new frame (a zoomed page keeps its
    // zoom, the others are fitted again); the strip stays on its page.
    for (int i = 0; i < m_pictureImageViewArray.size(); ++i) {
        if (VORAPictureImageView *view = m_pictureImageViewArray.at(i))
            view->setFrame(VORAPictureImageView::frameForPage(i, m_viewSize));
    }
    emit scrollToPageRequested(m_pageIndex, false);
}

// --- Read modes in a window ---

QRectF VORAComicViewManager::readingSurface(const QSizeF &window, bool portraitReading)
{
    if (!(window.width() > 0) || !(window.height() > 0))
        return {};
    if (portraitReading ? window.height() > window.width() : window.width() > window.height())
        return QRectF(QPointF(0, 0), window);
    // The tablet's screen, 768 × 1024 points, in the read mode's orientation.
    const qreal aspect = portraitReading ? 768.0 / 1024.0 : 1024.0 / 768.0; // width / height
    QSizeF size = portraitReading ? QSizeF(window.height() * aspect, window.height())
                                  : QSizeF(window.width(), window.width() / aspect);
    size = size.boundedTo(window);
    return QRectF(QPointF((window.width() - size.width()) / 2, (window.height() - size.height()) / 2), size);
}

void VORAComicViewManager::setWindowSize(qreal width, qreal height)
{
    if (!(width > 0) || !(height > 0))
        return;
    m_windowSize = QSizeF(width, height);
    layOutSurface();
}

void VORAComicViewManager::setPortraitReading(bool portrait)
{
    if (m_portraitReading == portrait)
        return;
    m_portraitReading = portrait;
    layOutSurface();
}

void VORAComicViewManager::layOutSurface()
{
    if (m_windowSize.isEmpty())
        return;
    const QRectF surface = readingSurface(m_windowSize, m_portraitReading);
    const bool moved = surface.topLeft() != m_surfaceRect.topLeft();
    m_surfaceRect = surface;
    if (surface.size() != m_viewSize)
        setViewSize(surface.width(), surface.height()); // tells viewSizeChanged
    else if (moved)
        emit viewSizeChanged();
}

// --- The strip ---

void VORAComicViewManager::createPageView(int index)
{
    if (index < 0 || index >= m_pictureImageViewArray.size() || m_pictureImageViewArray.at(index))
        return;
    auto *view = new VORAPictureImageView(index, this);
    view->setFrame(VORAPictureImageView::frameForPage(index, m_viewSize));
    view->setCurrentImagePageIndex(m_pageIndex);
    m_pictureImageViewArray[index] = view;
    m_pageViews->append(view);
}

void VORAComicViewManager::removePageView(int index)
{
    VORAPictureImageView *view = pageViewAt(index);
    if (!view)
        return;
    m_pictureImageViewArray[index] = nullptr;
    m_latestDecode.remove(view);
    m_pageViews->remove(view);
    view->deleteLater();
}

void VORAComicViewManager::layoutScrollViewSubviews()
{
    for (int i = m_pageIndex - liveRadius; i <= m_pageIndex + liveRadius; ++i) {
        if (i < 0 || i >= m_pictureImageViewArray.size())
            continue;
        createPageView(i);
        m_pictureImageViewArray.at(i)->setFrame(VORAPictureImageView::frameForPage(i, m_viewSize));
    }
}

void VORAComicViewManager::moveToPhotoAtIndex(int index, bool animated)
{
    const bool valid = index >= 0 && index < m_pictureImageViewArray.size();
    if (valid && index != m_pageIndex) {
        m_pageIndex = index;
        emit pageIndexChanged();
    }
    const int p = m_pageIndex;
    // The views of p-2 … p+2 are made before the page is asked for, so a page
    // the session hands back at once finds its view.
    for (int i = p - liveRadius; i <= p + liveRadius; ++i)
        createPageView(i);
    for (int i = 0; i < m_pictureImageViewArray.size(); ++i) {
        VORAPictureImageView *view = m_pictureImageViewArray.at(i);
        if (!view)
            continue;
        if (i < p - liveRadius || i > p + liveRadius) {
            removePageView(i);
            continue;
        }
        view->setCurrentImagePageIndex(p);
        view->hideTucaoView();
    }
    // A failure shown for the page left behind does not stay over this one.
    if (VORAPictureImageView *view = pageViewAt(p); view && view->state() != VORAPictureImageView::Failed)
        hideLoadingFailView();
    emit scrollToPageRequested(p, animated);
    if (valid)
        emit requestPageWithIndex(index);
    if (VORAPictureImageView *next = pageViewAt(p + 1))
        next->killScrollViewZoom();
    if (VORAPictureImageView *previous = pageViewAt(p - 1))
        previous->killScrollViewZoom();
}

int VORAComicViewManager::centredPageForOffset(qreal offsetX) const
{
    if (pageCount() == 0 || !(m_viewSize.width() > 0))
        return 0;
    const int page = int(std::lround(offsetX / m_viewSize.width()));
    return std::clamp(page, 0, pageCount() - 1);
}

int VORAComicViewManager::pageForRelease(qreal offsetX, qreal velocityX) const
{
    if (pageCount() == 0 || !(m_viewSize.width() > 0))
        return 0;
    const qreal pulled = offsetX / m_viewSize.width() - m_pageIndex;
    int page = m_pageIndex;
    if (pulled > turnFraction || (pulled > 0.02 && velocityX > flickVelocity))
        page = m_pageIndex + 1;
    else if (pulled < -turnFraction || (pulled < -0.02 && velocityX < -flickVelocity))
        page = m_pageIndex - 1;
    return std::clamp(page, 0, pageCount() - 1);
}

bool VORAComicViewManager::scrollViewWillBeginDecelerating(qreal offsetX)
{
    const int count = pageCount();
    if (count == 0)
        return false;
    const int centred = centredPageForOffset(offsetX);
    const qreal threshold = m_viewSize.width() / 12;
    if (centred == 0 && offsetX < -threshold) {
        m_canMoveToRequest = true;
        emit requestPageWithIndex(centred - 1);
    } else if (centred == count - 1 && offsetX > m_viewSize.width() * (count - 1) + threshold) {
        m_canMoveToRequest = true;
        emit requestPageWithIndex(centred + 1);
    }
    return m_canMoveToRequest;
}

void VORAComicViewManager::scrollViewDidEndDecelerating(qreal offsetX)
{
    const int centred = centredPageForOffset(offsetX);
    if (pageCount() > 0 && centred != m_pageIndex && !m_canMoveToRequest)
        moveToPhotoAtIndex(centred, true);
    m_canMoveToRequest = false;
}

void VORAComicViewManager::turnPage(int step)
{
    if (pageCount() == 0 || step == 0)
        return;
    const int target = m_pageIndex + step;
    if (target >= 0 && target < pageCount())
        moveToPhotoAtIndex(target, true);
    else
        emit requestPageWithIndex(target < 0 ? -1 : pageCount());
}

// --- Pages ---

qreal VORAComicViewManager::decodeWidth() const
{
    // The widest a page is ever drawn: the longer side of the screen (either
    // orientation) at the largest zoom, in device pixels.
    const qreal side = std::max(m_viewSize.width(), m_viewSize.height()) - VORAPictureImageView::pageGap;
    return std::ceil(side * VORAPictureScrollView::maximumZoom * m_devicePixelRatio);
}

void VORAComicViewManager::currentDisplayImage(const std::optional<QByteArray> &imageData,
                                               const std::optional<QList<VORATucao>> &tucao, int index)
{
    VORAPictureImageView *view = pageViewAt(index);
    if (!view)
        return;
    view->setCurrentImagePageIndex(m_pageIndex);
    const bool current = index == m_pageIndex;
    if (!imageData || imageData->isEmpty()) {
        if (view->state() != VORAPictureImageView::Shown)
            view->showFailed();
        if (current)
            PopUpLoadingFailView();
        return;
    }
    if (current)
        hideLoadingFailView();
    view->setTucao(tucao);
    if (view->state() == VORAPictureImageView::Shown && view->photoBytes() == *imageData) {
        // The session hands finished pages over again on every move: the image is there.
        startTucaoIfCurrent(view);
        return;
    }
    if (const auto pending = m_latestDecode.constFind(view); pending != m_latestDecode.constEnd()) {
        const auto it = m_pendingDecodes.constFind(*pending);
        if (it != m_pendingDecodes.constEnd() && it->bytes == *imageData)
            return; // the same bytes are being decoded
    }
    decodePage(view, *imageData);
}

void VORAComicViewManager::decodePage(VORAPictureImageView *view, const QByteArray &bytes)
{
    const quint64 serial = m_nextDecode++;
    m_pendingDecodes.insert(serial, PendingDecode{view, bytes});
    m_latestDecode.insert(view, serial);
    const qreal width = decodeWidth();
    // Pages nearest the current one first.
    const int priority = -std::abs(view->pageIndex() - m_pageIndex);
    m_decodePool.start(
        [this, serial, bytes, width]() {
            const VORAPageImageCache::Decoded decoded = VORAPageImageCache::decode(bytes, width);
            // The destructor waits for the pool, so `this` is alive here.
            QMetaObject::invokeMethod(
                this, [this, serial, decoded, bytes]() { decodeFinished(serial, decoded, bytes); },
                Qt::QueuedConnection);
        },
        priority);
}

void VORAComicViewManager::decodeFinished(quint64 serial, const VORAPageImageCache::Decoded &decoded,
                                          const QByteArray &bytes)
{
    const PendingDecode pending = m_pendingDecodes.take(serial);
    VORAPictureImageView *view = pending.view.data();
    if (!view || m_latestDecode.value(view) != serial)
        return; // the view went, or newer bytes came for it
    m_latestDecode.remove(view);
    if (decoded.isNull()) {
        qCWarning(lcReader) << "page" << view->pageIndex() << "does not decode:" << decoded.error;
        view->showFailed();
        if (view->pageIndex() == m_pageIndex)
            PopUpLoadingFailView();
        emit pageImageDecoded(view->pageIndex(), false);
        return;
    }
    const QString key = VORAPageImageCache::shared().insert(decoded);
    view->setPhoto(key, decoded, bytes);
    startTucaoIfCurrent(view);
    emit pageImageDecoded(view->pageIndex(), true);
}

void VORAComicViewManager::startTucaoIfCurrent(VORAPictureImageView *view)
{
    if (view->pageIndex() != m_pageIndex) {
        view->hideTucaoView();
        return;
    }
    if (m_isplayTucao && m_isShowTucao)
        view->startTucaoView();
}

// --- Taps ---

void VORAComicViewManager::singleTap(int pageIndex, qreal x, qreal y)
{
    VORAPictureImageView *view = pageViewAt(pageIndex);
    if (!view)
        return;
    view->scrollView()->touchBegan(x, y);
    const auto action = VORAPictureImageView::tapActionAt(QPointF(x, y), isLandscape(), view->scrollView()->isZoomed(), m_viewSize);
    switch (action) {
    case VORAPictureImageView::TapToggleMenu:
        m_toggleTimer.start();
        break;
    case VORAPictureImageView::TapScrollDown:
    case VORAPictureImageView::TapScrollUp:
        if (!view->performTapAction(action, m_viewSize.height())) {
            // Nothing left to scroll on this page: the edge turns it.
            const int next = pageIndex + (action == VORAPictureImageView::TapScrollDown ? 1 : -1);
            if (next >= 0 && next < pageCount())
                moveToPhotoAtIndex(next, true);
        }
        break;
    case VORAPictureImageView::TapNothing:
        break;
    }
}

void VORAComicViewManager::doubleTap(int pageIndex, qreal x, qreal y)
{
    m_toggleTimer.stop();
    VORAPictureImageView *view = pageViewAt(pageIndex);
    if (!view)
        return;
    if (!view->handleDoubleTap(QPointF(x, y)))
        killScrollViewZoom(pageIndex);
}

void VORAComicViewManager::killScrollViewZoom(int index)
{
    if (VORAPictureImageView *view = pageViewAt(index))
        view->killScrollViewZoom(true);
}

// --- Loading failure ---

void VORAComicViewManager::PopUpLoadingFailView()
{
    if (!m_loadingFailVisible) {
        m_loadingFailVisible = true;
        m_loadingFailLoading = false;
        emit loadingFailChanged();
        emit showMenuRequested();
        return;
    }
    // loadingFail: the retry did not help; the indicator stops.
    if (m_loadingFailLoading) {
        m_loadingFailLoading = false;
        emit loadingFailChanged();
    }
}

void VORAComicViewManager::hideLoadingFailView()
{
    m_retryTimer.stop();
    if (!m_loadingFailVisible && !m_loadingFailLoading)
        return;
    m_loadingFailVisible = false;
    m_loadingFailLoading = false;
    emit loadingFailChanged();
}

void VORAComicViewManager::reloadCurrentPage()
{
    if (!m_loadingFailVisible)
        return;
    if (!m_loadingFailLoading) {
        m_loadingFailLoading = true;
        emit loadingFailChanged();
    }
    m_retryTimer.start();
}

void VORAComicViewManager::waitRoading()
{
    if (VORAPictureImageView *view = pageViewAt(m_pageIndex); view && view->state() == VORAPictureImageView::Failed)
        view->showLoading();
    emit reloadPageRequested(m_pageIndex);
}

// --- Tucao ---

void VORAComicViewManager::showTucao(bool show)
{
    if (m_isShowTucao != show) {
        m_isShowTucao = show;
        emit tucaoFlagsChanged();
    }
    if (VORAPictureImageView *view = pageViewAt(m_pageIndex)) {
        if (show && m_isplayTucao && view->state() == VORAPictureImageView::Shown)
            view->startTucaoView();
        else if (!show)
            view->hideTucaoView();
    }
}

void VORAComicViewManager::playTucao(bool play)
{
    if (m_isplayTucao != play) {
        m_isplayTucao = play;
        emit tucaoFlagsChanged();
    }
    if (VORAPictureImageView *view = pageViewAt(m_pageIndex)) {
        if (!play)
            view->playTucaoView(false);
        else if (m_isShowTucao && view->state() == VORAPictureImageView::Shown)
            view->playTucaoView(true);
    }
}

void VORAComicViewManager::hiddeTucaoMenuView(bool hidden)
{
    if (m_tucaoMenuHidden == hidden)
        return;
    m_tucaoMenuHidden = hidden;
    emit tucaoMenuHiddenChanged();
}
