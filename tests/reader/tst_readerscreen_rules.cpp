// The reader screen's rules without a window: which page views exist, the
// overscroll into another chapter, the tap zones, fitting and zooming a page,
// decoding (tiles, scaled decodes, damaged bytes) and the bounded image
// cache, the page slider; and the controller against the reference site:
// chapter boundaries, turning into the next and previous chapter, bookmarks,
// and the position saved on leaving.

#include "CatalogueTestSupport.h"
#include "../tucao/TucaoTestSupport.h"
#include "catalogue/VORAChapterPurchase.h"
#include "core/VORAUserConfig.h"
#include "reader/VORAComicViewManager.h"
#include "reader/VORAPageImageCache.h"
#include "reader/VORAPageImageProvider.h"
#include "reader/VORAPageViewListModel.h"
#include "reader/VORAPictureImageView.h"
#include "reader/VORAPictureScrollView.h"
#include "reader/VORAReadComicManager.h"
#include "reader/VORAReadHomePageViewController.h"
#include "store/VORADatabaseManager.h"
#include "store/VORAPersistenceManager.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QStyleHints>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

namespace {
using TapAction = VORAPictureImageView::TapAction;

QByteArray encodedPage(int width, int height, const char *format = "JPG")
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(QColor(0xFF, 0xF3, 0xE6));
    QPainter p(&image);
    p.fillRect(QRect(0, 0, width, height / 3), QColor(0x2E, 0x30, 0x47));
    p.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

// The manager with the views of one chapter, resting on a page.
std::unique_ptr<VORAComicViewManager> stripAt(int count, int page, QSizeF size = QSizeF(1024, 768))
{
    auto manager = std::make_unique<VORAComicViewManager>();
    manager->setViewSize(size.width(), size.height());
    manager->reloadWithPageCount(count);
    manager->moveToPhotoAtIndex(page, false);
    return manager;
}

// Delivers a page and waits until it is shown (or failed).
bool deliver(VORAComicViewManager &manager, int index, const QByteArray &bytes,
             const std::optional<QList<VORATucao>> &tucao = std::nullopt)
{
    manager.currentDisplayImage(bytes, tucao, index);
    return QTest::qWaitFor([&]() {
        VORAPictureImageView *view = manager.pageViewAt(index);
        return manager.pendingDecodes() == 0 && view && view->state() != VORAPictureImageView::Loading;
    }, 10000);
}
} // namespace

class TestReaderScreenRules : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void pageViewsAroundTheCurrentPage_data();
    void pageViewsAroundTheCurrentPage();
    void overscrollAsksForAnotherChapter_data();
    void overscrollAsksForAnotherChapter();
    void releaseSnapsToOnePage_data();
    void releaseSnapsToOnePage();
    void tapZones_data();
    void tapZones();
    void tapsOnTheStrip();
    void readModesInTheWindow_data();
    void readModesInTheWindow();
    void fittingPages_data();
    void fittingPages();
    void zoomLimitsAndDoubleTap_data();
    void zoomLimitsAndDoubleTap();
    void destroyedWhileZooming();
    void rotationKeepsAZoomedPage();
    void decodeSizes();
    void decodingTilesAndDamagedBytes();
    void imagesStayBoundedOverALongChapter();
    void failedPageAndTheFailureView();
    void sliderRounding();

    void chapterBoundariesAndTurningChapters();
    void bookmarkTwiceThenTheBackground();
    void aRefusedChapterLeavesTheOneOnScreen();

private:
    CatalogueTestEnvironment m_env;
    std::unique_ptr<NotificationRecorder> m_indicators; // text-only indicators
};

void TestReaderScreenRules::initTestCase()
{
    QVERIFY(m_env.start());
}

void TestReaderScreenRules::init()
{
    m_indicators = std::make_unique<NotificationRecorder>(textPanelName());
    m_env.site->faults().clear();
}

// --- The strip ---

void TestReaderScreenRules::pageViewsAroundTheCurrentPage_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("20 pages at 10") << 20 << 10 << 10 << QList<int>{8, 9, 10, 11, 12};
    QTest::newRow("10 -> 11 drops 8") << 20 << 10 << 11 << QList<int>{9, 10, 11, 12, 13};
    QTest::newRow("jump 3 -> 15") << 20 << 3 << 15 << QList<int>{13, 14, 15, 16, 17};
    QTest::newRow("first page") << 20 << 5 << 0 << QList<int>{0, 1, 2};
    QTest::newRow("last page") << 20 << 5 << 19 << QList<int>{17, 18, 19};
    QTest::newRow("one page") << 1 << 0 << 0 << QList<int>{0};
    QTest::newRow("outside stays") << 4 << 1 << 7 << QList<int>{0, 1, 2, 3};
}

