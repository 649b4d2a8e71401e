// The tucao on the reader screen, in the real app shell in an offscreen window
// against the in-process reference site: the crowded first page of comic
// 10001 plays its tucao over the image and they follow a double-tap zoom;
// the tucao menu switches them off for the next chapter and after a restart;
// a signed-in reader writes, places, moves and deletes his own tucao and the
// site stores them at the page pixels; another reader cannot touch them.
// With QUORIN_WRITE_SCREENSHOTS=1 the playing page is written to
// docs/screenshots in both read modes.

#include "ReaderTestWindow.h"
#include "catalogue/VORAComicHomePageView.h"
#include "core/VORAUserConfig.h"
#include "net/VORAGetTucaoService.h"
#include "reader/VORAPictureScrollView.h"
#include "reader/VORAReadComicManager.h"
#include "tucao/VORATuCaoEditManager.h"
#include "tucao/VORATuCaoInputView.h"
#include "tucao/VORATuCaoMenuView.h"
#include "tucao/VORATucaoPlayback.h"
#include "tucao/VORATucaoPublisher.h"

#include <QDateTime>
#include <QSignalSpy>

#include <cmath>
#include <memory>

namespace {
const QString crowdedComic = QStringLiteral("10001");
const QString emptyText = QStringLiteral("吐槽不能为空，请输入吐槽内容");

struct App : ReaderTestWindow
{
    using ReaderTestWindow::ReaderTestWindow;
    using AppTestWindow::drag;

    VORATucaoPlayback *playback(int index) const { return page(index) ? page(index)->tucaoPlayback() : nullptr; }
    // The tucao delegates drawn over the current page.
    QList<QQuickItem *> tucaoViews() const
    {
        QQuickItem *pageItem = item(QStringLiteral("readerPage%1").arg(strip()->pageIndex()));
        return pageItem ? items(QStringLiteral("tucaoView"), pageItem) : QList<QQuickItem *>();
    }
    QQuickItem *tucaoViewWithId(const QString &tucaoId) const
    {
        VORATucaoPlayback *pb = playback(strip()->pageIndex());
        for (QQuickItem *view : tucaoViews()) {
            if (pb && pb->tucaoAt(view->property("row").toInt()).value(QStringLiteral("tucaoId")) == tucaoId)
                return view;
        }
        return nullptr;
    }
    // The bars shown and the tucao menu bar come to rest above the bottom bar.
    bool showBars() const
    {
        reader()->showMenu();
        return QTest::qWaitFor([&] {
            QQuickItem *bar = item(QStringLiteral("readerTucaoMenuBar"));
            return bar && std::abs(bar->y() + bar->height() + 70 - window()->height()) < 0.5;
        });
    }
    void longPress(QQuickItem *it) const
    {
        const QPoint at = centreOf(it);
        QTest::mousePress(window(), Qt::LeftButton, {}, at);
        QTest::qWait(900); // past the press-and-hold interval
        QTest::mouseRelease(window(), Qt::LeftButton, {}, at);
    }
    void drag(QPoint from, QPoint by) const
    {
        window()->grabWindow();
        QTest::mousePress(window(), Qt::LeftButton, {}, from);
        for (int i = 1; i <= 8; ++i)
            QTest::mouseMove(window(), from + by * i / 8, 16);
        QTest::mouseRelease(window(), Qt::LeftButton, {}, from + by, 16);
    }
};

// Where a tucao of the page stands in the window, from the page's zooming
// state: image pixels -> points of the fitted image -> zoom -> scroll.
QRectF expectedSceneRect(const VORAPictureImageView *page, const QVariantMap &tucao, qreal stripContentX)
{
    const VORAPictureScrollView *sv = page->scrollView();
    const qreal sx = sv->imageWidth() / page->photoWidth() * sv->zoomScale();
    const qreal sy = sv->imageHeight() / page->photoHeight() * sv->zoomScale();
    return QRectF(page->x() - stripContentX + sv->containerX() + tucao.value(QStringLiteral("x")).toReal() * sx - sv->contentX(),
                  sv->containerY() + tucao.value(QStringLiteral("y")).toReal() * sy - sv->contentY(),
                  tucao.value(QStringLiteral("width")).toReal() * sx, tucao.value(QStringLiteral("height")).toReal() * sy);
}

bool near(const QRectF &a, const QRectF &b)
{
    return std::abs(a.x() - b.x()) < 1.5 && std::abs(a.y() - b.y()) < 1.5 && std::abs(a.width() - b.width()) < 1.5
        && std::abs(a.height() - b.height()) < 1.5;
}
} // namespace

