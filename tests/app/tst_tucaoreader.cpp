// The tucao on the reader screen, in the real app shell in an offscreen window
// against the in-process reference site: the crowded first page of comic
// 10001 plays its tucao on their rectangles of the image, through a double-tap
// zoom and in both read modes; the tucao menu's buttons reach the playback;
// writing one is wired from the menu through the input view and the placing
// click to the site, and a long press opens one's own for editing. The rules
// and the site's round trips are tests/tucao's. With
// QUORIN_WRITE_SCREENSHOTS=1 the playing page is written to docs/screenshots
// in both read modes.

#include "ReaderTestWindow.h"
#include "core/VORAUserConfig.h"
#include "reader/VORAPictureScrollView.h"
#include "reader/VORAReadComicManager.h"
#include "tucao/VORATuCaoEditManager.h"
#include "tucao/VORATuCaoInputView.h"
#include "tucao/VORATuCaoMenuView.h"
#include "tucao/VORATucaoPlayback.h"
#include "tucao/VORATucaoPublisher.h"

#include <QDateTime>

#include <cmath>
#include <memory>

namespace {
const QString crowdedComic = QStringLiteral("10001");
const QString emptyText = QStringLiteral("吐槽不能为空，请输入吐槽内容");

struct App : ReaderTestWindow
{
    using ReaderTestWindow::ReaderTestWindow;

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
    // Held past the press-and-hold interval, until the edit opens.
    bool longPress(QQuickItem *it) const
    {
        const QPoint at = centreOf(it);
        QTest::mousePress(window(), Qt::LeftButton, {}, at);
        const bool opened = QTest::qWaitFor([&] { return reader()->tucaoEditManager() != nullptr; }, 3000);
        QTest::mouseRelease(window(), Qt::LeftButton, {}, at);
        return opened;
    }
};

// Where a tucao of the page stands in the window, from the page's zooming
// state: image pixels -> points of the fitted image -> zoom -> scroll.
QRectF expectedSceneRect(const VORAPictureImageView *page, const QVariantMap &tucao, const QQuickItem *strip)
{
    const VORAPictureScrollView *sv = page->scrollView();
    const qreal sx = sv->imageWidth() / page->photoWidth() * sv->zoomScale();
    const qreal sy = sv->imageHeight() / page->photoHeight() * sv->zoomScale();
    const QPointF origin = strip->mapToScene(QPointF(page->x() - strip->property("contentX").toReal(), 0));
    return QRectF(origin.x() + sv->containerX() + tucao.value(QStringLiteral("x")).toReal() * sx - sv->contentX(),
                  origin.y() + sv->containerY() + tucao.value(QStringLiteral("y")).toReal() * sy - sv->contentY(),
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
    void tucaoPlayOverThePage();
    void writingOnesOwn();

private:
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
        const QRectF expected = expectedSceneRect(page, tucao, strip);
        if (!near(drawn, expected)) {
            qWarning() << "tucao" << tucao.value(QStringLiteral("tucaoId")) << "drawn at" << drawn << "expected" << expected;
            return false;
        }
    }
    return true;
}

void TestTucaoReader::tucaoPlayOverThePage()
{
    VORAUserConfig::shareUserConfigInstance()->setIsVerticalScreen(false);
    VORAUserConfig::shareUserConfigInstance()->setIsDisplayTuCao(true);
    App app(QSize(1366, 768));
    QVERIFY(app.started());
    app.root()->openReader(crowdedComic, QString(), VORAReadComicManager::kFirstPage);
    VORAReadHomePageViewController *reader = app.reader();
    QVERIFY(reader);
    QTRY_VERIFY_WITH_TIMEOUT(reader->pageCount() > 0 && app.pageShown(0), 15000);

    // After the start delay they come in, one by one, on their rectangles.
    VORATucaoPlayback *playback = app.playback(0);
    QTRY_VERIFY_WITH_TIMEOUT(app.tucaoViews().size() >= 3, 15000);
    QCOMPARE(app.tucaoViews().size(), playback->count());
    QVERIFY(tucaoOnTheirRectangles(app));

    // The bars bring the tucao menu with the page's title, page and count.
    QVERIFY(app.showBars());
    QCOMPARE(app.item(QStringLiteral("tucaoMenuTitle"))->property("text").toString(), reader->title());
    QCOMPARE(app.item(QStringLiteral("tucaoMenuPage"))->property("text").toString(), reader->pageLabel());
    app.shot("reader-tucao-landscape.png");

    // Paused from the menu: the tucao on screen stay still; the button shows the menu's picture.
    QVERIFY(app.click(QStringLiteral("tucaoPlayButton")));
    QTRY_VERIFY(!playback->isPlaying());
    QCOMPARE(app.item(QStringLiteral("tucaoPlayButton"))->property("picture").toString(),
             app.strip()->tucaoMenuView()->playButtonPicture());
    reader->hideMenu();

    // A double tap zooms the page, the first tap's toggle of the bars
    // cancelled: the tucao move and grow with the image.
    const QPoint middle(683, 384);
    VORAPictureScrollView *sv = app.page(0)->scrollView();
    app.window()->grabWindow();
    QTest::mouseDClick(app.window(), Qt::LeftButton, {}, middle);
    QTRY_COMPARE(sv->zoomScale(), 1.64);
    QVERIFY(!app.strip()->toggleMenuPending());
    QTRY_VERIFY(!sv->isAnimating());
    QTRY_VERIFY(tucaoOnTheirRectangles(app));
    QTest::mouseDClick(app.window(), Qt::LeftButton, {}, middle);
    QTRY_COMPARE(sv->zoomScale(), 1.0);
    QVERIFY(!app.strip()->toggleMenuPending() && !reader->menuShown());

    // Portrait reading: the page and its tucao in the column inside the window.
    reader->swtichScreen();
    QTRY_COMPARE(reader->getCurrentScreenState(), 0);
    QTRY_VERIFY(tucaoOnTheirRectangles(app));
    QVERIFY(app.showBars());
    app.shot("reader-tucao-portrait.png");

    // Switched off from the menu: they go.
    QVERIFY(app.click(QStringLiteral("tucaoShowButton")));
    QVERIFY(!app.strip()->isShowTucao());
    QTRY_VERIFY(app.tucaoViews().isEmpty());
}

void TestTucaoReader::writingOnesOwn()
{
    VORAUserConfig::shareUserConfigInstance()->setIsVerticalScreen(true);
    VORAUserConfig::shareUserConfigInstance()->setIsDisplayTuCao(true);
    App app(QSize(1366, 768));
    QVERIFY(app.started());
    const auto openChapter = [&] {
        app.root()->openReader(crowdedComic, QString(), VORAReadComicManager::kFirstPage);
        return app.reader() && QTest::qWaitFor([&] { return app.pageShown(0) && app.page(0)->hasTucao(); }, 15000);
    };

    // Signed in (a signed-out writer is sent to the user panel: tst_userpanel),
    // the playback paused: the text, then the click that places it.
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    QVERIFY(openChapter());
    VORAReadHomePageViewController *reader = app.reader();
    QTRY_VERIFY_WITH_TIMEOUT(app.playback(0)->showTucaoFlag(), 15000);
    app.strip()->tucaoMenuView()->playTucaoBtn();
    QVERIFY(app.showBars());
    QVERIFY(app.click(QStringLiteral("tucaoWriteButton")));
    QTRY_VERIFY(app.item(QStringLiteral("TucaotextFiled")));
    QTRY_VERIFY(app.item(QStringLiteral("TucaotextFiled"))->hasActiveFocus());
    const QString text = QStringLiteral("reader was here %1").arg(QDateTime::currentMSecsSinceEpoch() % 100000);
    app.type(text);
    QCOMPARE(reader->tucaoInputView()->text(), text);
    app.shot("tucao-input.png");
    QVERIFY(app.click(QStringLiteral("tucaoInputConfirm")));
    QTRY_VERIFY(app.item(QStringLiteral("tucaoPlacingHint")));
    app.shot("tucao-placing.png");
    // The column lies in the middle of the window: the click is in its points.
    const QPoint click(683, 300);
    QTest::mouseClick(app.window(), Qt::LeftButton, {}, click);
    QTRY_VERIFY(reader->tucaoEditManager());
    QVERIFY(reader->tucaoEditManager()->editRect().contains(QPointF(click) - app.strip()->surfaceRect().topLeft()));
    // The editing layer covers the column, not the bars beside and below it.
    QTRY_VERIFY(app.item(QStringLiteral("readerTucaoEdit")));
    QQuickItem *layer = app.item(QStringLiteral("readerTucaoEdit"));
    QCOMPARE(QRectF(layer->mapToScene(QPointF(0, 0)), layer->size()), app.strip()->surfaceRect());

    // Confirmed: published (the site's copy is tests/tucao's), it stands on the page.
    QTRY_VERIFY(app.item(QStringLiteral("tucaoEditConfirm")));
    app.shot("tucao-edit.png");
    QVERIFY(app.click(QStringLiteral("tucaoEditConfirm")));
    QTRY_COMPARE_WITH_TIMEOUT(app.layer->progressText(), VORATucaoPublisher::publishSuccessText, 10000);
    QTRY_VERIFY(!reader->tucaoEditManager());
    const QString tucaoId = reader->tucaoPublisher()->tucaoDTO().tucaoId;
    QTRY_VERIFY(app.tucaoViewWithId(tucaoId));
    QVERIFY(tucaoOnTheirRectangles(app));

    // A long press opens one's own for editing; cancelled, it goes back.
    QVERIFY(app.longPress(app.tucaoViewWithId(tucaoId)));
    QTRY_VERIFY(app.item(QStringLiteral("tucaoEditCancel")));
    QVERIFY(app.click(QStringLiteral("tucaoEditCancel")));
    QTRY_VERIFY(!reader->tucaoEditManager());
    QVERIFY(app.playback(0)->tucaoWithId(tucaoId));
}

QTEST_MAIN(TestTucaoReader)
#include "tst_tucaoreader.moc"
