#include "reader/VORAPageImageProvider.h"

#include "reader/VORAPageImageCache.h"

VORAPageImageProvider::VORAPageImageProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QImage VORAPageImageProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    Q_UNUSED(requestedSize); // tiles are decoded at the size they are drawn
    const qsizetype slash = id.lastIndexOf(QLatin1Char('/'));
    bool ok = false;
    const int tile = slash > 0 ? id.mid(slash + 1).toInt(&ok) : -1;
    QImage image = ok ? VORAPageImageCache::shared().tile(id.left(slash), tile) : QImage();
    if (size)
        *size = image.size();
    return image;
}