class TestTucaoReader : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void tucaoPlayOverThePageAndTheSwitchHolds();
    void writingMovingAndDeletingOnesOwn();

private:
    // The tucao of a page as the site has them now.
    QList<VORATucao> siteTucao(const QString &pageId);
    std::optional<VORATucao> siteTucaoWithId(const QString &pageId, const QString &tucaoId);
    // Every tucao drawn on the current page stands on its rectangle of the image.
    bool tucaoOnTheirRectangles(const App &app);

    TestHome m_home;
    std::unique_ptr<QuorinSite> m_site;
};

void TestTucaoReader::initTestCase()
{
    m_site = startSite(m_home);
    QVERIFY(m_site);
}

void TestTucaoReader::cleanup()
{
    VORAUserConfig::shareUserConfigInstance()->setIsDisplayTuCao(true);
    QVERIFY(signInAs(QString(), QString()));
}

QList<VORATucao> TestTucaoReader::siteTucao(const QString &pageId)
{
    VORAGetTucaoService get;
    get.pageId = pageId;
    get.lastId = QStringLiteral("100000000");
    get.pageSize = 500;
    get.isNext = true;
    ServiceWaiter waiter;
    get.asynchronousRequestWithDelegate(&waiter);
    if (!QTest::qWaitFor([&] { return waiter.done; }, 10000) || waiter.failed)
        return {};
    return get.tucaoList().value_or(QList<VORATucao>());
}

std::optional<VORATucao> TestTucaoReader::siteTucaoWithId(const QString &pageId, const QString &tucaoId)
{
    for (const VORATucao &t : siteTucao(pageId)) {
        if (t.tucaoId == tucaoId)
            return t;
    }
    return std::nullopt;
}

bool TestTucaoReader::tucaoOnTheirRectangles(const App &app)
{
    const int index = app.strip()->pageIndex();
    VORAPictureImageView *page = app.page(index);
    QQuickItem *strip = app.item(QStringLiteral("readerStrip"));
    const QList<QQuickItem *> views = app.tucaoViews();
    if (!page || !strip || views.isEmpty())
        return false;
    app.window()->grabWindow();
    for (QQuickItem *view : views) {
        const QVariantMap tucao = page->tucaoPlayback()->tucaoAt(view->property("row").toInt());
        const QRectF drawn(view->mapToScene(QPointF(0, 0)), view->mapToScene(QPointF(view->width(), view->height())));
        const QRectF expected = expectedSceneRect(page, tucao, strip->property("contentX").toReal());
        if (!near(drawn, expected)) {
            qWarning() << "tucao" << tucao.value(QStringLiteral("tucaoId")) << "drawn at" << drawn << "expected" << expected;
            return false;
        }
    }
    return true;
}

