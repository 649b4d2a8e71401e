// The reader's panels drawn by their real QML in an offscreen window, each
// with a real panel object over the store and the in-process reference site,
// and a stand-in reader screen that records what the panels ask of it: the
// clicks reach the panel (sort, delete, open a row, the dimming button, the
// brightness slider and its close button, the help view) and the rows show
// what the panel holds; the rules themselves are tst_readerpanels_rules'.
// With QUORIN_WRITE_SCREENSHOTS=1 each panel is written to docs/screenshots.

#include "AppTestWindow.h"
#include "../reader/ReaderPanelsTestSupport.h"
#include "VORAImageProvider.h"
#include "core/VORAUserConfig.h"
#include "reader/VORAAdjustLuminanceView.h"
#include "reader/VORABookmarkManager.h"
#include "reader/VORAChapterListModel.h"
#include "reader/VORAChapterManager.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSGRendererInterface>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {
// One panel component in a 1024 x 768 window.
struct PanelWindow
{
    QQuickView view;

    PanelWindow(const QString &file, const QVariantMap &properties)
    {
        view.engine()->addImageProvider(QStringLiteral("quorin"), new VORAImageProvider);
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.resize(1024, 768);
        view.setInitialProperties(properties);
        view.setSource(QUrl(QStringLiteral("qrc:/Quorin/qml/") + file));
        view.show();
    }
    bool ready() const { return view.status() == QQuickView::Ready && view.rootObject(); }
    QQuickItem *item(const QString &name) const
    {
        const QList<QQuickItem *> list = namedItems(view.rootObject(), name);
        return list.isEmpty() ? nullptr : list.first();
    }
    QString text(const QString &name) const
    {
        QQuickItem *it = item(name);
        return it ? it->property("text").toString() : QString();
    }
    // Clicks the centre of a visible item, or a point of the window.
    bool click(const QString &name) { return clickItem(&view, item(name)); }
    void clickAt(QPoint point)
    {
        view.grabWindow();
        QTest::mouseClick(&view, Qt::LeftButton, {}, point);
    }
    // The side panel came to rest at the right edge.
    bool restingAtRightEdge() const
    {
        QQuickItem *panel = item(QStringLiteral("sidePanel"));
        return panel && qFuzzyCompare(panel->x() + panel->width(), qreal(view.width()));
    }
    void shot(const char *name) { writeShot(&view, QLatin1String(name)); }
};

QVariantMap withManager(QObject *manager)
{
    return {{QStringLiteral("manager"), QVariant::fromValue(manager)}};
}
} // namespace

class TestReaderPanels : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void bookmarkPanel();
    void chapterPanel();
    void brightnessPanel();
    void helpView();

private:
    CatalogueTestEnvironment m_env;
};

void TestReaderPanels::initTestCase()
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QVERIFY(m_env.start());
}

void TestReaderPanels::cleanup()
{
    clearBookmarks();
}

void TestReaderPanels::bookmarkPanel()
{
    const QDateTime base(QDate(2024, 5, 1), QTime(9, 0), Qt::LocalTime);
    const auto first = fetchComic(QStringLiteral("10001"));
    const auto second = fetchComic(QStringLiteral("10002"));
    QVERIFY(first && second);
    storeBookmark(QStringLiteral("10001"), QStringLiteral("第1话"), QStringLiteral("900001"), 0, base, first->coverUrl);
    storeBookmark(QStringLiteral("10002"), QStringLiteral("第2话"), QStringLiteral("900002"), 4, base.addDays(1), second->coverUrl);
    storeBookmark(QStringLiteral("10001"), QStringLiteral("第3话"), QStringLiteral("900003"), 9, base.addDays(2), first->coverUrl);
    RecordingHooks hooks;
    VORABookmarkManager manager;
    manager.setReadHomeController(&hooks);
    PanelWindow w(QStringLiteral("ReaderBookmarkPanel.qml"), withManager(&manager));
    QVERIFY(w.ready());
    const auto infoOf = [&](int row) {
        QQuickItem *it = w.item(QStringLiteral("bookmarkRow%1").arg(row));
        const QList<QQuickItem *> info = it ? namedItems(it, QStringLiteral("bookmarkInfo")) : QList<QQuickItem *>();
        return info.isEmpty() ? QString() : info.first()->property("text").toString();
    };

    // The rows show the panel's list.
    QTRY_VERIFY(w.item(QStringLiteral("bookmarkRow2")));
    QCOMPARE(infoOf(0), QStringLiteral("10001_第3话_第10页"));
    QTRY_VERIFY(w.restingAtRightEdge());
    w.shot("reader-bookmark-panel.png");

    // The sort button reaches the panel; the rows follow.
    QVERIFY(w.click(QStringLiteral("bookmarkSortButton")));
    QTRY_COMPARE(infoOf(0), QStringLiteral("10001_第1话_第1页"));

    // The cross offers "删除"; confirming removes the row.
    QVERIFY(w.click(QStringLiteral("deleteAction1")));
    QTRY_VERIFY(w.item(QStringLiteral("deleteConfirm1")));
    QTRY_COMPARE(w.item(QStringLiteral("bookmarkContent1"))->x(), -w.item(QStringLiteral("deleteConfirm1"))->width());
    QVERIFY(w.click(QStringLiteral("deleteConfirm1")));
    QTRY_VERIFY(!w.item(QStringLiteral("bookmarkRow2")));
    QCOMPARE(pageIdsOf(manager.mybookmarkList()), (QStringList{"900001", "900003"}));

    // A tap opens the row's page through the reader screen and closes the panel.
    QVERIFY(w.click(QStringLiteral("bookmarkRow1")));
    QCOMPARE(hooks.calls, QStringList{"bookmark:900003"});
    QVERIFY(manager.isClosing());
}

