#include "SitePainter.h"

#include "SiteRandom.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFont>
#include <QGuiApplication>
#include <QImageWriter>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace {
QFont font(int pixelSize, bool bold = false)
{
    QFont f(QStringLiteral("Noto Sans CJK SC"));
    f.setStyleHint(QFont::SansSerif);
    f.setPixelSize(pixelSize);
    f.setBold(bold);
    return f;
}

QColor hueColor(quint64 salt, int saturation, int value)
{
    return QColor::fromHsv(int(salt % 360), saturation, value);
}

void drawFigure(QPainter &p, const QRectF &panel, SiteRandom &rng)
{
    const qreal scale = qMin(panel.width(), panel.height()) / 300.0;
    const qreal x = panel.left() + panel.width() * (0.2 + 0.6 * double(rng.range(0, 100)) / 100.0);
    const qreal ground = panel.bottom() - 10 * scale;
    const qreal head = 34 * scale;
    p.save();
    p.setPen(QPen(Qt::black, qMax<qreal>(2.0, 3 * scale)));
    p.setBrush(hueColor(rng.next(), 60, 240));
    p.drawEllipse(QPointF(x, ground - 150 * scale), head, head);
    // eyes
    p.setBrush(Qt::black);
    p.drawEllipse(QPointF(x - 11 * scale, ground - 155 * scale), 3 * scale, 5 * scale);
    p.drawEllipse(QPointF(x + 11 * scale, ground - 155 * scale), 3 * scale, 5 * scale);
    p.setBrush(hueColor(rng.next(), 120, 200));
    QPainterPath body;
    body.moveTo(x - 40 * scale, ground);
    body.lineTo(x - 28 * scale, ground - 112 * scale);
    body.lineTo(x + 28 * scale, ground - 112 * scale);
    body.lineTo(x + 40 * scale, ground);
    body.closeSubpath();
    p.drawPath(body);
    p.restore();
}

void drawBalloon(QPainter &p, const QRectF &panel, const QString &text, SiteRandom &rng, bool withText)
{
    const qreal w = qMin(panel.width() * 0.45, 260.0);
    const qreal h = qMin(panel.height() * 0.3, 110.0);
    const qreal x = panel.left() + 14 + double(rng.range(0, qMax<qint64>(1, qint64(panel.width() - w - 28))));
    const qreal y = panel.top() + 14;
    const QRectF r(x, y, w, h);
    p.save();
    p.setPen(QPen(Qt::black, 3));
    p.setBrush(Qt::white);
    QPainterPath tail;
    tail.moveTo(r.center().x() - 12, r.bottom() - 6);
    tail.lineTo(r.center().x() + 20, r.bottom() + 34);
    tail.lineTo(r.center().x() + 14, r.bottom() - 6);
    QPainterPath balloon;
    balloon.addEllipse(r);
    p.drawPath(balloon.united(tail));
    if (withText) {
        p.setFont(font(int(qBound<qreal>(16, h / 4, 30))));
        p.setPen(Qt::black);
        p.drawText(r.adjusted(12, 8, -12, -8), Qt::AlignCenter | Qt::TextWordWrap, text);
    }
    p.restore();
}

