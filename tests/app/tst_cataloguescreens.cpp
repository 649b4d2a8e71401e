// The catalogue screens' wiring in a real offscreen window against the
// in-process reference site: a category opened from the shell's button, its
// menus, paged by a finger and by the wheel to its end, a keyword from the
// search cloud and the history, a result's detail page with its chapter list
// sorted, the purchase dialogs. The screens' rules are the catalogue suites'.
// With QUORIN_WRITE_SCREENSHOTS=1 each screen is written to docs/screenshots.

#include "AppTestWindow.h"
#include "../catalogue/CatalogueTestSupport.h"
#include "catalogue/VORAChapterView.h"
#include "catalogue/VORACloudView.h"
#include "catalogue/VORAComicHomePageView.h"
#include "catalogue/VORAComicListModel.h"
#include "catalogue/VORASearchView.h"
#include "catalogue/VORASortView.h"

#include <QSignalSpy>

#include <memory>

class TestCatalogueScreens : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void categoryPagedToItsEnd();
    void searchFromTheCloudThenDetailAndSort();
    void buyingAChapterThroughTheDialogs();

private:
    TestHome m_home;
    std::unique_ptr<QuorinSite> m_site;
};

void TestCatalogueScreens::initTestCase()
{
    m_site = startSite(m_home);
    QVERIFY(m_site);
}

void TestCatalogueScreens::categoryPagedToItsEnd()
{
    AppTestWindow app;
    QVERIFY(app.started());
    QTRY_VERIFY(app.item(QStringLiteral("button101")));

    QVERIFY(app.click(QStringLiteral("button101")));
    VORASortView *sort = app.root()->sortView();
    QVERIFY(sort);
    sort->setRequestDelay(40);
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("comic0")), 10000);

    // A click beside the open menu only closes it.
    QVERIFY(app.click(QStringLiteral("menu116")));
    QTRY_VERIFY(app.item(QStringLiteral("filter121")));
    QQuickItem *view = app.item(QStringLiteral("sortView"));
    app.tap(view->mapToScene(QPointF(view->width() / 2, view->height() - 60)).toPoint());
    QCOMPARE(sort->openMenu(), 0);
    QVERIFY(!app.root()->hasComicDetail());

    // The whole catalogue by update, clicked in its menu: two full pages, then the end.
    QVERIFY(app.click(QStringLiteral("menu115")));
    QTRY_VERIFY(app.item(QStringLiteral("filter130")));
    app.shot("category-menu.png");
    QSignalSpy answered(sort, &VORASortView::answered);
    QVERIFY(app.click(QStringLiteral("filter130")));
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 10000);
    QCOMPARE(sort->btnInt(), 130);
    app.shot("category-grid.png");

    // The next page by a finger pulling up past the footer, then by the wheel.
    QQuickItem *grid = app.item(QStringLiteral("sortGrid"));
    QVERIFY(grid);
    QMetaObject::invokeMethod(grid, "positionViewAtEnd");
    app.drag(grid, -260);
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 2, 10000);
    const QPoint wheelAt = app.centreOf(grid);
    QTRY_VERIFY_WITH_TIMEOUT((app.wheelDown(wheelAt), answered.count() == 3), 20000);
    QCOMPARE(sort->textPanel(), VORASortView::endOfCategoryText);
    // The end of the category is said under the last comic, not over it.
    QTRY_COMPARE(app.item(QStringLiteral("sortFooterText"))->property("text").toString(), sort->textPanel());
    QQuickItem *last = app.item(QStringLiteral("comic59"));
    QVERIFY(last);
    QVERIFY(last->mapRectToScene(QRectF(0, 0, last->width(), last->height())).bottom()
            <= app.item(QStringLiteral("sortFooterText"))->mapToScene(QPointF(0, 0)).y());
    app.shot("category-end.png");

    // The list layout, then a comic opens the detail page.
    QVERIFY(app.click(QStringLiteral("layoutButton")));
    QCOMPARE(sort->sortTableType(), 1);
    QMetaObject::invokeMethod(grid, "positionViewAtBeginning");
    QTRY_VERIFY(app.item(QStringLiteral("comic1")));
    app.shot("category-list.png");
    QVERIFY(app.click(QStringLiteral("comic1")));
    QTRY_VERIFY(app.root()->comicHomePageView());
    QCOMPARE(app.root()->comicHomePageView()->comicId(), sort->comicList()->comicAt(1)->comicId);
}

