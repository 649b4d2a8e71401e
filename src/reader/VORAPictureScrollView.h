#pragma once

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QVariantAnimation>

// The zooming view of one page: the page image (its container) inside a
// viewport the size of the page view. Zoom runs from 0.6 to 1.64; a pinch may
// overshoot a little and springs back when it ends (the zoom bounces, the
// edges do not). Below the viewport's size the container is centred.
//
// Coordinates: "viewport" points are relative to the page view's top-left
// corner; "image" points are relative to the displayed image at zoom 1. The
// content offset is the viewport's top-left corner in content coordinates
// (the zoomed image, plus the centring margins when it is smaller).
//
// The QML Flickable draws this state: it binds contentWidth/contentHeight and
// the container's position and scale, follows contentOffsetChanged, and
// reports the user's own scrolling back with setContentOffset().
class VORAPictureScrollView : public QObject
{
    Q_OBJECT
    Q_PROPERTY(qreal zoomScale READ zoomScale NOTIFY zoomChanged)
    Q_PROPERTY(qreal minimumZoomScale READ minimumZoomScale CONSTANT)
    Q_PROPERTY(qreal maximumZoomScale READ maximumZoomScale CONSTANT)
    Q_PROPERTY(qreal boundsWidth READ boundsWidth NOTIFY geometryChanged)
    Q_PROPERTY(qreal boundsHeight READ boundsHeight NOTIFY geometryChanged)
    Q_PROPERTY(qreal imageWidth READ imageWidth NOTIFY geometryChanged)
    Q_PROPERTY(qreal imageHeight READ imageHeight NOTIFY geometryChanged)
    Q_PROPERTY(qreal contentWidth READ contentWidth NOTIFY zoomChanged)
    Q_PROPERTY(qreal contentHeight READ contentHeight NOTIFY zoomChanged)
    Q_PROPERTY(qreal containerX READ containerX NOTIFY zoomChanged)
    Q_PROPERTY(qreal containerY READ containerY NOTIFY zoomChanged)
    Q_PROPERTY(qreal contentX READ contentX NOTIFY contentOffsetChanged)
    Q_PROPERTY(qreal contentY READ contentY NOTIFY contentOffsetChanged)
    Q_PROPERTY(bool zoomed READ isZoomed NOTIFY zoomChanged)
    Q_PROPERTY(bool animating READ isAnimating NOTIFY animatingChanged)
public:
    // The limits as the platform's zooming view held them: the minimum in
    // single precision.
    static constexpr float minimumZoom = 0.6f;
    static constexpr qreal maximumZoom = 1.64;
    // How far a pinch may go past a limit before it springs back.
    static constexpr qreal zoomOvershoot = 0.15;
    static constexpr int zoomAnimationMs = 250;
    static constexpr int recentreAnimationMs = 100;
    static constexpr int scrollAnimationMs = 300;

    explicit VORAPictureScrollView(QObject *parent = nullptr);
    // A running animation stops as it is destroyed and says so; by then this
    // object is half gone, so the animation is cut loose first.
    ~VORAPictureScrollView() override;

    qreal zoomScale() const { return m_zoomScale; }
    qreal minimumZoomScale() const { return qreal(minimumZoom); }
    qreal maximumZoomScale() const { return maximumZoom; }
    QSizeF boundsSize() const { return m_bounds; }
    qreal boundsWidth() const { return m_bounds.width(); }
    qreal boundsHeight() const { return m_bounds.height(); }
    // The image as drawn at zoom 1.
    QSizeF imageSize() const { return m_image; }
    qreal imageWidth() const { return m_image.width(); }
    qreal imageHeight() const { return m_image.height(); }
    qreal contentWidth() const { return m_image.width() * m_zoomScale; }
    qreal contentHeight() const { return m_image.height() * m_zoomScale; }
    // Where the container stands in the content: centred when it is smaller
    // than the viewport, else at 0.
    qreal containerX() const;
    qreal containerY() const;
    QPointF contentOffset() const { return m_offset; }
    qreal contentX() const { return m_offset.x(); }
    qreal contentY() const { return m_offset.y(); }
    bool isZoomed() const { return !qFuzzyCompare(m_zoomScale, 1.0); }
    bool isAnimating() const { return m_animation.state() == QAbstractAnimation::Running; }
    // Where the running animation ends (the current state when none runs).
    qreal targetZoomScale() const;
    QPointF targetContentOffset() const;
    QPointF touchBeganPoint() const { return m_touchBeganPoint; }

    void setBoundsSize(const QSizeF &size);
    void setImageSize(const QSizeF &size);

    // Zoom within the limits, keeping the content offset inside the content.
    void setZoomScale(qreal scale, bool animated);
    // UIKit's zoomToRect: the largest zoom (within the limits) that shows the
    // rectangle (image points) whole, scrolled so the rectangle's corner is at
    // the viewport's corner as far as the content allows.
    void zoomToRect(const QRectF &rect, bool animated);
    // Offset clamped to the content; animated scrolling when asked.
    void setContentOffset(const QPointF &offset, bool animated);
    QPointF clampedOffset(const QPointF &offset, qreal scale) const;
    // Viewport point -> image point at the current zoom.
    QPointF imagePointForViewportPoint(const QPointF &viewportPoint) const;

    // --- From the QML ---
    // The user scrolled the Flickable (no animation, no clamping beyond the content).
    Q_INVOKABLE void setContentOffset(qreal x, qreal y);
    // A pinch step: the zoom around a viewport point, allowed to overshoot.
    Q_INVOKABLE void zoomAround(qreal scale, qreal viewportX, qreal viewportY);
    // The pinch ended: spring back into the limits.
    Q_INVOKABLE void endZoomGesture();
    Q_INVOKABLE void touchBegan(qreal viewportX, qreal viewportY);
    // A finger went down: a running animation stops where it is.
    Q_INVOKABLE void stopAnimation();

signals:
    void zoomChanged();
    void geometryChanged();
    void contentOffsetChanged();
    void animatingChanged();

private:
    void animateTo(qreal scale, const QPointF &offset, int durationMs);
    void applyState(qreal scale, const QPointF &offset);

    QSizeF m_bounds;
    QSizeF m_image;
    qreal m_zoomScale = 1.0;
    QPointF m_offset;
    QPointF m_touchBeganPoint;
    QVariantAnimation m_animation;
    qreal m_fromScale = 1.0;
    qreal m_toScale = 1.0;
    QPointF m_fromOffset;
    QPointF m_toOffset;
};