void TestReaderScreenRules::pageViewsAroundTheCurrentPage()
{
    QFETCH(int, count);
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QList<int>, expected);
    auto manager = stripAt(count, from);
    // A zoomed neighbour of the new page comes back at zoom 1.
    VORAPictureImageView *neighbour = manager->pageViewAt(to + 1);
    if (neighbour)
        neighbour->scrollView()->setZoomScale(1.5, false);
    QSignalSpy asked(manager.get(), &VORAComicViewManager::requestPageWithIndex);
    manager->moveToPhotoAtIndex(to, false);
    QCOMPARE(manager->existingPageIndexes(), expected);
    const bool valid = to >= 0 && to < count;
    QCOMPARE(asked.count(), valid ? 1 : 0);
    if (valid) {
        QCOMPARE(asked.first().first().toInt(), to);
        QCOMPARE(manager->pageIndex(), to);
        for (int i : expected)
            QVERIFY(manager->pageViewAt(i)->currentImagePageIndex() == to);
    }
    if (neighbour && manager->pageViewAt(to + 1) == neighbour)
        QCOMPARE(neighbour->scrollView()->zoomScale(), 1.0);
    // Frames: page k at k × width, width − 20 wide.
    for (int i : expected)
        QCOMPARE(manager->pageViewAt(i)->frame(), QRectF(i * 1024.0, 0, 1004, 768));
}

void TestReaderScreenRules::overscrollAsksForAnotherChapter_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("page");
    QTest::addColumn<qreal>("offset");
    QTest::addColumn<int>("asked"); // -2: nothing asked
    const qreal w = 1024, t = 1024.0 / 12;
    QTest::newRow("first page, at the threshold") << 20 << 0 << -t << -2;
    QTest::newRow("first page, past it") << 20 << 0 << -t - 0.5 << -1;
    QTest::newRow("last page, at the threshold") << 20 << 19 << 19 * w + t << -2;
    QTest::newRow("last page, past it") << 20 << 19 << 19 * w + t + 0.5 << 20;
    QTest::newRow("one page, back") << 1 << 0 << -t - 1 << -1;
    QTest::newRow("one page, on") << 1 << 0 << t + 1 << 1;
    QTest::newRow("one page, still") << 1 << 0 << 0.0 << -2;
    QTest::newRow("middle page") << 20 << 10 << 10 * w + 300 << -2;
}

void TestReaderScreenRules::overscrollAsksForAnotherChapter()
{
    QFETCH(int, count);
    QFETCH(int, page);
    QFETCH(qreal, offset);
    QFETCH(int, asked);
    auto manager = stripAt(count, page);
    QSignalSpy requests(manager.get(), &VORAComicViewManager::requestPageWithIndex);
    const bool other = manager->scrollViewWillBeginDecelerating(offset);
    QCOMPARE(other, asked != -2);
    QCOMPARE(manager->canMoveToRequest(), asked != -2);
    QCOMPARE(requests.count(), asked == -2 ? 0 : 1);
    if (asked != -2)
        QCOMPARE(requests.first().first().toInt(), asked);
    // The strip coming to rest after an overscroll does not also move.
    requests.clear();
    manager->scrollViewDidEndDecelerating(page * 1024.0 + (asked == -2 ? 0 : 1024.0 * (asked < page ? -1 : 1)));
    QVERIFY(!manager->canMoveToRequest());
    if (asked != -2) {
        QCOMPARE(manager->pageIndex(), page);
        QCOMPARE(requests.count(), 0);
    }
}

void TestReaderScreenRules::releaseSnapsToOnePage_data()
{
    QTest::addColumn<qreal>("pulled"); // share of a page from page 5
    QTest::addColumn<qreal>("velocity");
    QTest::addColumn<int>("page");
    QTest::newRow("a little") << 0.1 << 0.0 << 5;
    QTest::newRow("past the share") << 0.2 << 0.0 << 6;
    QTest::newRow("back past the share") << -0.2 << 0.0 << 4;
    QTest::newRow("quick flick") << 0.05 << 900.0 << 6;
    QTest::newRow("quick flick back") << -0.05 << -900.0 << 4;
    QTest::newRow("flick against the pull") << 0.05 << -900.0 << 5;
    QTest::newRow("three pages at once") << 3.0 << 5000.0 << 6;
}

void TestReaderScreenRules::releaseSnapsToOnePage()
{
    QFETCH(qreal, pulled);
    QFETCH(qreal, velocity);
    QFETCH(int, page);
    auto manager = stripAt(20, 5);
    QCOMPARE(manager->pageForRelease((5 + pulled) * 1024, velocity), page);
    // At rest on the page: it becomes current and is asked for.
    QSignalSpy asked(manager.get(), &VORAComicViewManager::requestPageWithIndex);
    manager->scrollViewDidEndDecelerating(page * 1024.0);
    QCOMPARE(manager->pageIndex(), page);
    QCOMPARE(asked.count(), page == 5 ? 0 : 1);
}

// --- Taps ---

