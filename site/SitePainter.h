#pragma once

#include "SiteCatalogue.h"

#include <QByteArray>
#include <QImage>

// Draws the demo images with QPainter: comic pages (panels, figures, speech
// balloons, title, page number), covers, banner slides and avatars. Pure
// functions of their arguments; safe to call from worker threads. Text is drawn
// only when a QGuiApplication exists (fonts need one).
class SitePainter
{
public:
    static QImage page(const SiteCatalogue::Comic &comic, const SiteCatalogue::Chapter &chapter,
                       const SiteCatalogue::Page &page);
    static QImage cover(const SiteCatalogue::Comic &comic, bool original);
    static QImage slide(const SiteCatalogue::Slide &slide, const SiteCatalogue::Comic *comic);
    static QImage face(qint64 userId);
    // JPEG, PNG or WebP bytes; empty when the format cannot be written.
    static QByteArray encode(const QImage &image, const QByteArray &format);
    static bool canDrawText();
};
