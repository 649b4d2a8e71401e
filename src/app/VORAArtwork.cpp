#include "VORAArtwork.h"

#include "AppLog.h"
#include "core/VORAUtility.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QRadialGradient>
#include <QSaveFile>

#include <cmath>

namespace {

QString baseName(const QString &name)
{
    QString n = name;
    if (n.endsWith(QLatin1String(".png")) || n.endsWith(QLatin1String(".jpg")))
        n.chop(4);
    return n;
}

QFont cjkFont(int pixelSize, bool bold = true)
{
    QFont f(QStringLiteral("Noto Sans CJK SC"));
    f.setPixelSize(pixelSize);
    f.setBold(bold);
    return f;
}

void drawBookStack(QPainter &p, const QRectF &r, const QColor &a, const QColor &b)
{
    // Three tilted comic books, the app's emblem.
    const QColor colours[] = {a, b, a.lighter(130)};
    for (int i = 0; i < 3; ++i) {
        p.save();
        p.translate(r.center());
        p.rotate(-14 + i * 14);
        const QRectF book(-r.width() * 0.22, -r.height() * 0.34, r.width() * 0.44, r.height() * 0.62);
        p.setPen(QPen(QColor(255, 255, 255, 220), r.width() * 0.012));
        p.setBrush(colours[i]);
        p.drawRoundedRect(book, r.width() * 0.03, r.width() * 0.03);
        p.setPen(QPen(QColor(255, 255, 255, 150), r.width() * 0.01));
        p.drawLine(QPointF(book.left() + book.width() * 0.18, book.top() + book.height() * 0.25),
                   QPointF(book.right() - book.width() * 0.18, book.top() + book.height() * 0.25));
        p.drawLine(QPointF(book.left() + book.width() * 0.18, book.top() + book.height() * 0.38),
                   QPointF(book.right() - book.width() * 0.3, book.top() + book.height() * 0.38));
        p.restore();
    }
}

QImage background()
{
    QImage img(1024, 1024, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient g(0, 0, 1024, 1024);
    g.setColorAt(0, QColor(0xFF, 0xF3, 0xE6));
    g.setColorAt(1, QColor(0xFC, 0xE1, 0xD3));
    p.fillRect(img.rect(), g);
    // Soft halftone dots, as on a printed comic page.
    p.setPen(Qt::NoPen);
    for (int y = 0; y < 1024; y += 28) {
        for (int x = (y / 28) % 2 ? 14 : 0; x < 1024; x += 28) {
            const qreal radius = 2.0 + 3.0 * (x + y) / 2048.0;
            p.setBrush(QColor(0xF2, 0x8B, 0x6B, 28));
            p.drawEllipse(QPointF(x, y), radius, radius);
        }
    }
    return img;
}

QImage coverPlaceholder()
{
    QImage img(240, 320, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient g(0, 0, 0, 320);
    g.setColorAt(0, QColor(0xEE, 0xE8, 0xE2));
    g.setColorAt(1, QColor(0xDA, 0xD0, 0xC6));
    p.setBrush(g);
    p.setPen(Qt::NoPen);
    p.drawRoundedRect(QRectF(0, 0, 240, 320), 10, 10);
    drawBookStack(p, QRectF(50, 80, 140, 150), QColor(0xC9, 0xBB, 0xAE), QColor(0xB8, 0xA9, 0x9B));
    p.setPen(QColor(0x9A, 0x8C, 0x80));
    p.setFont(cjkFont(22));
    p.drawText(QRectF(0, 240, 240, 40), Qt::AlignCenter, QStringLiteral("加载中"));
    return img;
}

QImage bannerPlaceholder()
{
    QImage img(900, 300, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient g(0, 0, 900, 300);
    g.setColorAt(0, QColor(0x3B, 0x3F, 0x58));
    g.setColorAt(1, QColor(0x5B, 0x4B, 0x6E));
    p.fillRect(img.rect(), g);
    p.setPen(QPen(QColor(255, 255, 255, 30), 3));
    for (int x = -300; x < 900; x += 40)
        p.drawLine(x, 300, x + 300, 0);
    drawBookStack(p, QRectF(380, 60, 140, 170), QColor(0x8E, 0x86, 0xA8), QColor(0x75, 0x6C, 0x92));
    return img;
}

QImage ribbon(const QString &text, const QColor &colour)
{
    QImage img(96, 40, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    path.moveTo(0, 4);
    path.lineTo(96, 4);
    path.lineTo(86, 20);
    path.lineTo(96, 36);
    path.lineTo(0, 36);
    path.closeSubpath();
    p.fillPath(path.translated(0, 2), QColor(0, 0, 0, 60));
    p.fillPath(path, colour);
    p.setPen(Qt::white);
    p.setFont(cjkFont(20));
    p.drawText(QRectF(0, 4, 86, 32), Qt::AlignCenter, text);
    return img;
}

// The detail page's bookshelf button at twice its 120×46 size: outlined with a
// plus while the comic is not on the shelf, filled with a tick once it is.
QImage shelfButton(bool added, bool pressed)
{
    QImage img(240, 92, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    const QColor accent = pressed ? QColor(0xE0, 0x60, 0x3A) : QColor(0xFF, 0x70, 0x43);
    const QRectF pill(3, 3, 234, 86);
    p.setPen(QPen(accent, 4));
    p.setBrush(added ? accent : (pressed ? QColor(0xFF, 0xE3, 0xD6) : QColor(Qt::white)));
    p.drawRoundedRect(pill, 43, 43);
    const QColor ink = added ? QColor(Qt::white) : accent;
    p.setPen(QPen(ink, 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (added) {
        p.drawPolyline(QPolygonF{QPointF(30, 46), QPointF(40, 57), QPointF(58, 35)});
    } else {
        p.drawLine(QPointF(44, 32), QPointF(44, 60));
        p.drawLine(QPointF(30, 46), QPointF(58, 46));
    }
    p.setFont(cjkFont(30));
    p.drawText(QRectF(66, 0, 160, 92), Qt::AlignVCenter | Qt::AlignLeft,
               added ? QStringLiteral("已在书架") : QStringLiteral("加入书架"));
    return img;
}

QImage welcome(int index, bool portrait)
{
    const QSize size = portrait ? QSize(768, 1024) : QSize(1024, 768);
    QImage img(size, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    static const QColor tops[] = {QColor(0xFF, 0x8A, 0x65), QColor(0x4D, 0xB6, 0xAC), QColor(0x79, 0x86, 0xCB),
                                  QColor(0xF0, 0x62, 0x92), QColor(0xFF, 0xB7, 0x4D)};
    static const char *titles[] = {"海量漫画 随心阅读", "追更不迷路", "吐槽贴在画格上", "离线下载 随时翻阅",
                                   "开始阅读"};
    static const char *subtitles[] = {"热门、新作、连载、完结，一屏看尽", "书架每日检查新章节，更新一目了然",
                                      "在喜欢的画面上留下你的一句话", "整话下载到本机，没有网络也能看",
                                      "轻触进入 Quorin Reader"};
    QLinearGradient g(0, 0, 0, size.height());
    g.setColorAt(0, tops[index]);
    g.setColorAt(1, tops[index].darker(135));
    p.fillRect(img.rect(), g);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 255, 255, 26));
    p.drawEllipse(QPointF(size.width() * 0.85, size.height() * 0.12), size.width() * 0.3, size.width() * 0.3);
    p.drawEllipse(QPointF(size.width() * 0.1, size.height() * 0.9), size.width() * 0.22, size.width() * 0.22);
    const qreal art = qMin(size.width(), size.height()) * 0.42;
    drawBookStack(p, QRectF((size.width() - art) / 2, size.height() * 0.14, art, art), QColor(255, 255, 255, 235),
                  tops[index].lighter(140));
    p.setPen(Qt::white);
    p.setFont(cjkFont(56));
    p.drawText(QRectF(0, size.height() * 0.62, size.width(), 80), Qt::AlignCenter, QString::fromUtf8(titles[index]));
    p.setFont(cjkFont(28, false));
    p.drawText(QRectF(0, size.height() * 0.62 + 90, size.width(), 50), Qt::AlignCenter,
               QString::fromUtf8(subtitles[index]));
    if (index == 4) {
        const QRectF button(size.width() / 2.0 - 150, size.height() * 0.83, 300, 76);
        p.setBrush(Qt::white);
        p.drawRoundedRect(button, 38, 38);
        p.setPen(tops[index].darker(150));
        p.setFont(cjkFont(32));
        p.drawText(button, Qt::AlignCenter, QStringLiteral("立即体验"));
    } else {
        for (int i = 0; i < 5; ++i) {
            p.setPen(Qt::NoPen);
            p.setBrush(i == index ? QColor(Qt::white) : QColor(255, 255, 255, 90));
            p.drawEllipse(QPointF(size.width() / 2.0 + (i - 2) * 28, size.height() * 0.9), 7, 7);
        }
    }
    return img;
}

QImage panelBackground()
{
    QImage img(64, 64, QImage::Format_RGB32);
    img.fill(QColor(0xFF, 0xFC, 0xF8));
    QPainter p(&img);
    p.setPen(QColor(0xF4, 0xEC, 0xE2));
    for (int i = -64; i < 64; i += 8)
        p.drawLine(i, 64, i + 64, 0);
    return img;
}

QImage rule()
{
    QImage img(256, 4, QImage::Format_ARGB32_Premultiplied);
    QPainter p(&img);
    QLinearGradient g(0, 0, 256, 0);
    g.setColorAt(0, QColor(0xFF, 0x70, 0x43));
    g.setColorAt(1, QColor(0xF0, 0x62, 0x92));
    p.fillRect(img.rect(), g);
    return img;
}

// A magnifier in the pen given; the icons on white panels are grey.
void drawMagnifier(QPainter &p, const QColor &colour, qreal width)
{
    p.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawEllipse(QPointF(42, 42), 24, 24);
    p.drawLine(QPointF(60, 60), QPointF(82, 82));
}

QImage icon(const QString &name)
{
    QImage img(96, 96, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(Qt::white, 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    if (name == QLatin1String("btnrecommend")) {
        // A star.
        QPainterPath star;
        for (int i = 0; i < 10; ++i) {
            const qreal r = i % 2 ? 16 : 36;
            const qreal a = M_PI / 2 + i * M_PI / 5;
            const QPointF pt(48 + r * std::cos(a), 50 - r * std::sin(a));
            i ? star.lineTo(pt) : star.moveTo(pt);
        }
        star.closeSubpath();
        p.drawPath(star);
    } else if (name == QLatin1String("btnsetting")) {
        // A gear.
        p.drawEllipse(QPointF(48, 48), 13, 13);
        for (int i = 0; i < 8; ++i) {
            const qreal a = i * M_PI / 4;
            p.drawLine(QPointF(48 + 24 * std::cos(a), 48 + 24 * std::sin(a)),
                       QPointF(48 + 36 * std::cos(a), 48 + 36 * std::sin(a)));
        }
        p.drawEllipse(QPointF(48, 48), 25, 25);
    } else if (name == QLatin1String("btnsort")) {
        // Four tiles: the categories.
        for (int i = 0; i < 4; ++i)
            p.drawRoundedRect(QRectF(16 + (i % 2) * 36, 16 + (i / 2) * 36, 28, 28), 6, 6);
    } else if (name == QLatin1String("btnsearch")) {
        drawMagnifier(p, Qt::white, 7);
    } else if (name == QLatin1String("btnbookshelf")) {
        // Books standing on a shelf.
        p.drawLine(QPointF(12, 80), QPointF(84, 80));
        p.drawRect(QRectF(18, 26, 14, 50));
        p.drawRect(QRectF(38, 18, 14, 58));
        p.save();
        p.translate(66, 78);
        p.rotate(-15);
        p.drawRect(QRectF(-7, -52, 14, 50));
        p.restore();
    } else if (name == QLatin1String("btndownload")) {
        // An arrow into a tray.
        p.drawLine(QPointF(48, 12), QPointF(48, 60));
        p.drawLine(QPointF(30, 44), QPointF(48, 62));
        p.drawLine(QPointF(66, 44), QPointF(48, 62));
        p.drawPolyline(QPolygonF{QPointF(14, 60), QPointF(14, 82), QPointF(82, 82), QPointF(82, 60)});
    } else if (name == QLatin1String("btnuser")) {
        // Head and shoulders.
        p.drawEllipse(QPointF(48, 34), 16, 16);
        p.drawArc(QRectF(18, 56, 60, 50), 0, 180 * 16);
    } else if (name == QLatin1String("readback")) {
        // A chevron to the left.
        p.drawPolyline(QPolygonF{QPointF(58, 18), QPointF(28, 48), QPointF(58, 78)});
    } else if (name == QLatin1String("readbookmarkadd") || name == QLatin1String("readbookmarklist")) {
        // A ribbon; with a plus (add) or behind a second one (the list).
        const QPolygonF ribbon{QPointF(24, 12), QPointF(60, 12), QPointF(60, 84), QPointF(42, 68), QPointF(24, 84),
                               QPointF(24, 12)};
        if (name == QLatin1String("readbookmarklist")) {
            p.drawPolyline(ribbon.translated(-8, 0));
            p.drawPolyline(QPolygonF{QPointF(66, 18), QPointF(74, 18), QPointF(74, 88), QPointF(68, 82)});
        } else {
            p.drawPolyline(ribbon.translated(-8, 0));
            p.drawLine(QPointF(72, 30), QPointF(72, 58));
            p.drawLine(QPointF(58, 44), QPointF(86, 44));
        }
    } else if (name == QLatin1String("readchapterlist")) {
        // Lines of a table of contents.
        for (int i = 0; i < 4; ++i) {
            const qreal y = 22 + i * 17;
            p.drawPoint(QPointF(18, y));
            p.drawLine(QPointF(32, y), QPointF(80, y));
        }
    } else if (name == QLatin1String("searchglass")) {
        drawMagnifier(p, QColor(0xB3, 0xAC, 0xBD), 9); // in the white search field
    } else if (name == QLatin1String("searchcutnotlink")) {
        // The magnifier over a cross: nothing found.
        drawMagnifier(p, QColor(0xC9, 0xBF, 0xB5), 6);
        p.drawLine(QPointF(32, 32), QPointF(52, 52));
        p.drawLine(QPointF(52, 32), QPointF(32, 52));
    } else if (name == QLatin1String("searchhistory")) {
        // A clock, grey: it stands on the white history panel.
        p.setPen(QPen(QColor(0x8A, 0x81, 0x97), 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawEllipse(QPointF(48, 48), 36, 36);
        p.drawLine(QPointF(48, 48), QPointF(48, 24));
        p.drawLine(QPointF(48, 48), QPointF(64, 58));
    } else if (name == QLatin1String("readluminance")) {
        // A sun.
        p.drawEllipse(QPointF(48, 48), 15, 15);
        for (int i = 0; i < 8; ++i) {
            const qreal a = i * M_PI / 4;
            p.drawLine(QPointF(48 + 25 * std::cos(a), 48 + 25 * std::sin(a)),
                       QPointF(48 + 36 * std::cos(a), 48 + 36 * std::sin(a)));
        }
    } else if (name == QLatin1String("readhelp")) {
        // A question mark in a ring.
        p.drawEllipse(QPointF(48, 48), 36, 36);
        p.drawArc(QRectF(34, 24, 28, 26), 200 * 16, -250 * 16);
        p.drawLine(QPointF(48, 50), QPointF(48, 58));
        p.drawPoint(QPointF(48, 71));
    } else if (name == QLatin1String("readmodeportrait") || name == QLatin1String("readmodelandscape")) {
        // The tablet upright or on its side, with a turning arrow.
        const bool upright = name == QLatin1String("readmodeportrait");
        p.drawRoundedRect(upright ? QRectF(30, 12, 36, 56) : QRectF(14, 24, 60, 38), 6, 6);
        p.drawArc(QRectF(18, 44, 60, 44), 200 * 16, 140 * 16);
        p.drawLine(QPointF(73, 70), QPointF(80, 62));
        p.drawLine(QPointF(73, 70), QPointF(64, 66));
    } else {
        drawBookStack(p, QRectF(8, 8, 80, 80), QColor(0xFF, 0x70, 0x43), QColor(0xF0, 0x62, 0x92));
    }
    return img;
}

} // namespace

QStringList VORAArtwork::names()
{
    QStringList list{QStringLiteral("one.jpg"),          QStringLiteral("dcoverdefault.png"),
                     QStringLiteral("pagelistdefaultcover"), QStringLiteral("dujia.png"),
                     QStringLiteral("qianyue.png"),      QStringLiteral("boyupbackground.png"),
                     QStringLiteral("upcommonline.png"), QStringLiteral("btnrecommend.png"),
                     QStringLiteral("btnsetting.png"),   QStringLiteral("applogo.png"),
                     QStringLiteral("btnsort.png"),      QStringLiteral("btnsearch.png"),
                     QStringLiteral("btnbookshelf.png"), QStringLiteral("btndownload.png"),
                     QStringLiteral("btnuser.png"),      QStringLiteral("searchhistory.png"),
                     QStringLiteral("searchglass.png"),  QStringLiteral("searchcutnotlink.png"),
                     // The reader's bars.
                     QStringLiteral("readback.png"),     QStringLiteral("readbookmarkadd.png"),
                     QStringLiteral("readbookmarklist.png"), QStringLiteral("readchapterlist.png"),
                     QStringLiteral("readluminance.png"), QStringLiteral("readhelp.png"),
                     QStringLiteral("readmodeportrait.png"), QStringLiteral("readmodelandscape.png"),
                     // The detail page's bookshelf button, and pressed.
                     QStringLiteral("addbookshelf.png"), QStringLiteral("addbookshelfpressed.png"),
                     QStringLiteral("alreadyaddbookshelf.png"), QStringLiteral("alreadyaddbookshelfpressed.png")};
    for (int i = 0; i < 5; ++i) {
        list.append(QStringLiteral("welcome%1").arg(i));
        list.append(QStringLiteral("uprightwelcome%1").arg(i));
    }
    return list;
}

bool VORAArtwork::isKnown(const QString &name)
{
    return names().contains(name);
}

QString VORAArtwork::filePath(const QString &name)
{
    // Names without an extension are stored as PNG files under the same name.
    QString file = name;
    if (!file.endsWith(QLatin1String(".png")) && !file.endsWith(QLatin1String(".jpg")))
        file += QLatin1String(".png");
    return QDir::cleanPath(VORAUtility::commonCacheDirectory()) + QLatin1Char('/') + file;
}

QImage VORAArtwork::draw(const QString &name)
{
    if (!isKnown(name))
        return {};
    const QString n = baseName(name);
    if (n == QLatin1String("one"))
        return background();
    if (n == QLatin1String("dcoverdefault"))
        return coverPlaceholder();
    if (n == QLatin1String("pagelistdefaultcover"))
        return bannerPlaceholder();
    if (n == QLatin1String("dujia"))
        return ribbon(QStringLiteral("独家"), QColor(0xE5, 0x39, 0x35));
    if (n == QLatin1String("qianyue"))
        return ribbon(QStringLiteral("签约"), QColor(0x1E, 0x88, 0xE5));
    if (n == QLatin1String("boyupbackground"))
        return panelBackground();
    if (n == QLatin1String("upcommonline"))
        return rule();
    if (n.endsWith(QLatin1String("addbookshelf")) || n.endsWith(QLatin1String("addbookshelfpressed")))
        return shelfButton(n.startsWith(QLatin1String("already")), n.endsWith(QLatin1String("pressed")));
    if (n.startsWith(QLatin1String("uprightwelcome")))
        return welcome(n.right(1).toInt(), true);
    if (n.startsWith(QLatin1String("welcome")))
        return welcome(n.right(1).toInt(), false);
    return icon(n);
}

QImage VORAArtwork::image(const QString &name)
{
    if (!isKnown(name))
        return {};
    const QString path = filePath(name);
    if (QFile::exists(path)) {
        QImageReader reader(path);
        QImage img = reader.read();
        if (!img.isNull())
            return img;
        qCWarning(lcApp) << "picture" << path << "unreadable, drawing it again:" << reader.errorString();
    }
    QImage img = draw(name);
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile out(path);
    const char *format = name.endsWith(QLatin1String(".jpg")) ? "JPG" : "PNG";
    if (!out.open(QIODevice::WriteOnly) || !img.save(&out, format) || !out.commit())
        qCWarning(lcApp) << "could not store picture" << path;
    return img;
}