void TestReaderScreenRules::tapZones_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("landscape");
    QTest::addColumn<bool>("zoomed");
    QTest::addColumn<QSizeF>("surface");
    QTest::addColumn<int>("action");
    const QSizeF tablet(1024, 768), desktop(1366, 768);
    QTest::newRow("right edge of the middle") << QPointF(824, 300) << true << false << tablet << int(TapAction::TapToggleMenu);
    QTest::newRow("right zone") << QPointF(824.5, 300) << true << false << tablet << int(TapAction::TapScrollDown);
    QTest::newRow("left edge of the middle") << QPointF(200, 300) << true << false << tablet << int(TapAction::TapToggleMenu);
    QTest::newRow("left zone") << QPointF(199.5, 300) << true << false << tablet << int(TapAction::TapScrollUp);
    QTest::newRow("band top") << QPointF(500, 60) << true << false << tablet << int(TapAction::TapToggleMenu);
    QTest::newRow("above the band") << QPointF(500, 59.5) << true << false << tablet << int(TapAction::TapNothing);
    QTest::newRow("band bottom") << QPointF(500, 658) << true << false << tablet << int(TapAction::TapToggleMenu);
    QTest::newRow("below the band") << QPointF(500, 658.5) << true << false << tablet << int(TapAction::TapNothing);
    QTest::newRow("right zone low") << QPointF(900, 740) << true << false << tablet << int(TapAction::TapScrollDown);
    QTest::newRow("portrait right") << QPointF(700, 10) << false << false << tablet << int(TapAction::TapToggleMenu);
    QTest::newRow("zoomed landscape right") << QPointF(900, 300) << true << true << tablet << int(TapAction::TapToggleMenu);
    // A wider surface keeps the zones' share of it (1366: 266.8 and 1099.2).
    QTest::newRow("wide: middle at 1000") << QPointF(1000, 300) << true << false << desktop << int(TapAction::TapToggleMenu);
    QTest::newRow("wide: right zone") << QPointF(1100, 300) << true << false << desktop << int(TapAction::TapScrollDown);
    QTest::newRow("wide: left zone at 250") << QPointF(250, 300) << true << false << desktop << int(TapAction::TapScrollUp);
}

void TestReaderScreenRules::tapZones()
{
    QFETCH(QPointF, point);
    QFETCH(bool, landscape);
    QFETCH(bool, zoomed);
    QFETCH(QSizeF, surface);
    QFETCH(int, action);
    QCOMPARE(int(VORAPictureImageView::tapActionAt(point, landscape, zoomed, surface)), action);
}

void TestReaderScreenRules::tapsOnTheStrip()
{
    // Landscape: a tall page (800 × 1130 drawn 1004 wide, 1418 high).
    auto manager = stripAt(3, 0);
    QVERIFY(deliver(*manager, 0, encodedPage(800, 1130)));
    VORAPictureScrollView *sv = manager->pageViewAt(0)->scrollView();
    const qreal bottom = sv->contentHeight() - 768;
    QVERIFY(bottom > 600 && bottom < 768);

    // The right zone scrolls down, as far as the page goes; then it turns the page.
    manager->singleTap(0, 900, 300);
    QCOMPARE(sv->targetContentOffset(), QPointF(0, bottom));
    QTRY_VERIFY(!sv->isAnimating());
    QSignalSpy asked(manager.get(), &VORAComicViewManager::requestPageWithIndex);
    manager->singleTap(0, 900, 300);
    QCOMPARE(manager->pageIndex(), 1);
    QCOMPARE(asked.count(), 1);
    manager->moveToPhotoAtIndex(0, false);
    manager->singleTap(0, 100, 300);
    QCOMPARE(sv->targetContentOffset(), QPointF(0, 0));

    // The middle toggles the menu once a double tap can no longer come (at
    // least 0.1 s later); a double tap cancels it and zooms.
    QVERIFY(manager->toggleMenuDelay() >= std::max(100, QGuiApplication::styleHints()->mouseDoubleClickInterval()));
    QSignalSpy toggled(manager.get(), &VORAComicViewManager::toggleMenuRequested);
    manager->singleTap(0, 500, 300);
    QVERIFY(manager->toggleMenuPending());
    QTRY_COMPARE(toggled.count(), 1);
    manager->singleTap(0, 500, 300);
    manager->doubleTap(0, 500, 300);
    QVERIFY(!manager->toggleMenuPending());
    QTRY_VERIFY(!sv->isAnimating());
    QCOMPARE(toggled.count(), 1);
    // Zoomed: a tap anywhere toggles; a second double tap resets the zoom.
    manager->singleTap(0, 900, 300);
    QVERIFY(manager->toggleMenuPending());
    manager->doubleTap(0, 900, 300);
    QCOMPARE(sv->targetZoomScale(), 1.0);
}

