#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

// The app's own pictures, drawn with QPainter under the names the screens use
// ("one.jpg", "dcoverdefault.png", "dujia.png", "welcome0", …). Drawn once,
// off the main thread, into the common cache directory under that name, and
// read from there afterwards.
class VORAArtwork
{
public:
    static QStringList names();
    static bool isKnown(const QString &name);
    // The picture, from the cache directory when it is there, else drawn and
    // stored. Never call on the main thread. An unknown name gives a null image.
    static QImage image(const QString &name);
    // Draws the picture (no file access).
    static QImage draw(const QString &name);
    static QString filePath(const QString &name);
};
