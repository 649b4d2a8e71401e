#pragma once

#include "net/VORATucao.h"
#include "reader/VORAPageImageCache.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QSizeF>
#include <QThreadPool>
#include <QTimer>

#include <optional>

class VORAPageViewListModel;
class VORAPictureImageView;
class VORATuCaoMenuView;

Q_MOC_INCLUDE("reader/VORAPageViewListModel.h")
Q_MOC_INCLUDE("reader/VORAPictureImageView.h")
Q_MOC_INCLUDE("tucao/VORATuCaoMenuView.h")

// The reading surface: a horizontal strip with one slot per page of the
// chapter, of which only the page views of the current page and two on each
// side exist. It decides which page views exist, which page the strip rests
// on, the overscroll that asks for another chapter, the taps, and shows the
// pages the session delivers (decoded on worker threads, at most two at a
// time, as soon as they arrive).
//
// It asks its controller through signals: requestPageWithIndex (load that
// page; -1 and the page count mean the chapter before and after),
// toggleMenuRequested / showMenuRequested, reloadPageRequested (the failure
// view's retry).
//
// Tucao: every page view plays its own tucao (VORATucaoPlayback); only the
// current page's play, and only while isShowTucao and isplayTucao are both
// set. The tucao menu bar (tucaoMenuView, laid over the surface) switches
// them, steps through the current page's groups and asks to write one
// (writeTucaoRequested); it shows and hides with the menu bars through the
// notification "KIsHiddenTuCao" ("KTuCaoViewBOOLValue": true hides it).
//
// Geometry: the reader is drawn in a window of the user's size; the read mode
// decides the shape of the reading surface inside it (readingSurface), and the
// surface is the strip's view. Page k lies at x = k × viewWidth, one
// viewWidth − 20 wide. The
// QML strip calls scrollViewWillBeginDecelerating when the finger lets go and
// scrollViewDidEndDecelerating when the strip has come to rest, with its
// horizontal content offset; it follows scrollToPageRequested.
class VORAComicViewManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int pageCount READ pageCount NOTIFY pagesChanged)
    Q_PROPERTY(int pageIndex READ pageIndex NOTIFY pageIndexChanged)
    Q_PROPERTY(qreal viewWidth READ viewWidth NOTIFY viewSizeChanged)
    Q_PROPERTY(qreal viewHeight READ viewHeight NOTIFY viewSizeChanged)
    Q_PROPERTY(qreal stripContentWidth READ stripContentWidth NOTIFY stripChanged)
    Q_PROPERTY(bool landscape READ isLandscape NOTIFY viewSizeChanged)
    Q_PROPERTY(QRectF surfaceRect READ surfaceRect NOTIFY viewSizeChanged)
    Q_PROPERTY(VORAPageViewListModel *pageViews READ pageViews CONSTANT)
    Q_PROPERTY(bool loadingFailVisible READ loadingFailVisible NOTIFY loadingFailChanged)
    Q_PROPERTY(bool loadingFailLoading READ loadingFailLoading NOTIFY loadingFailChanged)
    Q_PROPERTY(bool isShowTucao READ isShowTucao NOTIFY tucaoFlagsChanged)
    Q_PROPERTY(bool isplayTucao READ isplayTucao NOTIFY tucaoFlagsChanged)
    Q_PROPERTY(VORATuCaoMenuView *tucaoMenuView READ tucaoMenuView CONSTANT)
    Q_PROPERTY(bool tucaoMenuHidden READ tucaoMenuHidden NOTIFY tucaoMenuHiddenChanged)
    Q_PROPERTY(qreal devicePixelRatio READ devicePixelRatio WRITE setDevicePixelRatio NOTIFY viewSizeChanged)
