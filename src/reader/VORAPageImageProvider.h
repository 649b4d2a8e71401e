#pragma once

#include <QQuickImageProvider>

// "image://readerpage/<key>/<tile>": one tile of a page image the reading
// surface has already decoded (VORAPageImageCache). Nothing is read or decoded
// here, only looked up, so the page views load their images synchronously and
// a page decoded ahead of time shows on the first frame it is on screen.
class VORAPageImageProvider : public QQuickImageProvider
{
public:
    static inline const QString providerName = QStringLiteral("readerpage");

    VORAPageImageProvider();
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};
