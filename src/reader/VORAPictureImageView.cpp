#include "reader/VORAPictureImageView.h"

#include "reader/VORAPageImageProvider.h"
#include "reader/VORAPictureScrollView.h"
#include "tucao/VORATucaoPlayback.h"

#include <QVariantMap>

#include <algorithm>

VORAPictureImageView::VORAPictureImageView(int pageIndex, QObject *parent)
    : QObject(parent)
    , m_pageIndex(pageIndex)
    , m_scrollView(new VORAPictureScrollView(this))
    , m_tucaoPlayback(new VORATucaoPlayback(this))
{
    m_tucaoPlayback->setPageIndex(pageIndex);
}

VORAPictureImageView::~VORAPictureImageView()
{
    releaseImage();
}

VORATucaoPagePlacement VORAPictureImageView::tucaoPagePlacement() const
{
    VORATucaoPagePlacement placement;
    placement.imageViewSize = m_scrollView->imageSize();
    placement.imageSize = QSizeF(m_photoSize);
    placement.contentOffset = m_scrollView->contentOffset();
    placement.scrollViewOrigin = QPointF(m_scrollView->containerX(), m_scrollView->containerY());
    return placement;
}

QString VORAPictureImageView::placeholderText() const
{
    return QString::asprintf("正在加载第%ld页", long(m_pageIndex) + 1);
}

QVariantList VORAPictureImageView::tiles() const
{
    QVariantList list;
    if (m_imageKey.isEmpty() || m_decodedSize.height() <= 0)
        return list;
    const qreal total = m_decodedSize.height();
    int top = 0;
    for (int i = 0; i < m_tileHeights.size(); ++i) {
        list.append(QVariantMap{
            {QStringLiteral("source"),
             QStringLiteral("image://%1/%2/%3").arg(VORAPageImageProvider::providerName, m_imageKey).arg(i)},
            {QStringLiteral("top"), top / total},
            {QStringLiteral("span"), m_tileHeights.at(i) / total},
        });
        top += m_tileHeights.at(i);
    }
    return list;
}

QVariantList VORAPictureImageView::tucaoList() const
{
    QVariantList list;
    if (!m_tucao)
        return list;
    for (const VORATucao &t : *m_tucao) {
        list.append(QVariantMap{
            {QStringLiteral("tucaoId"), t.tucaoId},
            {QStringLiteral("content"), t.content},
            {QStringLiteral("userId"), t.userId},
            {QStringLiteral("nickName"), t.nickName},
            {QStringLiteral("x"), t.x},
            {QStringLiteral("y"), t.y},
            {QStringLiteral("width"), t.width},
            {QStringLiteral("height"), t.height},
            {QStringLiteral("color"), t.color},
            {QStringLiteral("back"), t.back},
            {QStringLiteral("updateTime"), t.updateTime},
        });
    }
    return list;
}

// --- Rules ---

QRectF VORAPictureImageView::frameForPage(int pageIndex, const QSizeF &stripSize)
{
    return QRectF(pageIndex * stripSize.width(), 0, std::max<qreal>(0, stripSize.width() - pageGap), stripSize.height());
}

QSizeF VORAPictureImageView::fittedImageSize(const QSize &photo, const QSizeF &pageViewSize)
{
    if (photo.width() <= 0 || photo.height() <= 0)
        return pageViewSize;
    const qreal width = pageViewSize.width();
    return QSizeF(width, width / (qreal(photo.width()) / qreal(photo.height())));
}

QRectF VORAPictureImageView::doubleTapZoomRect(const QPointF &imagePoint, const QSizeF &pageViewSize)
{
    const qreal w = pageViewSize.width() / VORAPictureScrollView::maximumZoom;
    const qreal h = pageViewSize.height() / VORAPictureScrollView::maximumZoom;
    return QRectF(std::max<qreal>(0, imagePoint.x() - w / 2), std::max<qreal>(0, imagePoint.y() - h / 2), w, h);
}

VORAPictureImageView::TapAction VORAPictureImageView::tapActionAt(const QPointF &p, bool landscape, bool zoomed,
                                                                  const QSizeF &surface)
{
    if (!landscape || zoomed)
        return TapToggleMenu;
    const qreal sx = surface.width() > 0 ? surface.width() / 1024 : 1;
    const qreal sy = surface.height() > 0 ? surface.height() / 768 : 1;
    if (p.x() > rightZoneFrom * sx)
        return TapScrollDown;
    if (p.x() < leftZoneBelow * sx)
        return TapScrollUp;
    if (p.y() >= menuBandTop * sy && p.y() <= menuBandBottom * sy)
        return TapToggleMenu;
    return TapNothing;
}

// --- Operations ---

void VORAPictureImageView::setCurrentImagePageIndex(int index)
{
    if (m_currentImagePageIndex == index)
        return;
    m_currentImagePageIndex = index;
    m_tucaoPlayback->setCurrentImagePageIndex(index);
    emit currentChanged();
}