void TestReaderScreenRules::readModesInTheWindow_data()
{
    QTest::addColumn<QSizeF>("window");
    QTest::addColumn<bool>("portraitReading");
    QTest::addColumn<QRectF>("surface");
    QTest::addColumn<int>("screenState");
    QTest::newRow("portrait in 1366x768") << QSizeF(1366, 768) << true << QRectF(395, 0, 576, 768) << 0;
    QTest::newRow("portrait in a portrait window") << QSizeF(768, 1024) << true << QRectF(0, 0, 768, 1024) << 0;
    QTest::newRow("landscape in 1366x768") << QSizeF(1366, 768) << false << QRectF(0, 0, 1366, 768) << 1;
    QTest::newRow("landscape in a portrait window") << QSizeF(768, 1024) << false << QRectF(0, 224, 768, 576) << 1;
}

void TestReaderScreenRules::readModesInTheWindow()
{
    QFETCH(QSizeF, window);
    QFETCH(bool, portraitReading);
    QFETCH(QRectF, surface);
    QFETCH(int, screenState);
    VORAReadHomePageViewController reader;
    VORAUserConfig::shareUserConfigInstance()->setIsVerticalScreen(!portraitReading);
    reader.applyReadMode();
    VORAComicViewManager *manager = reader.comicViewManager();
    manager->setWindowSize(window.width(), window.height());
    // Switched from the other mode: the surface takes the new shape in the same window.
    portraitReading ? reader.swtichScreenToportraitScreen() : reader.swtichScreenToLandscape();
    QCOMPARE(manager->surfaceRect(), surface);
    QCOMPARE(manager->viewSize(), surface.size());
    QCOMPARE(reader.getCurrentScreenState(), screenState);
}

// --- Fitting and zoom ---

void TestReaderScreenRules::fittingPages_data()
{
    QTest::addColumn<QSizeF>("strip");
    QTest::addColumn<QSize>("photo");
    QTest::addColumn<QSizeF>("drawn");
    QTest::addColumn<bool>("scrolls");
    QTest::newRow("wide page in portrait") << QSizeF(768, 1024) << QSize(1600, 1130) << QSizeF(748, 748 * 1130.0 / 1600) << false;
    QTest::newRow("tall page in landscape") << QSizeF(1024, 768) << QSize(800, 1130) << QSizeF(1004, 1004 * 1130.0 / 800) << true;
    QTest::newRow("strip page in portrait") << QSizeF(768, 1024) << QSize(720, 4600) << QSizeF(748, 748 * 4600.0 / 720) << true;
    QTest::newRow("no size yet") << QSizeF(768, 1024) << QSize(0, 0) << QSizeF(748, 1024) << false;
}

void TestReaderScreenRules::fittingPages()
{
    QFETCH(QSizeF, strip);
    QFETCH(QSize, photo);
    QFETCH(QSizeF, drawn);
    QFETCH(bool, scrolls);
    const QSizeF pageView(strip.width() - 20, strip.height());
    const QSizeF fitted = VORAPictureImageView::fittedImageSize(photo, pageView);
    QCOMPARE(fitted, drawn);
    if (photo.isEmpty())
        return;
    // The same through a delivered page: zoom 1, at the top, centred when short.
    auto manager = stripAt(1, 0, strip);
    QVERIFY(deliver(*manager, 0, encodedPage(photo.width(), photo.height())));
    VORAPictureScrollView *sv = manager->pageViewAt(0)->scrollView();
    QCOMPARE(sv->zoomScale(), 1.0);
    QCOMPARE(sv->imageSize(), drawn);
    QCOMPARE(sv->contentOffset(), QPointF(0, 0));
    QCOMPARE(sv->contentHeight() > pageView.height(), scrolls);
    QCOMPARE(sv->containerY(), scrolls ? 0.0 : (pageView.height() - drawn.height()) / 2);
    QCOMPARE(sv->containerX(), 0.0);
}

void TestReaderScreenRules::zoomLimitsAndDoubleTap_data()
{
    QTest::addColumn<QPointF>("tap");       // viewport point
    QTest::addColumn<QPointF>("offset");    // content offset at 1.64: the tap in the middle of the zoomed view
    const qreal w = 1004 / 1.64, h = 768 / 1.64;
    QTest::newRow("middle") << QPointF(502, 300) << QPointF((502 - w / 2) * 1.64, (300 - h / 2) * 1.64);
    QTest::newRow("top left corner") << QPointF(10, 10) << QPointF(0, 0);
    QTest::newRow("bottom right corner") << QPointF(1000, 760) << QPointF(1004 * 1.64 - 1004, (760 - h / 2) * 1.64);
}

