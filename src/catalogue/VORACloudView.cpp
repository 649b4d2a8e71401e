#include "catalogue/VORACloudView.h"

#include "catalogue/CatalogueLog.h"

#include <QDateTime>
#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>

VORACloudView::VORACloudView(QObject *parent)
    : QObject(parent)
    , m_random(quint32(QDateTime::currentMSecsSinceEpoch()))
{
}

QString VORACloudView::backgroundForLook(int look)
{
    switch (look) {
    case 0:
        return QStringLiteral("cloudbackgroundfour.png");
    case 1:
        return QStringLiteral("cloudbackgroundnine.png");
    case 2:
        return QStringLiteral("cloudbackgroundfourteen.png");
    default:
        return QStringLiteral("cloudbackgroundeight.png");
    }
}

int VORACloudView::fontSizeForLook(int look)
{
    return 12 + qBound(0, look, 3);
}

void VORACloudView::setTagList(const QList<VORACloudTagDTO> &tags)
{
    m_tags = tags;
    drewCloudView();
}

void VORACloudView::setLandscape(bool landscape)
{
    m_landscape = landscape;
    drewCloudView();
}

bool VORACloudView::layOutOnce(QList<Button> &out)
{
    out.clear();
    const int n = int(qMin<qsizetype>(m_tags.size(), maxButtons));
    QList<VORACloudTagDTO> pool = m_tags;
    for (int i = 0; i < n; ++i) {
        const int pick = int(next() % quint32(pool.size()));
        const VORACloudTagDTO tag = pool.takeAt(pick);

        Button b;
        b.tag = firstTag + i;
        b.text = tag.cloudTag;
        const int look = int(next() % 4);
        b.background = backgroundForLook(look);
        b.fontSize = fontSizeForLook(look);
        QFont font(QStringLiteral("Helvetica"));
        font.setPixelSize(b.fontSize);
        const QFontMetrics metrics(font);
        const QRect text = metrics.boundingRect(QRect(0, 0, maxTextWidth, 10000), Qt::TextWordWrap, b.text);
        b.width = qMin(text.width(), maxTextWidth) + 5;
        b.height = text.height() + 5;

        int x = 0;
        do {
            x = int(next() % 450);
        } while (!(x > 8 && x + b.width + 16 < areaWidthValue));
        b.x = x;
        if (i == 0) {
            b.y = int(next() % 90) + 8;
        } else {
            const Button &previous = out.last();
            b.y = previous.y + previous.height + int(next() % 70);
        }
        out.append(b);
    }
    return out.isEmpty() || out.last().y + out.last().height <= heightLimit();
}

void VORACloudView::drewCloudView()
{
    QList<Button> laid;
    m_passes = 0;
    bool fits = false;
    while (!fits && m_passes < maxPasses) {
        ++m_passes;
        fits = layOutOnce(laid);
    }
    if (!fits)
        qCWarning(lcCatalogue) << "tag cloud: no layout fits in" << m_passes << "passes; the last one is kept";
    m_buttons = laid;
    emit buttonsChanged();
}

void VORACloudView::tapButton(int tag)
{
    for (const Button &b : m_buttons) {
        if (b.tag == tag) {
            emit enterComicList(b.text);
            return;
        }
    }
}
