#include "reader/VORAPictureScrollView.h"

#include <QEasingCurve>

#include <algorithm>

VORAPictureScrollView::VORAPictureScrollView(QObject *parent)
    : QObject(parent)
{
    m_animation.setStartValue(0.0);
    m_animation.setEndValue(1.0);
    m_animation.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        const qreal t = value.toReal();
        applyState(m_fromScale + (m_toScale - m_fromScale) * t, m_fromOffset + (m_toOffset - m_fromOffset) * t);
    });
    connect(&m_animation, &QVariantAnimation::stateChanged, this, [this](QAbstractAnimation::State now, QAbstractAnimation::State) {
        if (now == QAbstractAnimation::Stopped && m_animation.currentTime() >= m_animation.duration())
            applyState(m_toScale, m_toOffset);
        emit animatingChanged();
    });
}

VORAPictureScrollView::~VORAPictureScrollView()
{
    m_animation.disconnect(this);
    m_animation.stop();
}

qreal VORAPictureScrollView::containerX() const
{
    return std::max<qreal>(0, (m_bounds.width() - contentWidth()) / 2);
}

qreal VORAPictureScrollView::containerY() const
{
    return std::max<qreal>(0, (m_bounds.height() - contentHeight()) / 2);
}

qreal VORAPictureScrollView::targetZoomScale() const
{
    return isAnimating() ? m_toScale : m_zoomScale;
}

QPointF VORAPictureScrollView::targetContentOffset() const
{
    return isAnimating() ? m_toOffset : m_offset;
}

void VORAPictureScrollView::setBoundsSize(const QSizeF &size)
{
    if (size == m_bounds)
        return;
    m_bounds = size;
    emit geometryChanged();
    emit zoomChanged(); // the centring margins follow the bounds
    applyState(m_zoomScale, clampedOffset(m_offset, m_zoomScale));
}

void VORAPictureScrollView::setImageSize(const QSizeF &size)
{
    if (size == m_image)
        return;
    m_image = size;
    emit geometryChanged();
    emit zoomChanged();
    applyState(m_zoomScale, clampedOffset(m_offset, m_zoomScale));
}

QPointF VORAPictureScrollView::clampedOffset(const QPointF &offset, qreal scale) const
{
    const qreal maxX = std::max<qreal>(0, m_image.width() * scale - m_bounds.width());
    const qreal maxY = std::max<qreal>(0, m_image.height() * scale - m_bounds.height());
    return {std::clamp<qreal>(offset.x(), 0, maxX), std::clamp<qreal>(offset.y(), 0, maxY)};
}

QPointF VORAPictureScrollView::imagePointForViewportPoint(const QPointF &p) const
{
    const qreal z = m_zoomScale > 0 ? m_zoomScale : 1.0;
    return {(m_offset.x() + p.x() - containerX()) / z, (m_offset.y() + p.y() - containerY()) / z};
}

void VORAPictureScrollView::setZoomScale(qreal scale, bool animated)
{
    const qreal s = std::clamp<qreal>(scale, qreal(minimumZoom), maximumZoom);
    // Keep the viewport's centre where it is.
    const QPointF centre(m_bounds.width() / 2, m_bounds.height() / 2);
    const QPointF image = imagePointForViewportPoint(centre);
    const qreal newContainerX = std::max<qreal>(0, (m_bounds.width() - m_image.width() * s) / 2);
    const qreal newContainerY = std::max<qreal>(0, (m_bounds.height() - m_image.height() * s) / 2);
    const QPointF offset = clampedOffset(
        QPointF(image.x() * s + newContainerX - centre.x(), image.y() * s + newContainerY - centre.y()), s);
    if (animated)
        animateTo(s, offset, zoomAnimationMs);
    else {
        m_animation.stop();
        applyState(s, offset);
    }
}

void VORAPictureScrollView::zoomToRect(const QRectF &rect, bool animated)
{
    if (rect.width() <= 0 || rect.height() <= 0)
        return;
    const qreal s = std::clamp<qreal>(std::min(m_bounds.width() / rect.width(), m_bounds.height() / rect.height()),
                                      qreal(minimumZoom), maximumZoom);
    const qreal newContainerX = std::max<qreal>(0, (m_bounds.width() - m_image.width() * s) / 2);
    const qreal newContainerY = std::max<qreal>(0, (m_bounds.height() - m_image.height() * s) / 2);
    const QPointF offset =
        clampedOffset(QPointF(rect.x() * s + newContainerX, rect.y() * s + newContainerY), s);
    if (animated)
        animateTo(s, offset, zoomAnimationMs);
    else {
        m_animation.stop();
        applyState(s, offset);
    }
}

void VORAPictureScrollView::setContentOffset(const QPointF &offset, bool animated)
{
    const QPointF target = clampedOffset(offset, targetZoomScale());
    if (animated)
        animateTo(targetZoomScale(), target, scrollAnimationMs);
    else {
        m_animation.stop();
        applyState(m_zoomScale, target);
    }
}

void VORAPictureScrollView::setContentOffset(qreal x, qreal y)
{
    if (isAnimating())
        return; // the Flickable follows the animation; its echo is not a user scroll
    const QPointF offset(x, y);
    if (offset == m_offset)
        return;
    m_offset = offset;
    emit contentOffsetChanged();
}

void VORAPictureScrollView::zoomAround(qreal scale, qreal viewportX, qreal viewportY)
{
    if (!(scale > 0))
        return;
    m_animation.stop();
    const qreal low = qreal(minimumZoom) * (1 - zoomOvershoot);
    const qreal high = maximumZoom * (1 + zoomOvershoot);
    const qreal s = std::clamp(scale, low, high);
    const QPointF at(viewportX, viewportY);
    const QPointF image = imagePointForViewportPoint(at);
    const qreal newContainerX = std::max<qreal>(0, (m_bounds.width() - m_image.width() * s) / 2);
    const qreal newContainerY = std::max<qreal>(0, (m_bounds.height() - m_image.height() * s) / 2);
    const QPointF offset(image.x() * s + newContainerX - at.x(), image.y() * s + newContainerY - at.y());
    applyState(s, clampedOffset(offset, s));
}

void VORAPictureScrollView::endZoomGesture()
{
    const qreal s = std::clamp<qreal>(m_zoomScale, qreal(minimumZoom), maximumZoom);
    if (qFuzzyCompare(s, m_zoomScale))
        return;
    setZoomScale(s, true);
}

void VORAPictureScrollView::touchBegan(qreal viewportX, qreal viewportY)
{
    m_touchBeganPoint = QPointF(viewportX, viewportY);
}

void VORAPictureScrollView::stopAnimation()
{
    m_animation.stop();
}

void VORAPictureScrollView::animateTo(qreal scale, const QPointF &offset, int durationMs)
{
    m_animation.stop();
    m_fromScale = m_zoomScale;
    m_fromOffset = m_offset;
    m_toScale = scale;
    m_toOffset = offset;
    if (qFuzzyCompare(m_fromScale, m_toScale) && m_fromOffset == m_toOffset)
        return;
    m_animation.setDuration(durationMs);
    m_animation.start();
}

void VORAPictureScrollView::applyState(qreal scale, const QPointF &offset)
{
    const bool zoomChange = !qFuzzyCompare(scale, m_zoomScale);
    const bool offsetChange = offset != m_offset;
    m_zoomScale = scale;
    m_offset = offset;
    if (zoomChange)
        emit zoomChanged();
    if (offsetChange || zoomChange)
        emit contentOffsetChanged();
}