void TestReaderPanels::chapterPanel()
{
    const auto comic = fetchComic(QStringLiteral("10001"));
    QVERIFY(comic);
    RecordingHooks hooks;
    VORAChapterManager manager(comic->chapterList.at(2).chapterId, comic->comicId);
    manager.setReadHomeController(&hooks);
    manager.setComicInfoDTO(*comic);
    PanelWindow w(QStringLiteral("ReaderChapterPanel.qml"), withManager(&manager));
    QVERIFY(w.ready());
    QTRY_VERIFY(w.item(QStringLiteral("chapterRow2")));
    QCOMPARE(w.text(QStringLiteral("chapterCount")), QStringLiteral("当前共有%1章").arg(comic->chapterList.size()));
    QTRY_VERIFY(w.restingAtRightEdge());
    w.shot("reader-chapter-panel.png");

    QVERIFY(w.click(QStringLiteral("chapterSortButton")));
    QTRY_COMPARE(w.item(QStringLiteral("chapterRow0"))->property("chapterId").toString(), comic->chapterList.last().chapterId);

    // The dimming button beside the panel closes it, asking nothing of the reader.
    QSignalSpy removed(&manager, &VORAReaderSidePanel::removeFromSuperview);
    w.clickAt(QPoint(300, 400));
    QVERIFY(manager.isClosing());
    QTRY_COMPARE(removed.count(), 1);
    QVERIFY(hooks.calls.isEmpty());
}

void TestReaderPanels::brightnessPanel()
{
    VORAUserConfig::shareUserConfigInstance()->setLuminanceValue(0.3);
    VORAAdjustLuminanceView manager;
    PanelWindow w(QStringLiteral("ReaderLuminancePanel.qml"), withManager(&manager));
    QVERIFY(w.ready());
    QQuickItem *panel = w.item(QStringLiteral("luminancePanel"));
    QQuickItem *slider = w.item(QStringLiteral("luminanceSlider"));
    QQuickItem *handle = w.item(QStringLiteral("luminanceHandle"));
    QVERIFY(panel && slider && handle);
    QVERIFY(qAbs(handle->x() / (slider->width() - handle->width()) - manager.sliderValue()) < 1e-3);
    w.shot("reader-luminance-panel.png");

    // The slider's left end reaches the panel; the handle follows.
    w.clickAt(slider->mapToScene(QPointF(2, slider->height() / 2)).toPoint());
    QCOMPARE(manager.sliderValue(), 0.0);
    QTRY_VERIFY(handle->x() < 1);

    // A tap on the panel keeps it; one beside it closes it.
    QSignalSpy removed(&manager, &VORAAdjustLuminanceView::removeFromSuperview);
    w.clickAt(panel->mapToScene(QPointF(6, 6)).toPoint());
    QCOMPARE(removed.count(), 0);
    w.clickAt(QPoint(40, 40));
    QCOMPARE(removed.count(), 1);
}

void TestReaderPanels::helpView()
{
    PanelWindow w(QStringLiteral("ReaderHelpView.qml"), {});
    QVERIFY(w.ready());
    QVERIFY(w.item(QStringLiteral("helpZoneUp"))); // landscape: the edge zones
    QVERIFY(w.item(QStringLiteral("helpZoneDown")));
    w.shot("reader-help-view.png");
    QSignalSpy dismissed(w.view.rootObject(), SIGNAL(dismissed()));
    w.clickAt(QPoint(512, 300));
    QCOMPARE(dismissed.count(), 1);

    w.view.resize(768, 1024); // portrait: one zone
    QTRY_VERIFY(!w.item(QStringLiteral("helpZoneUp")));
    QVERIFY(w.item(QStringLiteral("helpZoneMenu")));
}

QTEST_MAIN(TestReaderPanels)
#include "tst_readerpanels.moc"
