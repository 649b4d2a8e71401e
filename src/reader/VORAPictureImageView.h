#pragma once

#include "net/VORATucao.h"
#include "reader/VORAPageImageCache.h"
#include "tucao/VORATucaoPagePlacement.h"

#include <QByteArray>
#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QVariantList>

#include <optional>

class VORAPictureScrollView;
class VORATucaoPlayback;

Q_MOC_INCLUDE("reader/VORAPictureScrollView.h")
Q_MOC_INCLUDE("tucao/VORATucaoPlayback.h")

// One page of the reading surface: the page image inside its zooming view,
// the loading placeholder until the image is there, and the page's tucao list
// for the overlay. It lies in the strip at x = pageIndex × strip width, one
// strip width minus a 20-point gap wide.
//
// The page's tucao play in its own VORATucaoPlayback (made with the view, fed
// with the fetched list and the image's pixel size); the QML overlay inside
// the image container draws the playback's rows.
//
// The image is decoded elsewhere (VORAComicViewManager, off the main thread)
// and handed over as a key of VORAPageImageCache; the view takes it out of
// the cache again when it is replaced or the view goes.
class VORAPictureImageView : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int pageIndex READ pageIndex CONSTANT)
    Q_PROPERTY(int currentImagePageIndex READ currentImagePageIndex NOTIFY currentChanged)
    Q_PROPERTY(bool current READ isCurrent NOTIFY currentChanged)
    Q_PROPERTY(int state READ state NOTIFY stateChanged)
    Q_PROPERTY(QString placeholderText READ placeholderText NOTIFY stateChanged)
    Q_PROPERTY(qreal x READ x NOTIFY frameChanged)
    Q_PROPERTY(qreal width READ width NOTIFY frameChanged)
    Q_PROPERTY(qreal height READ height NOTIFY frameChanged)
    Q_PROPERTY(VORAPictureScrollView *scrollView READ scrollView CONSTANT)
    Q_PROPERTY(int photoWidth READ photoWidth NOTIFY photoChanged)
    Q_PROPERTY(int photoHeight READ photoHeight NOTIFY photoChanged)
    Q_PROPERTY(QVariantList tiles READ tiles NOTIFY photoChanged)
    Q_PROPERTY(QVariantList tucaoList READ tucaoList NOTIFY tucaoChanged)
    Q_PROPERTY(bool hasTucao READ hasTucao NOTIFY tucaoChanged)
    Q_PROPERTY(bool tucaoPlaying READ tucaoPlaying NOTIFY tucaoPlayingChanged)
    Q_PROPERTY(VORATucaoPlayback *tucaoPlayback READ tucaoPlayback CONSTANT)