void TestReaderScreenRules::zoomLimitsAndDoubleTap()
{
    QFETCH(QPointF, tap);
    QFETCH(QPointF, offset);
    auto manager = stripAt(1, 0);
    QVERIFY(deliver(*manager, 0, encodedPage(800, 1130)));
    VORAPictureScrollView *sv = manager->pageViewAt(0)->scrollView();
    manager->doubleTap(0, tap.x(), tap.y());
    QTRY_VERIFY(!sv->isAnimating());
    QCOMPARE(sv->zoomScale(), 1.64);
    QCOMPARE(sv->contentOffset(), offset);

    // The limits: 0.6 (single precision) and 1.64; a pinch may overshoot and springs back.
    sv->setZoomScale(5, false);
    QCOMPARE(sv->zoomScale(), 1.64);
    sv->setZoomScale(0.1, false);
    QCOMPARE(sv->zoomScale(), qreal(0.6f));
    QVERIFY(sv->containerX() > 0); // zoomed out: centred
    sv->zoomAround(3.0, 500, 400);
    QVERIFY(sv->zoomScale() > 1.64 && sv->zoomScale() < 2.0);
    sv->endZoomGesture();
    QCOMPARE(sv->targetZoomScale(), 1.64);
    QTRY_VERIFY(!sv->isAnimating());
    sv->zoomAround(0.1, 500, 400);
    QVERIFY(sv->zoomScale() < 0.6);
    sv->endZoomGesture();
    QTRY_COMPARE(sv->zoomScale(), qreal(0.6f));
}

void TestReaderScreenRules::destroyedWhileZooming()
{
    auto *sv = new VORAPictureScrollView;
    sv->setBoundsSize(QSizeF(1004, 768));
    sv->setImageSize(QSizeF(1004, 1418));
    sv->setZoomScale(1.5, true);
    QVERIFY(sv->isAnimating());
    QSignalSpy heard(sv, &VORAPictureScrollView::animatingChanged);
    delete sv;
    QCOMPARE(heard.count(), 0);
}

void TestReaderScreenRules::rotationKeepsAZoomedPage()
{
    auto manager = stripAt(3, 1);
    QVERIFY(deliver(*manager, 0, encodedPage(800, 1130)));
    QVERIFY(deliver(*manager, 1, encodedPage(800, 1130)));
    VORAPictureScrollView *zoomed = manager->pageViewAt(1)->scrollView();
    VORAPictureScrollView *plain = manager->pageViewAt(0)->scrollView();
    zoomed->setZoomScale(1.5, false);
    plain->setContentOffset(QPointF(0, 300), false);
    manager->setViewSize(768, 1024);
    QCOMPARE(manager->pageViewAt(1)->frame(), QRectF(768, 0, 748, 1024));
    QCOMPARE(zoomed->zoomScale(), 1.5);
    QCOMPARE(zoomed->imageSize(), QSizeF(748, 748 * 1130.0 / 800));
    QVERIFY(zoomed->contentX() <= zoomed->contentWidth() - 748);
    // The page at zoom 1 is fitted again, at the top.
    QCOMPARE(plain->imageSize(), QSizeF(748, 748 * 1130.0 / 800));
    QCOMPARE(plain->contentOffset(), QPointF(0, 0));
}

// --- Images ---

void TestReaderScreenRules::decodeSizes()
{
    // Stored size and width shown -> the size decoded: never larger than
    // twice what is shown, a texture's width or a page's pixel budget.
    const struct { QSize stored; qreal shown; QSize decoded; } rows[] = {
        {{800, 1130}, 1647, {800, 1130}},     {{4000, 6000}, 1647, {2000, 3000}}, {{8000, 1000}, 1647, {2000, 250}},
        {{6000, 600}, 4000, {4096, 409}},     {{1000, 40000}, 1647, {457, 18317}}, {{720, 4600}, 1647, {720, 4600}},
    };
    for (const auto &row : rows)
        QCOMPARE(VORAPageImageCache::decodeSize(row.stored, row.shown), row.decoded);
}

void TestReaderScreenRules::decodingTilesAndDamagedBytes()
{
    // 720 × 4600 drawn 1004 wide: tiles of at most 4096, top to bottom.
    const QByteArray tall = encodedPage(720, 4600);
    const VORAPageImageCache::Decoded d = VORAPageImageCache::decode(tall, 1004 * 1.64);
    QVERIFY(!d.isNull());
    QCOMPARE(d.sourceSize, QSize(720, 4600));
    QList<int> heights;
    for (const QImage &tile : d.tiles) {
        QCOMPARE(tile.width(), 720);
        heights.append(tile.height());
    }
    QCOMPARE(heights, (QList<int>{2048, 2048, 504}));
    // The top tile holds the dark band, the last one the light page.
    QVERIFY(d.tiles.first().pixelColor(10, 10).red() < 100);
    QVERIFY(d.tiles.last().pixelColor(10, 400).red() > 200);

    // Through the manager and the provider: the view's tiles are the ones served.
    auto manager = stripAt(1, 0, QSizeF(768, 1024));
    QVERIFY(deliver(*manager, 0, tall));
    VORAPictureImageView *view = manager->pageViewAt(0);
    const QVariantList tiles = view->tiles();
    QCOMPARE(tiles.size(), 3);
    VORAPageImageProvider provider;
    QSize served;
    const QString source = tiles.at(1).toMap().value(QStringLiteral("source")).toString();
    QVERIFY(source.startsWith(QStringLiteral("image://readerpage/")));
    const QImage middle = provider.requestImage(source.mid(QStringLiteral("image://readerpage/").size()), &served, QSize());
    QCOMPARE(served, QSize(720, 2048));
    QCOMPARE(tiles.at(2).toMap().value(QStringLiteral("top")).toDouble(), 4096.0 / 4600);
    QVERIFY(provider.requestImage(QStringLiteral("nothing/0"), &served, QSize()).isNull());
    QVERIFY(provider.requestImage(QStringLiteral("../x"), &served, QSize()).isNull());

    // Damaged bytes (a cut-off JPEG, then no picture at all) fail.
    const QByteArray cut = tall.left(200);
    QVERIFY(VORAPageImageCache::decode(cut, 1647).isNull());
    QVERIFY(VORAPageImageCache::decode("<html>this is not a page", 1647).isNull());
    QVERIFY(VORAPageImageCache::decode(QByteArray(), 1647).isNull());
}