void TestTucaoReader::tucaoPlayOverThePageAndTheSwitchHolds()
{
    VORAUserConfig::shareUserConfigInstance()->setIsVerticalScreen(false);
    VORAUserConfig::shareUserConfigInstance()->setIsDisplayTuCao(true);
    QString chapterId;
    QString nextChapterId;
    {
        App app(QSize(1024, 768));
        QVERIFY(app.started());

        // The first chapter, from the detail page.
        app.root()->openComicDetail(crowdedComic, QString(), QString());
        VORAComicHomePageView *home = app.root()->comicHomePageView();
        QTRY_VERIFY_WITH_TIMEOUT(home->state() == VORAComicHomePageView::Shown, 10000);
        QTRY_VERIFY(app.item(QStringLiteral("chapter0")));
        QVERIFY(app.click(QStringLiteral("chapter0")));
        QTRY_VERIFY(app.reader());
        VORAReadHomePageViewController *reader = app.reader();
        QTRY_VERIFY_WITH_TIMEOUT(reader->pageCount() > 0 && app.pageShown(0), 15000);
        chapterId = reader->chapterId();
        QVERIFY(reader->chapterDTOList().size() > 1);
        nextChapterId = reader->chapterDTOList().at(1).chapterId;

        // The page's tucao (the first 200 the site gives), grouped by the image's pixels.
        VORATucaoPlayback *playback = app.playback(0);
        QTRY_COMPARE_WITH_TIMEOUT(playback->tucaoCount(), 200, 15000);

        // After the start delay they come in, one by one, on their rectangles.
        QTRY_VERIFY_WITH_TIMEOUT(app.tucaoViews().size() >= 3, 15000);
        QVERIFY(playback->showTucaoFlag());
        QCOMPARE(app.tucaoViews().size(), playback->count());
        QVERIFY(tucaoOnTheirRectangles(app));

        // The bars bring the tucao menu with the page's title, page and count.
        const QPoint middle(512, 384);
        QTest::mouseClick(app.window(), Qt::LeftButton, {}, middle);
        QTRY_VERIFY(reader->menuShown());
        QTRY_VERIFY(app.item(QStringLiteral("readerTucaoMenuBar")));
        QTRY_COMPARE(app.item(QStringLiteral("tucaoMenuTitle"))->property("text").toString(), reader->title());
        QCOMPARE(app.item(QStringLiteral("tucaoMenuPage"))->property("text").toString(), reader->pageLabel());
        // Neither bar covers the other.
        QQuickItem *bottomBar = app.item(QStringLiteral("readerBottomBar"));
        QQuickItem *tucaoBar = app.item(QStringLiteral("readerTucaoMenuBar"));
        QTRY_VERIFY(tucaoBar->mapToScene(QPointF(0, tucaoBar->height())).y()
                    <= bottomBar->mapToScene(QPointF(0, 0)).y() + 0.5);
        app.shot("reader-tucao-landscape.png");

        // Paused: the tucao on screen stay still (nothing new comes in).
        QVERIFY(app.click(QStringLiteral("tucaoPlayButton")));
        QVERIFY(!app.strip()->tucaoMenuView()->playTucaoflag());
        QTRY_VERIFY(!playback->isPlaying());
        QVERIFY(playback->count() > 0);
        reader->hideMenu();
        QTRY_VERIFY(!app.item(QStringLiteral("readerTucaoMenuBar")));

        // A double tap zooms the page: the tucao move and grow with the image.
        const QList<QPointF> before = [&] {
            QList<QPointF> list;
            for (QQuickItem *v : app.tucaoViews())
                list.append(v->mapToScene(QPointF(0, 0)));
            return list;
        }();
        VORAPictureScrollView *sv = app.page(0)->scrollView();
        app.window()->grabWindow();
        QTest::mouseDClick(app.window(), Qt::LeftButton, {}, middle);
        QTRY_COMPARE(sv->zoomScale(), 1.64);
        QTRY_VERIFY(!sv->isAnimating());
        QTRY_VERIFY(tucaoOnTheirRectangles(app));
        QList<QQuickItem *> zoomed = app.tucaoViews();
        QCOMPARE(zoomed.size(), before.size());
        QVERIFY(zoomed.first()->mapToScene(QPointF(0, 0)) != before.first());
        // Scrolled down inside the zoomed page, they stay on the image.
        sv->setContentOffset(QPointF(sv->contentX(), sv->contentY() + 200), false);
        QTRY_VERIFY(tucaoOnTheirRectangles(app));
        QTest::mouseDClick(app.window(), Qt::LeftButton, {}, middle);
        QTRY_COMPARE(sv->zoomScale(), 1.0);
        QTRY_VERIFY(tucaoOnTheirRectangles(app));

        // Played again, then switched off from the tucao menu.
        QVERIFY(app.showBars());
        QVERIFY(app.click(QStringLiteral("tucaoPlayButton")));
        QTRY_VERIFY(playback->isPlaying());
        QVERIFY(app.click(QStringLiteral("tucaoShowButton")));
        QVERIFY(!VORAUserConfig::shareUserConfigInstance()->isDisplayTuCao());
        QVERIFY(!app.strip()->isShowTucao());
        QTRY_VERIFY(app.tucaoViews().isEmpty());

        // The next chapter: its first page does not start them.
        reader->hideMenu();
        reader->skipeToChapterWithChapterId(nextChapterId);
        QTRY_VERIFY_WITH_TIMEOUT(reader->chapterId() == nextChapterId && app.pageShown(0), 15000);
        QTRY_VERIFY_WITH_TIMEOUT(app.page(0)->hasTucao(), 15000);
        QVERIFY(!app.playback(0)->isStartPending() && !app.playback(0)->showTucaoFlag());
        QVERIFY(app.tucaoViews().isEmpty());
    }

    // After a restart (same app home) they are still off; on again, they play.
    {
        App app(QSize(1024, 768));
        QVERIFY(app.started());
        app.root()->openReader(crowdedComic, chapterId, VORAReadComicManager::kFirstPage);
        VORAReadHomePageViewController *reader = app.reader();
        QVERIFY(reader);
        QTRY_VERIFY_WITH_TIMEOUT(app.pageShown(0) && app.page(0)->hasTucao(), 15000);
        QVERIFY(!app.strip()->isShowTucao());
        QVERIFY(!app.playback(0)->isStartPending() && !app.playback(0)->showTucaoFlag());
        QVERIFY(app.showBars());
        QVERIFY(app.click(QStringLiteral("tucaoShowButton")));
        QVERIFY(VORAUserConfig::shareUserConfigInstance()->isDisplayTuCao());
        QTRY_VERIFY_WITH_TIMEOUT(app.tucaoViews().size() >= 2, 15000);
        QVERIFY(tucaoOnTheirRectangles(app));

        // Stepping to the next group puts a whole group on the page.
        QVERIFY(app.click(QStringLiteral("tucaoNextButton")));
        QTRY_COMPARE(app.playback(0)->count(), app.playback(0)->tucaoNumPerPage());
        QTRY_VERIFY(tucaoOnTheirRectangles(app));

        // Portrait reading: the page and its tucao laid out again.
        reader->swtichScreen();
        QTRY_COMPARE(app.window()->height(), 1024);
        QTRY_COMPARE(reader->getCurrentScreenState(), 0);
        QTRY_VERIFY(tucaoOnTheirRectangles(app));
        app.shot("reader-tucao-portrait.png");
        reader->swtichScreen();
        QTRY_COMPARE(app.window()->width(), 1024);
    }
}

