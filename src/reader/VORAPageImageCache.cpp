#include "reader/VORAPageImageCache.h"

#include <QBuffer>
#include <QImageReader>
#include <QMutexLocker>

#include <cmath>

qint64 VORAPageImageCache::Decoded::byteCount() const
{
    qint64 total = 0;
    for (const QImage &tile : tiles)
        total += tile.sizeInBytes();
    return total;
}

VORAPageImageCache &VORAPageImageCache::shared()
{
    static VORAPageImageCache cache;
    return cache;
}

QSize VORAPageImageCache::decodeSize(const QSize &sourceSize, qreal shownWidth)
{
    if (!sourceSize.isValid() || sourceSize.isEmpty())
        return sourceSize;
    QSize target = sourceSize;
    if (shownWidth > 0) {
        for (int div : {4, 2}) {
            if (sourceSize.width() / div >= shownWidth) {
                target = QSize(std::max(1, sourceSize.width() / div), std::max(1, sourceSize.height() / div));
                break;
            }
        }
    }
    if (target.width() > maxTextureSide)
        target = QSize(maxTextureSide, std::max<int>(1, int(qint64(target.height()) * maxTextureSide / target.width())));
    const qint64 pixels = qint64(target.width()) * target.height();
    if (pixels > maxDecodedPixels) {
        const double f = std::sqrt(double(maxDecodedPixels) / double(pixels));
        target = QSize(std::max(1, int(target.width() * f)), std::max(1, int(target.height() * f)));
    }
    return target;
}

VORAPageImageCache::Decoded VORAPageImageCache::decode(const QByteArray &bytes, qreal shownWidth)
{
    Decoded out;
    if (bytes.isEmpty()) {
        out.error = QStringLiteral("no bytes");
        return out;
    }
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    const QSize stored = reader.size();
    if (stored.isValid()) {
        const QSize target = decodeSize(stored, shownWidth);
        if (target != stored)
            reader.setScaledSize(target);
    }
    QImage image = reader.read();
    if (image.isNull()) {
        out.error = reader.errorString();
        return out;
    }
    out.sourceSize = stored.isValid() ? stored : image.size();
    // A format that did not tell its size before decoding still gets the caps.
    const QSize capped = decodeSize(image.size(), 0);
    if (capped != image.size())
        image = image.scaled(capped, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    // The formats the scene graph draws and uploads without converting.
    image = image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                          : QImage::Format_RGB32);
    out.decodedSize = image.size();
    if (image.height() <= maxTextureSide) {
        out.tiles.append(image);
        return out;
    }
    for (int y = 0; y < image.height(); y += tileHeight)
        out.tiles.append(image.copy(0, y, image.width(), std::min(tileHeight, image.height() - y)));
    return out;
}

QString VORAPageImageCache::insert(const Decoded &decoded)
{
    QMutexLocker lock(&m_mutex);
    const QString key = QStringLiteral("p%1").arg(m_nextKey++);
    m_entries.insert(key, decoded);
    return key;
}

void VORAPageImageCache::remove(const QString &key)
{
    QMutexLocker lock(&m_mutex);
    m_entries.remove(key);
}

QImage VORAPageImageCache::tile(const QString &key, int index) const
{
    QMutexLocker lock(&m_mutex);
    const auto it = m_entries.constFind(key);
    if (it == m_entries.constEnd() || index < 0 || index >= it->tiles.size())
        return {};
    return it->tiles.at(index);
}

bool VORAPageImageCache::contains(const QString &key) const
{
    QMutexLocker lock(&m_mutex);
    return m_entries.contains(key);
}

int VORAPageImageCache::count() const
{
    QMutexLocker lock(&m_mutex);
    return int(m_entries.size());
}

qint64 VORAPageImageCache::byteCount() const
{
    QMutexLocker lock(&m_mutex);
    qint64 total = 0;
    for (const Decoded &d : m_entries)
        total += d.byteCount();
    return total;
}
