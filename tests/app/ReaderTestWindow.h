#pragma once

// The app window with the reader's parts at hand, for the reader window suites.

#include "AppTestWindow.h"
#include "../catalogue/CatalogueTestSupport.h"
#include "net/VORAGetComicBasicInfoService.h"
#include "reader/VORAComicViewManager.h"
#include "reader/VORAPictureImageView.h"
#include "reader/VORAReadHomePageViewController.h"

struct ReaderTestWindow : AppTestWindow
{
    using AppTestWindow::AppTestWindow;

    VORAReadHomePageViewController *reader() const { return root()->readHomePageViewController(); }
    VORAComicViewManager *strip() const { return reader() ? reader()->comicViewManager() : nullptr; }
    VORAPictureImageView *page(int index) const { return strip() ? strip()->pageViewAt(index) : nullptr; }
    bool pageShown(int index) const { return page(index) && page(index)->state() == VORAPictureImageView::Shown; }
    // The strip at rest on the page.
    bool restsOn(int index) const
    {
        QQuickItem *strip = item(QStringLiteral("readerStrip"));
        return strip && !strip->property("moving").toBool()
            && qAbs(strip->property("contentX").toReal() - index * strip->width()) < 0.5;
    }
    // The bars shown, come to rest with the tucao bar above the bottom bar.
    bool showBars() const
    {
        reader()->showMenu();
        return QTest::qWaitFor([&] {
            QQuickItem *top = item(QStringLiteral("readerTopBar"));
            QQuickItem *bar = item(QStringLiteral("readerTucaoMenuBar"));
            QQuickItem *bottom = item(QStringLiteral("readerBottomBar"));
            return top && bar && bottom && top->y() == 0 && qFuzzyCompare(bar->y() + bar->height(), bottom->y())
                && qFuzzyCompare(bottom->y() + bottom->height(), qreal(window()->height()));
        });
    }
};

// The comic's chapters as the site lists them (empty when it does not answer).
inline QList<VORAChapterInfoDTO> siteChapters(const QString &comicId)
{
    VORAGetComicBasicInfoService service;
    service.comicId = comicId;
    ServiceWaiter waiter;
    service.asynchronousRequestWithDelegate(&waiter);
    if (!QTest::qWaitFor([&] { return waiter.done; }, 10000) || !service.comicInfo())
        return {};
    return service.comicInfo()->chapterList;
}