void TestReaderScreenRules::imagesStayBoundedOverALongChapter()
{
    // 200 pages walked through: never more than five decoded pages held.
    const int before = VORAPageImageCache::shared().count();
    auto manager = stripAt(200, 0, QSizeF(768, 1024));
    const QByteArray page = encodedPage(400, 565);
    int most = 0;
    for (int p = 0; p < 200; p += 3) {
        manager->moveToPhotoAtIndex(p, false);
        for (int k = std::max(0, p - 2); k <= std::min(199, p + 2); ++k)
            manager->currentDisplayImage(page, std::nullopt, k);
        QTRY_COMPARE(manager->pendingDecodes(), 0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        most = std::max(most, VORAPageImageCache::shared().count() - before);
        QVERIFY(manager->existingPageIndexes().size() <= 5);
    }
    QVERIFY2(most <= 5, qPrintable(QString::number(most)));
    // Pages handed over again (the session does it on every move) are not decoded again.
    manager->currentDisplayImage(page, std::nullopt, 198);
    QCOMPARE(manager->pendingDecodes(), 0);
    manager.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(VORAPageImageCache::shared().count(), before);
}

void TestReaderScreenRules::failedPageAndTheFailureView()
{
    auto manager = stripAt(5, 2);
    QSignalSpy menu(manager.get(), &VORAComicViewManager::showMenuRequested);
    QSignalSpy retry(manager.get(), &VORAComicViewManager::reloadPageRequested);
    // A neighbour that fails is only marked; the current page brings the view up.
    manager->currentDisplayImage(std::nullopt, std::nullopt, 3);
    QCOMPARE(manager->pageViewAt(3)->state(), int(VORAPictureImageView::Failed));
    QVERIFY(!manager->loadingFailVisible());
    QVERIFY(deliver(*manager, 2, "not a picture"));
    QCOMPARE(manager->pageViewAt(2)->state(), int(VORAPictureImageView::Failed));
    QVERIFY(manager->loadingFailVisible());
    QCOMPARE(menu.count(), 1);
    // Retry: the indicator runs, then the current page is asked for again.
    manager->reloadCurrentPage();
    QVERIFY(manager->loadingFailLoading());
    QTRY_COMPARE(retry.count(), 1);
    QCOMPARE(retry.first().first().toInt(), 2);
    QCOMPARE(manager->pageViewAt(2)->state(), int(VORAPictureImageView::Loading));
    // Failing again stops the indicator; good bytes take the view away.
    manager->currentDisplayImage(std::nullopt, std::nullopt, 2);
    QVERIFY(manager->loadingFailVisible());
    QVERIFY(!manager->loadingFailLoading());
    QVERIFY(deliver(*manager, 2, encodedPage(800, 1130)));
    QVERIFY(!manager->loadingFailVisible());
    QCOMPARE(manager->pageViewAt(2)->state(), int(VORAPictureImageView::Shown));
    // Moving to the page that failed earlier, and hearing it failed again, shows the view.
    manager->moveToPhotoAtIndex(3, false);
    manager->currentDisplayImage(std::nullopt, std::nullopt, 3);
    QVERIFY(manager->loadingFailVisible());
}

void TestReaderScreenRules::sliderRounding()
{
    for (const auto &[value, page] : {std::pair{4.5, 5}, {4.49, 4}, {0.5, 1}, {18.999, 19}, {std::nan(""), 0}})
        QCOMPARE(VORAReadHomePageViewController::roundHalfUp(value), page);
}

// --- The controller against the site ---

namespace {
// Opens a comic in a new controller and waits for the chapter.
bool waitForChapter(int loadsBefore, QSignalSpy &loaded)
{
    return QTest::qWaitFor([&]() { return loaded.count() > loadsBefore; }, 15000);
}
const QString freeComic = QStringLiteral("10007");

} // namespace

void TestReaderScreenRules::chapterBoundariesAndTurningChapters()
{
    VORAReadHomePageViewController reader;
    VORAComicViewManager *manager = reader.comicViewManager();
    manager->setViewSize(1024, 768);
    QSignalSpy loaded(&reader, &VORAReadHomePageViewController::chapterLoaded);
    reader.openComic(freeComic, QString(), VORAReadComicManager::kFirstPage);
    QVERIFY(reader.isLoading());
    QVERIFY(reader.menuShown()); // nothing to read yet: the bars stay
    QVERIFY(waitForChapter(0, loaded));
    QVERIFY(!reader.isLoading());
    QVERIFY(!reader.menuShown());
    const int firstCount = reader.pageCount();
    QVERIFY(firstCount >= 6);
    const QList<VORAChapterInfoDTO> chapters = reader.chapterDTOList();
    QVERIFY(chapters.size() >= 3);

    // Before the first page of the first chapter: the indicator, and nothing moves.
    QVERIFY(manager->scrollViewWillBeginDecelerating(-200));
    QCOMPARE(m_indicators->texts(), QStringList{VORAReadHomePageViewController::firstChapterText});
    QCOMPARE(reader.readComicManager()->chapterId(), chapters.first().chapterId);

    // The slider to the last page, then past it: the next chapter at its first page.
    reader.quickTurnPage(firstCount - 1.4);
    QCOMPARE(reader.currentPageIndex(), firstCount - 1);
    manager->scrollViewWillBeginDecelerating(1024.0 * (firstCount - 1) + 100);
    QVERIFY(reader.isLoading());
    QVERIFY(waitForChapter(1, loaded));
    QCOMPARE(reader.chapterId(), chapters.at(1).chapterId);
    QCOMPARE(reader.currentPageIndex(), 0);

    // Back from its first page: the first chapter again, at its last page.
    manager->scrollViewWillBeginDecelerating(-100);
    QVERIFY(waitForChapter(2, loaded));
    QCOMPARE(reader.currentChapterIndex(), 0);
    QCOMPARE(reader.currentPageIndex(), firstCount - 1);
    QCOMPARE(manager->existingPageIndexes(), (QList<int>{firstCount - 3, firstCount - 2, firstCount - 1}));

    // The last chapter: past its last page the other indicator.
    reader.skipeToChapterWithChapterId(chapters.last().chapterId);
    QVERIFY(waitForChapter(3, loaded));
    QCOMPARE(reader.currentChapterIndex(), chapters.size() - 1);
    reader.requestPageWithIndex(reader.pageCount());
    QCOMPARE(m_indicators->texts().last(), VORAReadHomePageViewController::lastChapterText);
    QVERIFY(!reader.isLoading());

    // The page a session hands over reaches the surface and is decoded.
    QTRY_VERIFY_WITH_TIMEOUT(manager->pageViewAt(0) && manager->pageViewAt(0)->state() == VORAPictureImageView::Shown, 15000);

    // A chapter that fails to open leaves the one on screen readable.
    m_env.site->faults().setDropMidBody(QStringLiteral("ios/pad/chapter_127.php"));
    QSignalSpy failed(&reader, &VORAReadHomePageViewController::chapterLoadFailed);
    reader.skipeToChapterWithChapterId(chapters.at(1).chapterId);
    QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, 15000);
    QVERIFY(manager->loadingFailVisible());
    QCOMPARE(reader.currentChapterIndex(), chapters.size() - 1);
    // The failure view's retry opens it again once the site answers.
    m_env.site->faults().clear();
    manager->reloadCurrentPage();
    QVERIFY(waitForChapter(4, loaded));
    QCOMPARE(reader.currentChapterIndex(), 1);
    QVERIFY(!manager->loadingFailVisible());
}