void TestCatalogueScreens::searchFromTheCloudThenDetailAndSort()
{
    AppTestWindow app;
    QVERIFY(app.started());
    QTRY_VERIFY(app.item(QStringLiteral("button107")));
    QVERIFY(app.click(QStringLiteral("button107")));
    VORASearchView *search = app.root()->searchView();
    QVERIFY(search);
    QTRY_COMPARE_WITH_TIMEOUT(search->cloudView()->buttonList().size(), 10, 10000);
    QTRY_VERIFY(app.item(QStringLiteral("cloud1001")));
    app.shot("search-cloud.png");

    // A typed search enters the history, drawn with its clock.
    search->searchButtonClicked(QStringLiteral("恋爱"));
    search->textDidChange(QStringLiteral("恋"));
    QTRY_VERIFY(app.item(QStringLiteral("historyClock")));
    QTRY_COMPARE(app.item(QStringLiteral("historyClock"))->property("status").toInt(), 1); // Image.Ready
    search->textDidChange(QString());

    // Keywords from the cloud until one finds comics.
    QSignalSpy answered(search, &VORASearchView::searchAnswered);
    bool found = false;
    for (int tag = 1001; tag <= 1010 && !found; ++tag) {
        if (search->resultsVisible())
            QVERIFY(app.click(QStringLiteral("closeResults")));
        const int before = int(answered.count());
        QVERIFY(app.click(QStringLiteral("cloud%1").arg(tag)));
        QTRY_VERIFY_WITH_TIMEOUT(answered.count() > before, 10000);
        found = search->comicList()->count() > 0;
    }
    QVERIFY(found);
    QTRY_VERIFY(app.item(QStringLiteral("result0")));
    QCOMPARE(app.item(QStringLiteral("resultHeader"))->property("text").toString(), search->headerText());
    app.shot("search-results.png");

    // The result's detail page.
    const QString comicId = search->comicList()->comicAt(0)->comicId;
    QVERIFY(app.click(QStringLiteral("result0")));
    VORAComicHomePageView *home = app.root()->comicHomePageView();
    QVERIFY(home);
    QCOMPARE(home->comicId(), comicId);
    QTRY_VERIFY_WITH_TIMEOUT(home->state() == VORAComicHomePageView::Shown, 10000);
    QTRY_VERIFY(app.item(QStringLiteral("chapter0")));
    QCOMPARE(app.item(QStringLiteral("detailName"))->property("text").toString(), home->headInfo().value("name").toString());
    app.shot("detail-page.png");

    // Sorting the chapters in the window.
    const QStringList serverOrder = home->chapterView()->chapterIds();
    QVERIFY(app.click(QStringLiteral("chapterSortButton")));
    QTRY_COMPARE(app.item(QStringLiteral("chapter0"))->property("chapterId").toString(), serverOrder.last());
    app.shot("detail-page-sorted.png");

    // Portrait: the detail page stacks its head over the chapters.
    app.window()->resize(768, 1024);
    QTRY_VERIFY(!app.root()->isLandscape());
    QTRY_VERIFY_WITH_TIMEOUT(home->state() == VORAComicHomePageView::Shown, 10000);
    app.shot("detail-page-portrait.png");
}

void TestCatalogueScreens::buyingAChapterThroughTheDialogs()
{
    AppTestWindow app;
    // The start-up's silent sign-in (refused: no key yet) must not land after ours.
    QVERIFY(app.started());
    QVERIFY(signInAs(QStringLiteral("reader"), QStringLiteral("reader123")));
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    global->appStatus()->setFromAppStore(0);

    app.root()->openComicDetail(QStringLiteral("10002"), QString(), QString());
    VORAComicHomePageView *home = app.root()->comicHomePageView();
    QTRY_VERIFY_WITH_TIMEOUT(home->state() == VORAComicHomePageView::Shown, 10000);
    int row = -1;
    for (int i = 0; i < home->chapterView()->count() && row < 0; ++i) {
        const VORAChapterInfoDTO &c = home->chapterView()->rowAt(i)->chapter;
        if (c.type == 2 && c.buyed == 0 && c.price > 0)
            row = i;
    }
    QVERIFY(row >= 0);
    const VORAChapterInfoDTO chapter = home->chapterView()->rowAt(row)->chapter;
    QTRY_VERIFY(app.item(QStringLiteral("chapter%1").arg(row)));
    QVERIFY(app.click(QStringLiteral("chapter%1").arg(row)));
    QTRY_VERIFY(app.item(QStringLiteral("alertBox")));
    QCOMPARE(app.item(QStringLiteral("alertMessage"))->property("text").toString(),
             QString::asprintf("购买此章节需要%dquorin币", int(chapter.price)));
    app.shot("detail-coin-alert.png");

    QSignalSpy read(home, &VORAComicHomePageView::readRequested);
    QVERIFY(app.click(QStringLiteral("alertButton1"))); // "购买此章节"
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("alertMessage"))
                                 && app.item(QStringLiteral("alertMessage"))->property("text").toString() == QStringLiteral("章节购买成功"),
                             10000);
    app.shot("detail-bought.png");
    QVERIFY(app.click(QStringLiteral("alertButton1"))); // "进去阅读"
    QTRY_COMPARE(read.count(), 1);
    QCOMPARE(read.first().at(1).toString(), chapter.chapterId);
}

QTEST_MAIN(TestCatalogueScreens)
#include "tst_cataloguescreens.moc"
