#include "tucao/VORATucaoGeometry.h"

#include <QtGlobal>

#include <cmath>
#include <limits>

namespace {

// Integer part of v, toward zero, kept within 32 bits (the site's range) so a
// degenerate value never overflows the cast.
qint64 integerPart(double v)
{
    if (!std::isfinite(v))
        return 0;
    constexpr double lo = std::numeric_limits<qint32>::min();
    constexpr double hi = std::numeric_limits<qint32>::max();
    return static_cast<qint64>(std::trunc(qBound(lo, v, hi)));
}

} // namespace

VORATucaoDTO VORATucaoGeometry::getNewTucaoDTO(const VORATucaoDTO &dto, const VORATucaoPagePlacement &placement)
{
    VORATucaoDTO result = dto;
    if (!placement.isValid())
        return result;
    const double sx = placement.imageViewSize.width() / placement.imageSize.width();
    const double sy = placement.imageViewSize.height() / placement.imageSize.height();
    qint64 y = integerPart(placement.contentOffset.y() + double(dto.y));
    y = integerPart(double(y) - placement.scrollViewOrigin.y());
    result.x = integerPart(double(dto.x) / sx);
    result.y = integerPart(double(y) / sy);
    result.width = integerPart(double(dto.width) / sx);
    result.height = integerPart(double(dto.height) / sy);
    return result;
}

QRectF VORATucaoGeometry::viewRectForTucao(const VORATucao &tucao, const VORATucaoPagePlacement &placement)
{
    if (!placement.isValid())
        return {};
    const qreal sx = placement.imageViewSize.width() / placement.imageSize.width();
    const qreal sy = placement.imageViewSize.height() / placement.imageSize.height();
    return QRectF(tucao.x * sx, tucao.y * sy - placement.contentOffset.y() + placement.scrollViewOrigin.y(),
                  tucao.width * sx, tucao.height * sy);
}

QRectF VORATucaoGeometry::imageRectInView(const VORATucaoPagePlacement &placement)
{
    if (!placement.isValid())
        return {};
    return QRectF(QPointF(placement.scrollViewOrigin.x() - placement.contentOffset.x(),
                          placement.scrollViewOrigin.y() - placement.contentOffset.y()),
                  placement.imageViewSize);
}

qreal VORATucaoGeometry::fittedHeight(const QSizeF &imageSize, qreal viewWidth)
{
    if (imageSize.width() <= 0 || imageSize.height() <= 0 || viewWidth <= 0)
        return 0;
    return viewWidth / (imageSize.width() / imageSize.height());
}

QRectF VORATucaoGeometry::setTucaoDisplayFrameWithView(const VORATucao &tucao, const QSizeF &imageSize,
                                                       qreal viewWidth)
{
    const qreal h = fittedHeight(imageSize, viewWidth);
    if (h <= 0)
        return {};
    const qreal fx = imageSize.width() / viewWidth;
    const qreal fy = imageSize.height() / h;
    return QRectF(tucao.x / fx, tucao.y / fy, tucao.width / fx, tucao.height / fy);
}

int VORATucaoGeometry::tucaoNumPerPage(const QSizeF &imageSize)
{
    if (imageSize.width() <= 0 || imageSize.height() <= 0)
        return 0;
    return int(integerPart(imageSize.height() * imageSize.width() / 3 / 15000));
}
