// The bookshelf badge and the side panel of updated comics wired into the
// shell, in a real offscreen window against the in-process reference site:
// the update check marks two shelf comics, the rail's bookshelf button counts
// them, the preference hides the count, the badge opens the panel and a row
// opens the comic's page. Which comics the check marks is tests/store/tst_bookshelfsite's.
// With QUORIN_WRITE_SCREENSHOTS=1 the badge and the panel go to docs/screenshots.

#include "AppTestWindow.h"
#include "VORAGengXinView.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORAUserConfig.h"
#include "store/VORABookShelfManager.h"

#include <QSignalSpy>

namespace {
VORABookShelf shelved(const QString &id, qint64 updateSecs)
{
    VORABookShelf e;
    e.comicId = id;
    e.comicName = id;
    e.updateTime = QDateTime::fromSecsSinceEpoch(updateSecs, Qt::UTC);
    e.adddateTime = e.updateTime;
    return e;
}
}

class TestShelfBadge : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void updatedComicsOnTheBadgeAndThePanel();

private:
    TestHome m_home;
    std::unique_ptr<QuorinSite> m_site;
};

void TestShelfBadge::initTestCase()
{
    m_site = startSite(m_home);
    QVERIFY(m_site);
}

void TestShelfBadge::updatedComicsOnTheBadgeAndThePanel()
{
    AppTestWindow app(QSize(1366, 768));
    QVERIFY(app.started());
    if (!app.item(QStringLiteral("button105")))
        QSKIP("this build offers no bookshelf button");
    auto *manager = VORABookShelfManager::sharedManager();
    QVERIFY(manager);

    // Two comics older than the site's chapters, one from the future.
    const qint64 future = QDateTime::currentSecsSinceEpoch() + 365 * 86400;
    manager->addBookshelfList({shelved("10001", 1000), shelved("10002", future), shelved("10003", 1000)});
    QVERIFY(!app.item(QStringLiteral("badge105")));
    QSignalSpy checked(manager, &VORABookShelfManager::updateCheckFinished);
    manager->syncBookshelfFromServer();
    QTRY_COMPARE_WITH_TIMEOUT(checked.count(), 1, 20000);
    QTRY_VERIFY(app.item(QStringLiteral("badge105")));
    QCOMPARE(app.item(QStringLiteral("badge105"))->property("count").toString(), QStringLiteral("2"));

    const QString countChange = QString::fromLatin1(VORANotificationNames::bookshelfLatestCountChange);
    VORAUserConfig::shareUserConfigInstance()->setIsNotifyUpdate(false);
    NotificationCenter::defaultCenter().post(countChange);
    QTRY_VERIFY(!app.item(QStringLiteral("badge105")));
    VORAUserConfig::shareUserConfigInstance()->setIsNotifyUpdate(true);
    NotificationCenter::defaultCenter().post(countChange);
    QTRY_VERIFY(app.item(QStringLiteral("badge105")));

    // The badge opens the panel with the two comics, as the site names them.
    QVERIFY(app.click(QStringLiteral("badge105")));
    QTRY_COMPARE(app.items(QStringLiteral("gengXinRow")).size(), 2);
    app.shot("bookshelf-badge.png");

    // A row opens the comic's page and the panel goes.
    QQuickItem *row = app.items(QStringLiteral("gengXinRow")).constLast();
    const QString comicId = app.root()->gengXinView()->data(app.root()->gengXinView()->index(row->property("index").toInt()),
                                                            VORAGengXinView::ComicIdRole).toString();
    QVERIFY(comicId == QStringLiteral("10001") || comicId == QStringLiteral("10003"));
    QVERIFY(clickItem(app.window(), row));
    QTRY_COMPARE(app.root()->comicDetail().value(QStringLiteral("comicId")).toString(), comicId);
    QVERIFY(!app.root()->gengXinView()->isOpen());
}

QTEST_MAIN(TestShelfBadge)
#include "tst_shelfbadge.moc"
