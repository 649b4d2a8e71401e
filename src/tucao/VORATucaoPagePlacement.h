#pragma once

#include <QPointF>
#include <QSizeF>

// Where the current page's image stands on screen when a tucao is placed or
// edited: what the page view tells the tucao code about its zooming view.
//
// - imageViewSize: the bounds of the image view (the image as drawn, in points;
//   at the fitted zoom the page view's width by width / (image width / image
//   height)).
// - imageSize: the page image in pixels.
// - contentOffset: the zooming view's content offset (points scrolled).
// - scrollViewOrigin: the zooming view's frame origin in the page view (a page
//   shorter than the page view is centred vertically, so its y is not 0).
// - surfaceSize: the reading surface the editing layer covers (empty: the
//   tablet's screen of the screen state).
struct VORATucaoPagePlacement
{
    QSizeF imageViewSize;
    QSizeF imageSize;
    QPointF contentOffset;
    QPointF scrollViewOrigin;
    QSizeF surfaceSize;

    bool isValid() const
    {
        return imageViewSize.width() > 0 && imageViewSize.height() > 0 && imageSize.width() > 0
            && imageSize.height() > 0;
    }
};