public:
    static constexpr int loadingFailViewTag = 101002;
    // The shortest wait before a single tap toggles the bars; the wait is at
    // least the platform's double-click interval, so that a double tap cancels it.
    static constexpr int toggleDelayMs = 100;
    static constexpr int retryDelayMs = 1000;
    static constexpr int liveRadius = 2;
    // A release past this share of a page (or a quick flick) turns the page.
    static constexpr qreal turnFraction = 0.15;
    static constexpr qreal flickVelocity = 400; // points per second

    explicit VORAComicViewManager(QObject *parent = nullptr);
    ~VORAComicViewManager() override;

    int pageCount() const { return int(m_pictureImageViewArray.size()); }
    int pageIndex() const { return m_pageIndex; }
    qreal viewWidth() const { return m_viewSize.width(); }
    qreal viewHeight() const { return m_viewSize.height(); }
    QSizeF viewSize() const { return m_viewSize; }
    // Where the reading surface lies in the window (window coordinates).
    QRectF surfaceRect() const { return m_surfaceRect; }
    bool portraitReading() const { return m_portraitReading; }
    qreal stripContentWidth() const { return m_viewSize.width() * pageCount(); }
    // Landscape when wider than tall (the screen state 1).
    bool isLandscape() const { return m_viewSize.width() > m_viewSize.height(); }
    VORAPageViewListModel *pageViews() const { return m_pageViews; }
    bool loadingFailVisible() const { return m_loadingFailVisible; }
    bool loadingFailLoading() const { return m_loadingFailLoading; }
    bool isShowTucao() const { return m_isShowTucao; }
    bool isplayTucao() const { return m_isplayTucao; }
    VORATuCaoMenuView *tucaoMenuView() const { return m_tucaoMenuView; }
    bool tucaoMenuHidden() const { return m_tucaoMenuHidden; }
    bool canMoveToRequest() const { return m_canMoveToRequest; }
    qreal devicePixelRatio() const { return m_devicePixelRatio; }
    void setDevicePixelRatio(qreal ratio);

    // The slot of a page: its view, or null (empty slot, or no such page).
    Q_INVOKABLE VORAPictureImageView *pageViewAt(int index) const;
    // Pages whose view exists, ascending.
    QList<int> existingPageIndexes() const;
    // Decodes started and not yet back.
    int pendingDecodes() const { return int(m_pendingDecodes.size()); }

    // A new chapter: every page view goes; one empty slot per page.
    void reloadWithPageCount(int count);
    // The surface's own size (the strip's view).
    Q_INVOKABLE void setViewSize(qreal width, qreal height);

    // --- Read modes in a window ---
    // The reading surface for a read mode inside a window: a window already of
    // the mode's shape is used whole; otherwise the surface is a 768 × 1024
    // (portrait) or 1024 × 768 (landscape) shape as tall or as wide as the
    // window, centred in it. The window is never resized.
    static QRectF readingSurface(const QSizeF &window, bool portraitReading);
    // The window the reader is drawn in, and the read mode: both lay the surface out.
    Q_INVOKABLE void setWindowSize(qreal width, qreal height);
    void setPortraitReading(bool portrait);

    // --- The strip's rules ---
    void moveToPhotoAtIndex(int index, bool animated);
    void layoutScrollViewSubviews();
    // The page centred at this horizontal offset.
    int centredPageForOffset(qreal offsetX) const;
    // Where a release lands: the page the finger pulled into view past
    // turnFraction, or after a quick flick; else the page it started on.
    Q_INVOKABLE int pageForRelease(qreal offsetX, qreal velocityX) const;
    // True when the release asked for another chapter (canMoveToRequest).
    Q_INVOKABLE bool scrollViewWillBeginDecelerating(qreal offsetX);
    Q_INVOKABLE void scrollViewDidEndDecelerating(qreal offsetX);
    // One page on or back (keys, volume buttons); past either end of the
    // chapter the controller is asked for the page outside it.
    Q_INVOKABLE void turnPage(int step);

    // A page from the session: image bytes (none when it failed), its tucao
    // (none when they could not be fetched) and its index.
    void currentDisplayImage(const std::optional<QByteArray> &imageData,
                             const std::optional<QList<VORATucao>> &tucao, int index);

    // --- Taps (viewport points of the page view) ---
    Q_INVOKABLE void singleTap(int pageIndex, qreal x, qreal y);
    Q_INVOKABLE void doubleTap(int pageIndex, qreal x, qreal y);
    bool toggleMenuPending() const { return m_toggleTimer.isActive(); }
    int toggleMenuDelay() const { return m_toggleTimer.interval(); }
    Q_INVOKABLE void killScrollViewZoom(int index);

    // --- The loading-failure view (tag 101002) ---
    void PopUpLoadingFailView();
    void hideLoadingFailView();
    // Its retry button: the indicator runs, and 1.0 s later waitRoading.
    Q_INVOKABLE void reloadCurrentPage();
    void waitRoading();

    // --- Tucao switches ---
    // Shown: the current page's 2.5 s start; hidden: its tucao stop and go.
    void showTucao(bool show);
    // Play again or pause on the current page (paused tucao stay).
    void playTucao(bool play);
    // The tucao menu bar shown or hidden (hiddeTucaoMenuView).
    void hiddeTucaoMenuView(bool hidden);

signals:
    void pagesChanged();
    void pageIndexChanged();
    void viewSizeChanged();
    void stripChanged();
    void loadingFailChanged();
    void tucaoFlagsChanged();
    void tucaoMenuHiddenChanged();
    // The tucao menu's write button.
    void writeTucaoRequested();
    void requestPageWithIndex(int index);
    void showMenuRequested();
    void toggleMenuRequested();
    void tucaoToolBarHideRequested();
    void reloadPageRequested(int index);
    // The strip should rest on this page.
    void scrollToPageRequested(int index, bool animated);
    // A page finished decoding (shown) or failed to.
    void pageImageDecoded(int index, bool ok);

private:
    void createPageView(int index);
    void removePageView(int index);
    void decodePage(VORAPictureImageView *view, const QByteArray &bytes);
    void decodeFinished(quint64 serial, const VORAPageImageCache::Decoded &decoded, const QByteArray &bytes);
    void startTucaoIfCurrent(VORAPictureImageView *view);
    qreal decodeWidth() const;
    void layOutSurface();

    QList<VORAPictureImageView *> m_pictureImageViewArray;
    VORAPageViewListModel *m_pageViews = nullptr;
    int m_pageIndex = 0;
    QSizeF m_viewSize{768, 1024};
    QSizeF m_windowSize;
    QRectF m_surfaceRect{0, 0, 768, 1024};
    bool m_portraitReading = true;
    qreal m_devicePixelRatio = 1.0;
    bool m_canMoveToRequest = false;
    bool m_loadingFailVisible = false;
    bool m_loadingFailLoading = false;
    bool m_isShowTucao = false;
    bool m_isplayTucao = true;
    VORATuCaoMenuView *m_tucaoMenuView = nullptr;
    bool m_tucaoMenuHidden = true;
    QTimer m_toggleTimer;
    QTimer m_retryTimer;

    struct PendingDecode
    {
        QPointer<VORAPictureImageView> view;
        QByteArray bytes;
    };
    QThreadPool m_decodePool;
    quint64 m_nextDecode = 1;
    QHash<quint64, PendingDecode> m_pendingDecodes;
    // The decode each page view waits for (a newer one replaces an older).
    QHash<VORAPictureImageView *, quint64> m_latestDecode;
};
