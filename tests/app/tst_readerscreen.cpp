// The reader in the real app shell, in an offscreen window, against the
// in-process reference site: a chapter opened from the detail page, pages
// turned by swipe, tap zone and slider, a double tap zooming in and out, the
// menu bars, bookmarks with their messages, the overscroll into the next
// chapter and back, the read mode turning the window, leaving and continuing
// on the same page, and a page whose image fails until the site is fixed.
// With QUORIN_WRITE_SCREENSHOTS=1 the reader is written to docs/screenshots.

#include "ReaderTestWindow.h"
#include "QuorinSiteFaults.h"
#include "catalogue/VORAChapterView.h"
#include "catalogue/VORAComicHomePageView.h"
#include "core/VORAUserConfig.h"
#include "net/VORAGetChapterInfoService.h"
#include "reader/VORAPictureScrollView.h"
#include "reader/VORAReadComicManager.h"
#include "store/VORADatabaseManager.h"

#include <QUrl>

#include <memory>

namespace {
const QString freeComic = QStringLiteral("10007");
using Launch = ReaderTestWindow;
} // namespace

class TestReaderScreen : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void readingAChapterFromTheDetailPage();
    void aPageThatFailsUntilTheSiteIsFixed();
    void buyingTheNextChapterFromTheReader();

private:
    TestHome m_home;
    std::unique_ptr<QuorinSite> m_site;
};

void TestReaderScreen::initTestCase()
{
    m_site = startSite(m_home);
    QVERIFY(m_site);
}