// A page bookmarked twice is stored once; going to the background saves the
// position at once (leaving by the back button is the reader window suite's:
// it reads on where it stopped).
void TestReaderScreenRules::bookmarkTwiceThenTheBackground()
{
    VORAReadHomePageViewController reader;
    QSignalSpy loaded(&reader, &VORAReadHomePageViewController::chapterLoaded);
    reader.openComic(freeComic, QString(), VORAReadComicManager::kFirstPage);
    QVERIFY(waitForChapter(0, loaded));
    reader.quickTurnPage(2);
    const QString pageId = reader.pageId();
    QVERIFY(!pageId.isEmpty());
    VORADatabaseManager db;
    const int before = int(db.getBookmark().size());

    reader.addBookmark();
    QTRY_COMPARE(m_indicators->texts(), QStringList{VORAReadHomePageViewController::bookmarkAddedText});
    reader.addBookmark();
    QTRY_COMPARE(m_indicators->texts().size(), 2);
    QCOMPARE(m_indicators->texts().last(), VORAReadHomePageViewController::bookmarkExistsText);
    QCOMPARE(int(db.getBookmark().size()), before + 1);
    QCOMPARE(db.getBookmark().first()->pageId(), pageId);

    reader.quickTurnPage(4);
    QSignalSpy saved(&reader, &VORAReadHomePageViewController::readingPositionSaved);
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::applicationExit));
    QTRY_COMPARE(saved.count(), 1);
    QCOMPARE(saved.first().first().toString(), freeComic);
    const ReadHistoryPtr history = db.getReadHistoryWithComic(freeComic);
    QVERIFY(history);
    QCOMPARE(history->pageId(), reader.pageId());
}

