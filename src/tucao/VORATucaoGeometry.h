#pragma once

#include "net/VORATucao.h"
#include "net/VORATucaoDTO.h"
#include "tucao/VORATucaoPagePlacement.h"

#include <QRectF>
#include <QSizeF>

// The three measures that tie a tucao to its page image: the conversion of a
// rectangle drawn on screen into the page pixels the site stores, the frame a
// stored tucao takes over the fitted image, and the size of one group of tucao
// for stepping through them.
class VORATucaoGeometry
{
public:
    VORATucaoGeometry() = delete;

    // The record's rectangle, given in points of the page view, in pixels of
    // the page image (getNewTucaoDTO):
    //   sx = image view width / image width, sy = image view height / image height;
    //   y = int(content offset y + y); y = int(y - zooming view origin y);
    //   x = int(x / sx), y = int(y / sy), width = int(width / sx), height = int(height / sy).
    // The horizontal content offset is not added: a page scrolled sideways
    // stores the rectangle as if it were not. Every other field is kept. A
    // placement without sizes leaves the rectangle as it is.
    static VORATucaoDTO getNewTucaoDTO(const VORATucaoDTO &dto, const VORATucaoPagePlacement &placement);

    // Where a stored tucao stands in the page view's points: the inverse of
    // getNewTucaoDTO (x * sx, y * sy - content offset y + zooming view origin
    // y, width * sx, height * sy). Empty for a placement without sizes.
    static QRectF viewRectForTucao(const VORATucao &tucao, const VORATucaoPagePlacement &placement);

    // The part of the page view the image covers (its visible rectangle in the
    // page view's points, before clipping to the page view).
    static QRectF imageRectInView(const VORATucaoPagePlacement &placement);

    // The frame of a stored tucao over the image drawn at the page view's
    // width W (setTucaoDisplayFrameWithView): H = W / (image width / image
    // height), fx = image width / W, fy = image height / H, frame = (x / fx,
    // y / fy, width / fx, height / fy) in the image container's coordinates at
    // zoom 1. Empty when a size is missing.
    static QRectF setTucaoDisplayFrameWithView(const VORATucao &tucao, const QSizeF &imageSize,
                                               qreal viewWidth);

    // Height of the image drawn at viewWidth: viewWidth / (width / height); 0
    // when a size is missing.
    static qreal fittedHeight(const QSizeF &imageSize, qreal viewWidth);

    // Size of one group of tucao: int(height * width / 3 / 15000), so an image
    // under 45,000 square pixels has groups of 0.
    static int tucaoNumPerPage(const QSizeF &imageSize);
};