void TestReaderScreen::readingAChapterFromTheDetailPage()
{
    // Landscape reading, in a landscape window.
    VORAUserConfig::shareUserConfigInstance()->setIsVerticalScreen(false);
    Launch app(QSize(1024, 768));
    QVERIFY(app.started());

    // The detail page, its first chapter tapped.
    app.root()->openComicDetail(freeComic, QString(), QString());
    VORAComicHomePageView *home = app.root()->comicHomePageView();
    QTRY_VERIFY_WITH_TIMEOUT(home->state() == VORAComicHomePageView::Shown, 10000);
    QTRY_VERIFY(app.item(QStringLiteral("chapter0")));
    QVERIFY(app.click(QStringLiteral("chapter0")));
    QTRY_VERIFY(app.reader());
    VORAReadHomePageViewController *reader = app.reader();
    QTRY_VERIFY(app.item(QStringLiteral("readerView")));
    QVERIFY(!app.item(QStringLiteral("comicDetail300000"))); // covered, not drawn
    QTRY_VERIFY_WITH_TIMEOUT(reader->pageCount() > 0, 15000);
    const QString firstChapter = reader->chapterId();
    const int count = reader->pageCount();
    QCOMPARE(firstChapter, home->chapterView()->rowAt(0)->chapter.chapterId);
    QCOMPARE(reader->getCurrentScreenState(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(app.pageShown(0), 15000);
    // The neighbours were decoded as they came, before anybody turned to them.
    QTRY_VERIFY_WITH_TIMEOUT(app.pageShown(1) && app.pageShown(2), 15000);
    QVERIFY(app.item(QStringLiteral("readerPage0")));
    QVERIFY(!reader->menuShown());
    app.shot("reader-landscape.png");

    // A swipe to the left turns to page 2.
    const QPoint middle(512, 384);
    app.swipe(middle, -420);
    QTRY_COMPARE(reader->currentPageIndex(), 1);
    QTRY_COMPARE(app.strip()->pageIndex(), 1);
    QCOMPARE(reader->pageLabel(), QStringLiteral("2/%1").arg(count));
    // A short, slow pull springs back.
    app.swipe(middle, -60, 60);
    QTest::qWait(400);
    QCOMPARE(reader->currentPageIndex(), 1);

    // The right-hand zone scrolls the tall page down, then turns it.
    VORAPictureScrollView *sv = app.page(1)->scrollView();
    QVERIFY(sv->contentHeight() > 768);
    app.tap(QPoint(960, 400));
    QTRY_VERIFY(sv->contentY() > 600 && !sv->isAnimating());
    QTRY_VERIFY(app.item(QStringLiteral("readerPage1"))->findChild<QQuickItem *>(QStringLiteral("readerPageFlick"))->property("contentY").toReal() > 600);
    app.tap(QPoint(960, 400));
    QTRY_COMPARE(reader->currentPageIndex(), 2);
    QTRY_VERIFY(app.restsOn(2));
    QVERIFY(!reader->menuShown());

    // A double tap zooms in around the finger, a second one back out; neither shows the bars.
    QTRY_VERIFY_WITH_TIMEOUT(app.pageShown(2), 15000);
    VORAPictureScrollView *zoom = app.page(2)->scrollView();
    app.window()->grabWindow();
    QTest::mouseDClick(app.window(), Qt::LeftButton, {}, middle);
    QTRY_COMPARE(zoom->zoomScale(), 1.64);
    QVERIFY(zoom->contentX() > 0);
    QTest::qWait(200);
    QVERIFY(!reader->menuShown());
    QTest::mouseDClick(app.window(), Qt::LeftButton, {}, middle);
    QTRY_COMPARE(zoom->zoomScale(), 1.0);

    // A single tap in the middle shows the bars.
    app.tap(middle);
    QTRY_VERIFY(reader->menuShown());
    QTRY_VERIFY(app.item(QStringLiteral("readerTitle")));
    QCOMPARE(app.item(QStringLiteral("readerTitle"))->property("text").toString(), reader->title());
    QCOMPARE(app.item(QStringLiteral("readerPageLabel"))->property("text").toString(), QStringLiteral("3/%1").arg(count));
    app.shot("reader-menu.png");

    // Bookmarks: added, then the same page again.
    QVERIFY(app.click(QStringLiteral("readerAddBookmark")));
    QTRY_COMPARE(app.layer->progressText(), VORAReadHomePageViewController::bookmarkAddedText);
    QVERIFY(app.layer->progressVisible());
    QVERIFY(app.click(QStringLiteral("readerAddBookmark")));
    QTRY_COMPARE(app.layer->progressText(), VORAReadHomePageViewController::bookmarkExistsText);
    {
        VORADatabaseManager db;
        QCOMPARE(int(db.getBookmarkWithComic(freeComic).size()), 1);
    }

    // The slider to the last page (let go on it).
    QQuickItem *slider = app.item(QStringLiteral("readerSlider"));
    QVERIFY(slider);
    const QPoint sliderEnd = slider->mapToScene(QPointF(slider->width() - 4, slider->height() / 2)).toPoint();
    QTest::mouseClick(app.window(), Qt::LeftButton, {}, sliderEnd);
    QTRY_COMPARE(reader->currentPageIndex(), count - 1);
    reader->hideMenu();
    QTRY_VERIFY(!app.item(QStringLiteral("readerTopBar")));

    // Past the last page: the next chapter, at its first page.
    const QList<VORAChapterInfoDTO> chapters = reader->chapterDTOList();
    QVERIFY(chapters.size() > 1);
    app.swipe(QPoint(700, 384), -400);
    QTRY_VERIFY_WITH_TIMEOUT(reader->chapterId() == chapters.at(1).chapterId, 15000);
    QCOMPARE(reader->currentPageIndex(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(app.pageShown(0), 15000);
    // And back before its first page: the first chapter at its last page.
    app.swipe(QPoint(300, 384), 400);
    QTRY_VERIFY_WITH_TIMEOUT(reader->chapterId() == firstChapter, 15000);
    QCOMPARE(reader->currentPageIndex(), count - 1);
    QTRY_VERIFY_WITH_TIMEOUT(app.pageShown(count - 1), 15000);

    // The read mode: portrait turns the window; the pages are laid out again.
    reader->showMenu();
    QTRY_VERIFY(app.item(QStringLiteral("readerReadMode")));
    QVERIFY(app.click(QStringLiteral("readerReadMode")));
    QTRY_COMPARE(app.window()->height(), 1024);
    QCOMPARE(app.window()->width(), 768);
    QVERIFY(VORAUserConfig::shareUserConfigInstance()->isVerticalScreen());
    QTRY_COMPARE(reader->getCurrentScreenState(), 0);
    QTRY_COMPARE(app.page(count - 1)->width(), 748.0);
    QCOMPARE(app.strip()->pageIndex(), count - 1);
    QTRY_COMPARE(app.item(QStringLiteral("readerStrip"))->property("contentX").toReal(), 768.0 * (count - 1));
    app.shot("reader-portrait-menu.png");
    reader->hideMenu();
    app.shot("reader-portrait.png");
    reader->showMenu();
    QTRY_VERIFY(app.item(QStringLiteral("readerReadMode")));
    QVERIFY(app.click(QStringLiteral("readerReadMode")));
    QTRY_COMPARE(app.window()->width(), 1024);
    QVERIFY(!VORAUserConfig::shareUserConfigInstance()->isVerticalScreen());

    // The chapter panel: a row opens its chapter, and the panel goes.
    reader->showMenu();
    QTRY_VERIFY(app.item(QStringLiteral("readerChapters")));
    QVERIFY(app.click(QStringLiteral("readerChapters")));
    QTRY_VERIFY(app.item(QStringLiteral("readerChapterPanel")));
    QTRY_VERIFY(app.item(QStringLiteral("chapterRow2")));
    QCOMPARE(app.item(QStringLiteral("chapterRow2"))->property("chapterId").toString(), chapters.at(2).chapterId);
    QVERIFY(app.click(QStringLiteral("chapterRow2")));
    QTRY_VERIFY_WITH_TIMEOUT(reader->chapterId() == chapters.at(2).chapterId, 15000);
    QCOMPARE(reader->currentPageIndex(), 0);
    QTRY_VERIFY(!reader->chapterManager());
    QTRY_VERIFY(!app.item(QStringLiteral("readerChapterPanel")));
    QTRY_VERIFY_WITH_TIMEOUT(app.pageShown(0), 15000);

    // Leaving: the detail page shows the position, and continues on that page.
    reader->quickTurnPage(2);
    const QString chapterId = reader->chapterId();
    const QString pageId = reader->pageId();
    QVERIFY(app.click(QStringLiteral("readerBack")));
    QTRY_VERIFY(!app.reader());
    QTRY_VERIFY(app.item(QStringLiteral("comicDetail300000")));
    QTRY_VERIFY(home->hasReadHistory());
    QVERIFY(app.click(QStringLiteral("readButton")));
    QTRY_VERIFY(app.reader());
    QTRY_VERIFY_WITH_TIMEOUT(app.reader()->pageCount() > 0, 15000);
    QCOMPARE(app.reader()->chapterId(), chapterId);
    QCOMPARE(app.reader()->pageId(), pageId);
    QCOMPARE(app.reader()->currentPageIndex(), 2);
    QTRY_COMPARE(app.item(QStringLiteral("readerStrip"))->property("contentX").toReal(), 1024.0 * 2);
}

void TestReaderScreen::aPageThatFailsUntilTheSiteIsFixed()
{
    VORAUserConfig::shareUserConfigInstance()->setIsVerticalScreen(true);
    Launch app(QSize(768, 1024));
    QVERIFY(app.started());

    // A chapter nobody read yet, its first page's image cut off by the site.
    const QString comicId = QStringLiteral("10013");
    const QList<VORAChapterInfoDTO> chapterList = siteChapters(comicId);
    QVERIFY(!chapterList.isEmpty());
    const QString chapterId = chapterList.first().chapterId;
    VORAGetChapterInfoService chapterService;
    chapterService.chapterId = chapterId;
    ServiceWaiter chapterWaiter;
    chapterService.asynchronousRequestWithDelegate(&chapterWaiter);
    QTRY_VERIFY_WITH_TIMEOUT(chapterWaiter.done, 10000);
    QVERIFY(chapterService.pageList() && !chapterService.pageList()->isEmpty());
    const QString imagePath = QUrl(chapterService.pageList()->first().url).path().mid(1);
    m_site->faults().setDropMidBody(imagePath);

    app.root()->openReader(comicId, chapterId, VORAReadComicManager::kFirstPage);
    VORAReadHomePageViewController *reader = app.reader();
    QVERIFY(reader);
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("readerLoadingFail101002")), 15000);
    QVERIFY(reader->menuShown()); // the way back is offered
    QTRY_VERIFY_WITH_TIMEOUT(app.pageShown(1), 15000);
    QVERIFY(!app.pageShown(0));
    app.shot("reader-loading-fail.png");

    // Retry while the site still fails: the view stays.
    QVERIFY(app.click(QStringLiteral("readerRetry")));
    QVERIFY(app.strip()->loadingFailLoading());
    QTRY_VERIFY_WITH_TIMEOUT(!app.strip()->loadingFailLoading(), 15000);
    QVERIFY(app.item(QStringLiteral("readerLoadingFail101002")));
    QVERIFY(m_site->requestCount(imagePath) >= 2);

    // Fixed: the retry brings the page.
    m_site->faults().clear();
    QVERIFY(app.click(QStringLiteral("readerRetry")));
    QTRY_VERIFY_WITH_TIMEOUT(app.pageShown(0), 15000);
    QTRY_VERIFY(!app.item(QStringLiteral("readerLoadingFail101002")));
    QCOMPARE(reader->currentPageIndex(), 0);
}

void TestReaderScreen::buyingTheNextChapterFromTheReader()
{
    VORAUserConfig::shareUserConfigInstance()->setIsVerticalScreen(false);
    Launch app(QSize(1024, 768));
    QVERIFY(app.started());
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    global->appStatus()->setFromAppStore(0);
    const qint64 coins = global->user()->userCoin();

    // The third chapter of a comic whose chapters are paid from the fourth on.
    const QString comicId = QStringLiteral("10002");
    const QList<VORAChapterInfoDTO> chapterList = siteChapters(comicId);
    QVERIFY(chapterList.size() > 3);
    const VORAChapterInfoDTO third = chapterList.at(2);
    const VORAChapterInfoDTO fourth = chapterList.at(3);
    QCOMPARE(fourth.type, 2u);
    QVERIFY(fourth.price > 0 && fourth.price <= coins);

    app.root()->openReader(comicId, third.chapterId, VORAReadComicManager::kFirstPage);
    VORAReadHomePageViewController *reader = app.reader();
    QTRY_VERIFY_WITH_TIMEOUT(reader->pageCount() > 0, 15000);
    QCOMPARE(reader->chapterId(), third.chapterId);
    reader->quickTurnPage(reader->pageCount() - 1);
    QTRY_VERIFY(app.restsOn(reader->pageCount() - 1));

    // Past the end: the coin dialog over the reader, answered in the window.
    app.swipe(QPoint(700, 384), -400);
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("alertBox")), 15000);
    QCOMPARE(app.item(QStringLiteral("alertMessage"))->property("text").toString(),
             QString::asprintf("购买此章节需要%dquorin币", int(fourth.price)));
    QCOMPARE(reader->chapterId(), third.chapterId);
    app.shot("reader-coin-alert.png");
    QVERIFY(app.click(QStringLiteral("alertButton1"))); // "购买此章节"
    QTRY_VERIFY_WITH_TIMEOUT(reader->chapterId() == fourth.chapterId, 15000);
    QCOMPARE(reader->currentPageIndex(), 0);
    QTRY_COMPARE(global->user()->userCoin(), coins - fourth.price);
    QTRY_VERIFY_WITH_TIMEOUT(app.pageShown(0), 15000);
    QVERIFY(signInAs(QString(), QString()));
}

QTEST_MAIN(TestReaderScreen)
#include "tst_readerscreen.moc"
