#pragma once

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QList>
#include <QMutex>
#include <QSize>
#include <QString>

// The decoded page images of the reader, by key, for the image provider
// "readerpage" (image://readerpage/<key>/<tile>). The reading surface puts a
// page's image in when it has been decoded and takes it out when the page
// view goes, so the cache holds the pages of the live page views only (five
// at most per reader).
//
// Decoding (decode()) runs on worker threads; the cache itself is a
// mutex-guarded table any thread may read.
class VORAPageImageCache
{
public:
    // No texture handed to the scene graph is wider or taller than this.
    static constexpr int maxTextureSide = 4096;
    // Pages taller than maxTextureSide are cut into tiles of this height.
    static constexpr int tileHeight = 2048;
    // The most pixels one decoded page may hold (32 MiB at 4 bytes a pixel):
    // bigger pages are decoded scaled down.
    static constexpr qint64 maxDecodedPixels = qint64(2048) * 4096;

    struct Decoded
    {
        QSize sourceSize;     // pixels of the image as stored
        QSize decodedSize;    // pixels of the decoded image (all tiles together)
        QList<QImage> tiles;  // top to bottom, each at most maxTextureSide high
        QString error;        // why nothing was decoded
        bool isNull() const { return tiles.isEmpty(); }
        qint64 byteCount() const;
    };

    static VORAPageImageCache &shared();

    // Decodes the bytes (blocking; call on a worker thread). shownWidth is the
    // widest the page is ever drawn, in device pixels: a page at least twice
    // (four times) as wide is decoded at ½ (¼), the cheap scaled decodes;
    // otherwise full size, then capped by maxTextureSide in width and
    // maxDecodedPixels, and cut into tiles when taller than maxTextureSide.
    static Decoded decode(const QByteArray &bytes, qreal shownWidth);
    // The size decode() asks the reader for, for a stored size.
    static QSize decodeSize(const QSize &sourceSize, qreal shownWidth);

    // Stores a decoded page; returns its new key.
    QString insert(const Decoded &decoded);
    void remove(const QString &key);
    QImage tile(const QString &key, int index) const;
    bool contains(const QString &key) const;
    int count() const;
    qint64 byteCount() const;

private:
    VORAPageImageCache() = default;

    mutable QMutex m_mutex;
    QHash<QString, Decoded> m_entries;
    quint64 m_nextKey = 1;
};