void TestTucaoReader::writingMovingAndDeletingOnesOwn()
{
    VORAUserConfig::shareUserConfigInstance()->setIsVerticalScreen(false);
    VORAUserConfig::shareUserConfigInstance()->setIsDisplayTuCao(true);
    const QList<VORAChapterInfoDTO> chapters = siteChapters(crowdedComic);
    QVERIFY(!chapters.isEmpty());
    const QString chapterId = chapters.first().chapterId;
    App app(QSize(1024, 768));
    QVERIFY(app.started());

    const auto openChapter = [&] {
        app.root()->openReader(crowdedComic, chapterId, VORAReadComicManager::kFirstPage);
        return app.reader() && QTest::qWaitFor([&] { return app.pageShown(0) && app.page(0)->hasTucao(); }, 15000);
    };

    // Nobody signed in: writing asks for the sign-in, the input does not open.
    QVERIFY(openChapter());
    VORAReadHomePageViewController *reader = app.reader();
    QSignalSpy signIn(reader, &VORAReadHomePageViewController::signInRequested);
    QVERIFY(app.showBars());
    QVERIFY(app.click(QStringLiteral("tucaoWriteButton")));
    QCOMPARE(signIn.size(), 1);
    QVERIFY(!reader->tucaoInputView()->isOpen());
    QCOMPARE(VORAAppGlobalData::shareAppGlobalData()->user()->userViewJumpType(), 1);

    // Signed in as reader: the playback paused once it began, so the page holds still.
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    QVERIFY(openChapter());
    reader = app.reader();
    const QString pageId = reader->pageId();
    QTRY_VERIFY_WITH_TIMEOUT(app.playback(0)->showTucaoFlag(), 15000);
    app.strip()->tucaoMenuView()->playTucaoBtn();
    QVERIFY(!app.playback(0)->isPlaying());

    // Write: the page goes back to its fitted zoom, an empty text is refused.
    VORAPictureScrollView *sv = app.page(0)->scrollView();
    QTest::mouseDClick(app.window(), Qt::LeftButton, {}, QPoint(512, 384));
    QTRY_COMPARE(sv->zoomScale(), 1.64);
    QTRY_VERIFY(!sv->isAnimating());
    QVERIFY(app.showBars());
    QVERIFY(app.click(QStringLiteral("tucaoWriteButton")));
    QTRY_VERIFY(app.item(QStringLiteral("tucaoInputBox")));
    QCOMPARE(sv->zoomScale(), 1.0);
    QVERIFY(app.click(QStringLiteral("tucaoInputConfirm")));
    QTRY_COMPARE(app.layer->progressText(), emptyText);
    QVERIFY(app.item(QStringLiteral("tucaoInputBox")));

    // The text, then the tap that places it.
    const QString text = QStringLiteral("reader was here %1").arg(QDateTime::currentMSecsSinceEpoch() % 100000);
    QVERIFY(app.click(QStringLiteral("TucaotextFiled"))); // the refusal closed the keyboard
    QTRY_VERIFY(app.item(QStringLiteral("TucaotextFiled"))->hasActiveFocus());
    for (const QChar c : text)
        QTest::keyClick(app.window(), c.toLatin1());
    QCOMPARE(reader->tucaoInputView()->text(), text);
    QVERIFY(app.click(QStringLiteral("tucaoInputConfirm")));
    QTRY_VERIFY(app.item(QStringLiteral("tucaoPlacingHint")));
    QTest::mouseClick(app.window(), Qt::LeftButton, {}, QPoint(420, 300));
    QTRY_VERIFY(reader->tucaoEditManager());
    VORATuCaoEditManager *edit = reader->tucaoEditManager();
    QVERIFY(!edit->isPublished());
    QVERIFY(edit->editRect().contains(QPointF(420, 300)));
    QTRY_VERIFY(app.item(QStringLiteral("tucaoEditConfirm")));

    // Confirmed: the site stores the rectangle in the page's pixels.
    const QRectF placed = edit->editRect();
    VORAPictureImageView *page = app.page(0);
    const qreal sx = sv->imageWidth() / page->photoWidth();
    const qreal sy = sv->imageHeight() / page->photoHeight();
    const qreal scrolled = sv->contentY(); // the zoom went, the scroll stays
    QCOMPARE(sv->containerY(), 0.0);       // a tall page fills the page view
    QVERIFY(app.click(QStringLiteral("tucaoEditConfirm")));
    QTRY_COMPARE_WITH_TIMEOUT(app.layer->progressText(), VORATucaoPublisher::publishSuccessText, 10000);
    QTRY_VERIFY(!reader->tucaoEditManager());
    const QString tucaoId = reader->tucaoPublisher()->tucaoDTO().tucaoId;
    QVERIFY(!tucaoId.isEmpty());
    std::optional<VORATucao> stored = siteTucaoWithId(pageId, tucaoId);
    QVERIFY(stored);
    QCOMPARE(stored->content, text);
    QCOMPARE(stored->userId, QStringLiteral("100001"));
    // The record holds whole points; the site whole pixels.
    const auto pixels = [&](const QRectF &r, qreal contentY) {
        return QList<qint32>{qint32(qint64(r.x()) / sx), qint32(qint64(contentY + qint64(r.y())) / sy),
                             qint32(qint64(r.width()) / sx), qint32(qint64(r.height()) / sy)};
    };
    const auto stored4 = [](const VORATucao &t) { return QList<qint32>{t.x, t.y, t.width, t.height}; };
    QCOMPARE(stored4(*stored), pixels(placed, scrolled));
    // And it stands on the page at once.
    QTRY_VERIFY(app.tucaoViewWithId(tucaoId));

    // Reopened, the page brings it back from the site; it plays first (the newest).
    QVERIFY(openChapter());
    reader = app.reader();
    sv = app.page(0)->scrollView();
    QVERIFY(app.playback(0)->tucaoWithId(tucaoId));
    QTRY_VERIFY_WITH_TIMEOUT(app.tucaoViewWithId(tucaoId), 15000);
    app.strip()->tucaoMenuView()->playTucaoBtn(); // paused: it stays where it is
    QVERIFY(app.tucaoViewWithId(tucaoId)->property("isOwn").toBool());
    QVERIFY(tucaoOnTheirRectangles(app));

    // A long press opens it for editing, off the page; dragged and confirmed.
    app.longPress(app.tucaoViewWithId(tucaoId));
    QTRY_VERIFY(reader->tucaoEditManager());
    edit = reader->tucaoEditManager();
    QVERIFY(edit->isPublished());
    QVERIFY(!app.playback(0)->tucaoWithId(tucaoId));
    QTRY_VERIFY(app.item(QStringLiteral("tucaoEditMove")));
    const QRectF opened = edit->editRect();
    QVERIFY(std::abs(opened.x() - stored->x * sx) < 1.5);
    QVERIFY(std::abs(opened.y() - (stored->y * sy - sv->contentY())) < 1.5);
    app.drag(app.centreOf(app.item(QStringLiteral("tucaoEditMove"))), QPoint(90, 60));
    const QRectF moved = edit->editRect();
    QVERIFY(std::abs(moved.x() - opened.x() - 90) < 1 && std::abs(moved.y() - opened.y() - 60) < 1);
    QVERIFY(app.click(QStringLiteral("tucaoEditConfirm")));
    QTRY_COMPARE_WITH_TIMEOUT(app.layer->progressText(), VORATucaoPublisher::updateSuccessText, 10000);
    QTRY_VERIFY(!reader->tucaoEditManager());
    stored = siteTucaoWithId(pageId, tucaoId);
    QVERIFY(stored);
    QCOMPARE(stored4(*stored), pixels(moved, sv->contentY()));
    QVERIFY(app.playback(0)->tucaoWithId(tucaoId));
    QTRY_VERIFY(app.tucaoViewWithId(tucaoId));

    // Cancelling an edit puts it back, unsent.
    app.longPress(app.tucaoViewWithId(tucaoId));
    QTRY_VERIFY(reader->tucaoEditManager());
    QTRY_VERIFY(app.item(QStringLiteral("tucaoEditCancel")));
    QVERIFY(app.click(QStringLiteral("tucaoEditCancel")));
    QTRY_VERIFY(!reader->tucaoEditManager());
    QVERIFY(app.playback(0)->tucaoWithId(tucaoId));
    QCOMPARE(siteTucaoWithId(pageId, tucaoId)->x, stored->x);

    // Another reader's long press does nothing.
    QVERIFY(signInAs(QStringLiteral("rich"), QStringLiteral("rich123")));
    QVERIFY(openChapter());
    reader = app.reader();
    QTRY_VERIFY_WITH_TIMEOUT(app.tucaoViewWithId(tucaoId), 15000);
    app.strip()->tucaoMenuView()->playTucaoBtn();
    QVERIFY(!app.tucaoViewWithId(tucaoId)->property("isOwn").toBool());
    app.longPress(app.tucaoViewWithId(tucaoId));
    QTest::qWait(300);
    QVERIFY(!reader->tucaoEditManager());
    QVERIFY(app.playback(0)->tucaoWithId(tucaoId));

    // Its author deletes it: gone from the page at once, and from the site.
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    QVERIFY(openChapter());
    reader = app.reader();
    QTRY_VERIFY_WITH_TIMEOUT(app.tucaoViewWithId(tucaoId), 15000);
    app.strip()->tucaoMenuView()->playTucaoBtn();
    app.longPress(app.tucaoViewWithId(tucaoId));
    QTRY_VERIFY(reader->tucaoEditManager());
    QTRY_VERIFY(app.item(QStringLiteral("tucaoEditDelete")));
    QVERIFY(app.click(QStringLiteral("tucaoEditDelete")));
    QVERIFY(!app.playback(0)->tucaoWithId(tucaoId));
    QTRY_COMPARE_WITH_TIMEOUT(app.layer->progressText(), VORATucaoPublisher::deleteSuccessText, 10000);
    QTRY_VERIFY(!reader->tucaoEditManager());
    QVERIFY(!app.tucaoViewWithId(tucaoId));
    QVERIFY(!siteTucaoWithId(pageId, tucaoId));
    QVERIFY(!siteTucao(pageId).isEmpty());
}

QTEST_MAIN(TestTucaoReader)
#include "tst_tucaoreader.moc"