public:
    enum State { Loading = 0, Shown = 1, Failed = 2 };
    Q_ENUM(State)
    // What a single tap on the page does (the rule of panUpOrDownImagePage).
    enum TapAction { TapNothing = 0, TapScrollDown = 1, TapScrollUp = 2, TapToggleMenu = 3 };
    Q_ENUM(TapAction)

    static constexpr qreal pageGap = 20;
    // Landscape edge zones and the band of the middle that toggles the menu,
    // in points of a 1024 × 768 surface (a larger surface scales them).
    static constexpr qreal rightZoneFrom = 824;
    static constexpr qreal leftZoneBelow = 200;
    static constexpr qreal menuBandTop = 60;
    static constexpr qreal menuBandBottom = 658;
    static constexpr qreal tapScrollStep = 768;

    VORAPictureImageView(int pageIndex, QObject *parent = nullptr);
    ~VORAPictureImageView() override;

    int pageIndex() const { return m_pageIndex; }
    int currentImagePageIndex() const { return m_currentImagePageIndex; }
    bool isCurrent() const { return m_currentImagePageIndex == m_pageIndex; }
    int state() const { return m_state; }
    // "正在加载第%ld页", one-based.
    QString placeholderText() const;
    QRectF frame() const { return m_frame; }
    qreal x() const { return m_frame.x(); }
    qreal width() const { return m_frame.width(); }
    qreal height() const { return m_frame.height(); }
    VORAPictureScrollView *scrollView() const { return m_scrollView; }
    // Pixels of the page image as stored (not as decoded).
    QSize photoSize() const { return m_photoSize; }
    int photoWidth() const { return m_photoSize.width(); }
    int photoHeight() const { return m_photoSize.height(); }
    QString imageKey() const { return m_imageKey; }
    QByteArray photoBytes() const { return m_photoBytes; }
    // The tiles as the QML draws them: {"source", "y", "height"} in image
    // points at zoom 1, top to bottom.
    QVariantList tiles() const;
    const std::optional<QList<VORATucao>> &tucao() const { return m_tucao; }
    QVariantList tucaoList() const;
    bool hasTucao() const { return m_tucao.has_value(); }
    // Started on this page: the 2.5 s wait or the playback itself is on.
    bool tucaoPlaying() const { return m_tucaoPlaying; }
    VORATucaoPlayback *tucaoPlayback() const { return m_tucaoPlayback; }
    // Where the image stands in the page view, for placing and converting
    // tucao rectangles (the image view's size at zoom 1, the image's pixels,
    // the content offset, the container's origin in the page view).
    VORATucaoPagePlacement tucaoPagePlacement() const;

    // --- Rules (pure) ---
    // The page view's frame in the strip.
    static QRectF frameForPage(int pageIndex, const QSizeF &stripSize);
    // The image drawn at the page view's width; its height follows the image.
    static QSizeF fittedImageSize(const QSize &photo, const QSizeF &pageViewSize);
    // The rectangle (image points) a double tap at zoom 1 zooms to.
    static QRectF doubleTapZoomRect(const QPointF &imagePoint, const QSizeF &pageViewSize);
    // A single tap: landscape at zoom 1 has edge zones and a middle band;
    // portrait, or a zoomed page, toggles the menu. viewportPoint is where
    // the touch began, relative to the page view; surface is the reading
    // surface's size, the zones keep their share of it.
    static TapAction tapActionAt(const QPointF &viewportPoint, bool landscape, bool zoomed,
                                 const QSizeF &surface = QSizeF(1024, 768));

    // --- Operations ---
    void setCurrentImagePageIndex(int index);
    // The frame in the strip. A zoomed page keeps its zoom and is re-centred
    // in the new bounds; otherwise the page is fitted again.
    void setFrame(const QRectF &frame);
    void showLoading();
    void showFailed();
    // The decoded image (its key in the cache) and the bytes it came from.
    void setPhoto(const QString &imageKey, const VORAPageImageCache::Decoded &decoded, const QByteArray &bytes);
    void setTucao(const std::optional<QList<VORATucao>> &tucao);
    // Fit: zoom 1, drawn at the page view's width, back to the top.
    void layoutScrollViewAnimated();
    // Zoom back to 1 (the rule's killScrollViewZoom).
    void killScrollViewZoom(bool animated = false);
    // Zooms in around the tap at zoom 1 and returns true; at any other zoom
    // returns false (the manager then resets the zoom).
    bool handleDoubleTap(const QPointF &viewportPoint);
    // Carries a tap action out (an edge scrolls by step, a surface's height);
    // false when there was nowhere to scroll.
    bool performTapAction(TapAction action, qreal step = tapScrollStep);
    // Tucao playback switches (the overlay itself draws them): stop and take
    // them off the page; arm the 2.5 s start (setTucao) on the current page.
    void hideTucaoView();
    void startTucaoView();
    // Play again or pause (the tucao on screen stay); a page whose playback
    // has not begun arms its start instead.
    void playTucaoView(bool play);

signals:
    void currentChanged();
    void stateChanged();
    void frameChanged();
    void photoChanged();
    void tucaoChanged();
    void tucaoPlayingChanged();

private:
    void setState(State state);
    void releaseImage();

    int m_pageIndex = 0;
    int m_currentImagePageIndex = -1;
    State m_state = Loading;
    QRectF m_frame;
    VORAPictureScrollView *m_scrollView = nullptr;
    VORATucaoPlayback *m_tucaoPlayback = nullptr;
    QSize m_photoSize;
    QSize m_decodedSize;
    QList<int> m_tileHeights;
    QString m_imageKey;
    QByteArray m_photoBytes;
    std::optional<QList<VORATucao>> m_tucao;
    bool m_tucaoPlaying = false;
};