void drawPanel(QPainter &p, const QRectF &panel, SiteRandom &rng, const QStringList &lines, int &lineIndex,
               bool withText)
{
    QLinearGradient sky(panel.topLeft(), panel.bottomLeft());
    sky.setColorAt(0, hueColor(rng.next(), 40, 250));
    sky.setColorAt(1, hueColor(rng.next(), 70, 210));
    p.fillRect(panel, sky);
    // Background: a horizon and a few buildings or hills.
    p.save();
    p.setClipRect(panel);
    p.setPen(QPen(QColor(60, 60, 60), 2));
    const qreal horizon = panel.top() + panel.height() * 0.62;
    p.drawLine(QPointF(panel.left(), horizon), QPointF(panel.right(), horizon));
    const int blocks = int(rng.range(2, 5));
    for (int i = 0; i < blocks; ++i) {
        const qreal bw = panel.width() / (blocks + 1);
        const qreal bh = panel.height() * (0.1 + 0.25 * double(rng.range(0, 100)) / 100.0);
        p.setBrush(QColor(255, 255, 255, 120));
        p.drawRect(QRectF(panel.left() + i * bw * 1.1 + 8, horizon - bh, bw * 0.8, bh));
    }
    // Speed lines in some panels.
    if (rng.chance(30)) {
        p.setPen(QPen(QColor(0, 0, 0, 90), 1));
        for (int i = 0; i < 24; ++i) {
            const qreal a = i * 15.0 * M_PI / 180.0;
            const QPointF c = panel.center();
            const qreal r = qMax(panel.width(), panel.height());
            p.drawLine(c + QPointF(std::cos(a) * r * 0.3, std::sin(a) * r * 0.3),
                       c + QPointF(std::cos(a) * r, std::sin(a) * r));
        }
    }
    const int figures = int(rng.range(1, 2));
    for (int i = 0; i < figures; ++i)
        drawFigure(p, panel, rng);
    if (rng.chance(80) && !lines.isEmpty())
        drawBalloon(p, panel, lines.at(lineIndex++ % lines.size()), rng, withText);
    p.restore();
    p.setPen(QPen(Qt::black, 5));
    p.setBrush(Qt::NoBrush);
    p.drawRect(panel);
}

void drawPageBody(QPainter &p, const QRectF &area, quint64 salt, int pageNumber, bool withText, const QString &title)
{
    SiteRandom rng(salt);
    const QStringList lines = SiteCatalogue::serifLines(salt, 8);
    int lineIndex = 0;
    const qreal gutter = 18;
    qreal top = area.top();
    if (!title.isEmpty()) {
        const QRectF titleBox(area.left(), top, area.width(), 150);
        p.fillRect(titleBox, QColor(20, 20, 30));
        if (withText) {
            p.setPen(Qt::white);
            p.setFont(font(54, true));
            p.drawText(titleBox, Qt::AlignCenter | Qt::TextWordWrap, title);
        }
        top += 150 + gutter;
    }
    const qreal footer = 46;
    const qreal available = area.bottom() - footer - top;
    const int rows = qMax(1, int(available / (area.width() > 1000 ? 340 : (available > 2000 ? 620 : 330))));
    const qreal rowHeight = (available - gutter * (rows - 1)) / rows;
    for (int r = 0; r < rows; ++r) {
        const qreal y = top + r * (rowHeight + gutter);
        const int cols = int(rng.range(1, area.width() > 1000 ? 3 : 2));
        qreal x = area.left();
        const qreal totalW = area.width() - gutter * (cols - 1);
        for (int c = 0; c < cols; ++c) {
            const qreal w = c == cols - 1 ? area.right() - x : totalW / cols * (0.8 + 0.4 * double(rng.range(0, 100)) / 100.0);
            drawPanel(p, QRectF(x, y, w, rowHeight), rng, lines, lineIndex, withText);
            x += w + gutter;
        }
    }
    if (withText) {
        p.setPen(Qt::black);
        p.setFont(font(28, true));
        p.drawText(QRectF(area.left(), area.bottom() - footer + 6, area.width(), footer - 6), Qt::AlignCenter,
                   QStringLiteral("- %1 -").arg(pageNumber));
    }
}
}

bool SitePainter::canDrawText()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr;
}