void VORAPictureImageView::setFrame(const QRectF &frame)
{
    if (frame == m_frame)
        return;
    const bool resized = frame.size() != m_frame.size();
    m_frame = frame;
    emit frameChanged();
    if (!resized)
        return;
    if (m_scrollView->zoomScale() > 1.0 && m_state == Shown) {
        // Keep the zoomed image; the container is re-centred in the new bounds.
        m_scrollView->setBoundsSize(frame.size());
        m_scrollView->setImageSize(fittedImageSize(m_photoSize, frame.size()));
        return;
    }
    layoutScrollViewAnimated();
}

void VORAPictureImageView::showLoading()
{
    setState(Loading);
}

void VORAPictureImageView::showFailed()
{
    setState(Failed);
}

void VORAPictureImageView::setPhoto(const QString &imageKey, const VORAPageImageCache::Decoded &decoded,
                                    const QByteArray &bytes)
{
    releaseImage();
    m_imageKey = imageKey;
    m_photoBytes = bytes;
    m_photoSize = decoded.sourceSize;
    m_decodedSize = decoded.decodedSize;
    m_tileHeights.clear();
    for (const QImage &tile : decoded.tiles)
        m_tileHeights.append(tile.height());
    layoutScrollViewAnimated();
    m_tucaoPlayback->setImageSize(QSizeF(m_photoSize));
    emit photoChanged();
    setState(Shown);
}

void VORAPictureImageView::setTucao(const std::optional<QList<VORATucao>> &tucao)
{
    if (tucao == m_tucao)
        return;
    m_tucao = tucao;
    // A new list starts the page's playback over (stopped).
    m_tucaoPlayback->setTucaoList(tucao.value_or(QList<VORATucao>()));
    if (m_tucaoPlaying) {
        m_tucaoPlaying = false;
        emit tucaoPlayingChanged();
    }
    emit tucaoChanged();
}

void VORAPictureImageView::layoutScrollViewAnimated()
{
    m_scrollView->stopAnimation();
    m_scrollView->setBoundsSize(m_frame.size());
    m_scrollView->setImageSize(m_photoSize.isEmpty() ? m_frame.size() : fittedImageSize(m_photoSize, m_frame.size()));
    m_scrollView->setZoomScale(1.0, false);
    m_scrollView->setContentOffset(QPointF(0, 0), false);
}

void VORAPictureImageView::killScrollViewZoom(bool animated)
{
    if (!m_scrollView->isZoomed() && !m_scrollView->isAnimating())
        return;
    m_scrollView->setZoomScale(1.0, animated);
}

bool VORAPictureImageView::handleDoubleTap(const QPointF &viewportPoint)
{
    if (m_state != Shown)
        return false;
    // Exactly 1 (a scroll under way counts where it ends).
    if (m_scrollView->targetZoomScale() != 1.0)
        return false;
    m_scrollView->stopAnimation();
    const QPointF image = m_scrollView->imagePointForViewportPoint(viewportPoint);
    m_scrollView->zoomToRect(doubleTapZoomRect(image, m_frame.size()), true);
    return true;
}

bool VORAPictureImageView::performTapAction(TapAction action, qreal step)
{
    if (action != TapScrollDown && action != TapScrollUp)
        return true;
    const QPointF from = m_scrollView->targetContentOffset();
    const qreal dy = action == TapScrollDown ? step : -step;
    const QPointF to = m_scrollView->clampedOffset(QPointF(from.x(), from.y() + dy), m_scrollView->targetZoomScale());
    if (qFuzzyCompare(to.y() + 1, from.y() + 1))
        return false;
    m_scrollView->setContentOffset(to, true);
    return true;
}

void VORAPictureImageView::hideTucaoView()
{
    m_tucaoPlayback->hideTucaoView();
    if (!m_tucaoPlaying)
        return;
    m_tucaoPlaying = false;
    emit tucaoPlayingChanged();
}

void VORAPictureImageView::startTucaoView()
{
    if (!isCurrent())
        return;
    m_tucaoPlayback->setTucao();
    if (m_tucaoPlaying)
        return;
    m_tucaoPlaying = true;
    emit tucaoPlayingChanged();
}

void VORAPictureImageView::playTucaoView(bool play)
{
    if (!play) {
        m_tucaoPlayback->playTucao(false);
        return;
    }
    if (m_tucaoPlayback->showTucaoFlag())
        m_tucaoPlayback->playTucao(true);
    else
        startTucaoView();
}

void VORAPictureImageView::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged();
}

void VORAPictureImageView::releaseImage()
{
    if (!m_imageKey.isEmpty())
        VORAPageImageCache::shared().remove(m_imageKey);
    m_imageKey.clear();
}