void TestReaderScreenRules::aRefusedChapterLeavesTheOneOnScreen()
{
    // A comic with paid chapters from the fourth on, for a reader with 100 coins.
    const QString paidComic = QStringLiteral("10002");
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    VORAAppStatus *status = VORAAppGlobalData::shareAppGlobalData()->appStatus();
    const qint64 fromAppStore = status->fromAppStore();
    status->setFromAppStore(0);
    AlertRecorder alerts;

    VORAReadHomePageViewController reader;
    QSignalSpy loaded(&reader, &VORAReadHomePageViewController::chapterLoaded);
    reader.openComic(paidComic, QString(), VORAReadComicManager::kFirstPage);
    QVERIFY(waitForChapter(0, loaded));
    const QList<VORAChapterInfoDTO> chapters = reader.chapterDTOList();
    QVERIFY(chapters.size() >= 5);
    QCOMPARE(chapters.at(3).type, 2u);
    reader.skipeToChapterWithChapterId(chapters.at(2).chapterId);
    QVERIFY(waitForChapter(1, loaded));
    const int count = reader.pageCount();

    // Past the last page of the third chapter: the fourth is paid; its dialog
    // is the new session's, and the third stays readable.
    reader.quickTurnPage(count - 1);
    reader.comicViewManager()->turnPage(1);
    QTRY_VERIFY_WITH_TIMEOUT(!alerts.alerts.isEmpty(), 15000);
    QCOMPARE(alerts.lastTag(), VORAChapterPurchase::coinAlertTag);
    QCOMPARE(alerts.last().value(QStringLiteral("delegate")).value<QObject *>(), reader.pendingReadComicManager());
    QVERIFY(!reader.isLoading());
    QCOMPARE(reader.currentChapterIndex(), 2);
    reader.quickTurnPage(1);
    QCOMPARE(reader.readComicManager()->pageIndex(), 1);
    // The dialog refused: still the third chapter.
    reader.pendingReadComicManager()->alertView(VORAChapterPurchase::coinAlertTag, 0);
    QCOMPARE(reader.chapterId(), chapters.at(2).chapterId);
    QCOMPARE(loaded.count(), 2);

    // The chapter on screen reloads its pages (as a sign-in makes it) while
    // the fourth waits at its dialog: the answer is the third's own.
    reader.readComicManager()->loadOnlineChapterInfo();
    QVERIFY(waitForChapter(2, loaded));
    QCOMPARE(reader.chapterId(), chapters.at(2).chapterId);
    QCOMPARE(reader.pageCount(), count);
    QVERIFY(reader.pendingReadComicManager());

    // From the store (no purchase offered): nothing opens, nothing is asked.
    status->setFromAppStore(1);
    const int before = int(alerts.alerts.size());
    const int requests = m_env.site->requestCount(QStringLiteral("ios/pad/comic_127.php"));
    reader.quickTurnPage(count - 1);
    reader.comicViewManager()->turnPage(1);
    QVERIFY(!reader.isLoading());
    QCOMPARE(int(alerts.alerts.size()), before);
    QCOMPARE(m_env.site->requestCount(QStringLiteral("ios/pad/comic_127.php")), requests);
    // A jump there (a bookmark) ends its wait once the gate has said no.
    reader.skipeToChapterWithChapterId(chapters.at(3).chapterId);
    QTRY_VERIFY_WITH_TIMEOUT(!reader.isLoading(), 15000);
    QVERIFY(!reader.pendingReadComicManager());
    QCOMPARE(reader.chapterId(), chapters.at(2).chapterId);

    // Downloaded to the end, the fourth chapter opens without the gate.
    VORAPersistenceManager::saveComicInfo(*reader.comicInfoDTO(),
                                          VORAPersistenceManager::comicInfoFileWithComicId(paidComic));
    VORAPersistenceManager::saveChapterInfo(
        {{QStringLiteral("d1"), QString(), 800, 1130, 0, 0}, {QStringLiteral("d2"), QString(), 800, 1130, 0, 1}},
        VORAPersistenceManager::chapterInfoFileWithComicId(paidComic, chapters.at(3).chapterId));
    VORADatabaseManager *db = VORAPersistenceManager::getPersistenceManager()->databaseManager();
    VORADownloadChapterInfoDTO download;
    download.chapterId = chapters.at(3).chapterId;
    download.comicId = paidComic;
    db->addDownlaodChapter(download);
    download = *db->getDownloadChapterWithChapterId(download.chapterId);
    download.isFinishDownload = true;
    db->updateDownloadChapter(download);
    reader.comicViewManager()->turnPage(1);
    QVERIFY(waitForChapter(3, loaded));
    QCOMPARE(reader.currentChapterIndex(), 3);
    QCOMPARE(reader.pageCount(), 2);
    status->setFromAppStore(fromAppStore);
    QVERIFY(signInAs(QString(), QString()));
}

QTEST_MAIN(TestReaderScreenRules)
#include "tst_readerscreen_rules.moc"