QImage SitePainter::page(const SiteCatalogue::Comic &comic, const SiteCatalogue::Chapter &chapter,
                         const SiteCatalogue::Page &pg)
{
    QImage image(pg.width, pg.height, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    const bool text = canDrawText();
    const quint64 salt = quint64(pg.id) * 2654435761ull;
    const QString title = pg.index == 0 ? comic.name + QLatin1Char('\n') + chapter.name : QString();
    const int margin = 34;
    if (pg.width > pg.height && pg.width >= 1400) {
        // A double-page spread: two pages side by side with a gutter shadow.
        const qreal half = pg.width / 2.0;
        drawPageBody(p, QRectF(margin, margin, half - 1.5 * margin, pg.height - 2 * margin), salt, pg.index + 1, text, title);
        drawPageBody(p, QRectF(half + margin / 2.0, margin, half - 1.5 * margin, pg.height - 2 * margin), salt + 1,
                     pg.index + 1, text, QString());
        QLinearGradient shade(half - 20, 0, half + 20, 0);
        shade.setColorAt(0, QColor(0, 0, 0, 0));
        shade.setColorAt(0.5, QColor(0, 0, 0, 60));
        shade.setColorAt(1, QColor(0, 0, 0, 0));
        p.fillRect(QRectF(half - 20, 0, 40, pg.height), shade);
    } else {
        drawPageBody(p, QRectF(margin, margin, pg.width - 2 * margin, pg.height - 2 * margin), salt, pg.index + 1, text,
                     title);
    }
    if (text) {
        p.setPen(QColor(120, 120, 120));
        p.setFont(font(16));
        p.drawText(QRectF(0, pg.height - 30, pg.width - 20, 26), Qt::AlignRight | Qt::AlignVCenter,
                   QStringLiteral("%1 · %2 · Quorin").arg(comic.name, chapter.name));
    }
    return image;
}

QImage SitePainter::cover(const SiteCatalogue::Comic &comic, bool original)
{
    const int w = original ? 600 : 240;
    const int h = original ? 800 : 320;
    QImage image(w, h, QImage::Format_RGB32);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient g(0, 0, w, h);
    g.setColorAt(0, hueColor(quint64(comic.id) * 37, 150, 240));
    g.setColorAt(1, hueColor(quint64(comic.id) * 37 + 60, 200, 120));
    p.fillRect(image.rect(), g);
    SiteRandom rng(quint64(comic.id) * 7919);
    const qreal s = w / 240.0;
    drawFigure(p, QRectF(20 * s, 90 * s, 200 * s, 200 * s), rng);
    p.setPen(QPen(Qt::white, 4 * s));
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(8 * s, 8 * s, w - 16 * s, h - 16 * s));
    if (canDrawText()) {
        p.fillRect(QRectF(0, 14 * s, w, 64 * s), QColor(0, 0, 0, 140));
        p.setPen(Qt::white);
        p.setFont(font(int(30 * s), true));
        p.drawText(QRectF(0, 14 * s, w, 64 * s), Qt::AlignCenter, comic.name);
        p.setFont(font(int(16 * s)));
        p.drawText(QRectF(0, h - 44 * s, w, 30 * s), Qt::AlignCenter, comic.author);
    }
    return image;
}

QImage SitePainter::slide(const SiteCatalogue::Slide &slide, const SiteCatalogue::Comic *comic)
{
    QImage image(1024, 400, QImage::Format_RGB32);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient g(0, 0, 1024, 0);
    g.setColorAt(0, hueColor(quint64(slide.number) * 71, 180, 200));
    g.setColorAt(1, hueColor(quint64(slide.number) * 71 + 90, 120, 250));
    p.fillRect(image.rect(), g);
    SiteRandom rng(quint64(slide.number) * 104729);
    for (int i = 0; i < 3; ++i)
        drawFigure(p, QRectF(560 + i * 140, 60, 180, 330), rng);
    if (canDrawText()) {
        p.setPen(Qt::white);
        p.setFont(font(48, true));
        p.drawText(QRectF(40, 80, 560, 160), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap,
                   comic ? comic->name : slide.title);
        p.setFont(font(26));
        p.drawText(QRectF(40, 250, 560, 80), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, slide.title);
    }
    return image;
}

QImage SitePainter::face(qint64 userId)
{
    QImage image(120, 120, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(hueColor(quint64(userId) * 97, 120, 230));
    p.drawEllipse(QRectF(2, 2, 116, 116));
    p.setBrush(QColor(255, 230, 210));
    p.drawEllipse(QRectF(30, 24, 60, 64));
    p.setBrush(Qt::black);
    p.drawEllipse(QPointF(48, 54), 4, 6);
    p.drawEllipse(QPointF(72, 54), 4, 6);
    p.setPen(QPen(Qt::black, 3));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(46, 60, 28, 16), 200 * 16, 140 * 16);
    return image;
}

QByteArray SitePainter::encode(const QImage &image, const QByteArray &format)
{
    QByteArray out;
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    const QByteArray fmt = format == "jpg" ? QByteArray("jpeg") : format;
    QImageWriter writer(&buffer, fmt);
    if (fmt == "jpeg")
        writer.setQuality(85);
    else if (fmt == "webp")
        writer.setQuality(80);
    if (!writer.write(image))
        return {};
    return out;
}
