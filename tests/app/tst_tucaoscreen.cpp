// The tucao components in a real offscreen window, on their own: the overlay
// over a zoomed image container, the menu bar's switch and pictures, the input
// view to a placed tucao, and the editing layer dragged and closed (the same
// flows in the whole reader are tst_tucaoreader's). With
// QUORIN_WRITE_SCREENSHOTS=1 each is written to docs/screenshots.

#include "AppTestWindow.h"
#include "../catalogue/CatalogueTestSupport.h"
#include "../tucao/TucaoTestSupport.h"
#include "core/VORAUserConfig.h"
#include "tucao/VORATuCaoEditManager.h"
#include "tucao/VORATuCaoInputView.h"
#include "tucao/VORATuCaoMenuView.h"
#include "tucao/VORATucaoGeometry.h"
#include "tucao/VORATucaoPlayback.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {
const QString fontFamily = QStringLiteral("Noto Sans CJK SC");

QList<QQuickItem *> itemsNamed(QQuickItem *from, const QString &name) { return namedItems(from, name); }
} // namespace

class TestTucaoScreen : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void overlayFollowsZoom();
    void menuBarSwitch();
    void inputToPlacing();
    void editLayer();

private:
    // Creates a component of the app's QML module over parent with the given
    // properties set before it completes.
    QQuickItem *create(const QString &file, QQuickItem *parent, const QVariantMap &properties);
    QQuickItem *item(const QString &name) const;
    // A page under the components, as the reader shows one (fitted to 1004 points).
    QQuickItem *backdrop(const QSizeF &image);
    bool click(const QString &name);
    void screenshot(const QString &name);

    TestHome m_home;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};

void TestTucaoScreen::initTestCase()
{
    VORAAppGlobalData::shareAppGlobalData();
}

void TestTucaoScreen::init()
{
    m_engine = std::make_unique<QQmlEngine>();
    m_window = std::make_unique<QQuickWindow>();
    m_window->resize(1024, 768);
    m_window->setColor(QColor(QStringLiteral("#1B1C2B")));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void TestTucaoScreen::cleanup()
{
    m_window.reset();
    m_engine.reset();
    VORAAppGlobalData::shareAppGlobalData()->user()->setKey(std::nullopt);
}

QQuickItem *TestTucaoScreen::create(const QString &file, QQuickItem *parent, const QVariantMap &properties)
{
    QQmlComponent component(m_engine.get(), QUrl(QStringLiteral("qrc:/Quorin/qml/") + file));
    if (component.isError()) {
        qWarning() << component.errors();
        return nullptr;
    }
    QObject *object = component.beginCreate(m_engine->rootContext());
    auto *it = qobject_cast<QQuickItem *>(object);
    if (!it) {
        delete object;
        return nullptr;
    }
    it->setParentItem(parent);
    it->setParent(parent);
    for (auto p = properties.cbegin(); p != properties.cend(); ++p)
        it->setProperty(p.key().toUtf8().constData(), p.value());
    component.completeCreate();
    return it;
}

QQuickItem *TestTucaoScreen::item(const QString &name) const
{
    const QList<QQuickItem *> all = itemsNamed(m_window->contentItem(), name);
    return all.isEmpty() ? nullptr : all.first();
}

QQuickItem *TestTucaoScreen::backdrop(const QSizeF &image)
{
    QQmlComponent pageComponent(m_engine.get());
    pageComponent.setData("import QtQuick\nRectangle { color: '#F4EFE6'; transformOrigin: Item.TopLeft;"
                          " Rectangle { x: 60; y: 80; width: parent.width - 120; height: parent.height - 160;"
                          " color: 'white'; border.color: '#2E3047'; border.width: 3 } }",
                          QUrl());
    auto *page = qobject_cast<QQuickItem *>(pageComponent.create());
    if (!page)
        return nullptr;
    page->setParentItem(m_window->contentItem());
    page->setParent(m_window.get());
    page->setSize(QSizeF(1004, VORATucaoGeometry::fittedHeight(image, 1004)));
    return page;
}

bool TestTucaoScreen::click(const QString &name)
{
    return clickItem(m_window.get(), item(name));
}

void TestTucaoScreen::screenshot(const QString &name)
{
    QVERIFY(writeShot(m_window.get(), name + QStringLiteral(".png")));
}

void TestTucaoScreen::overlayFollowsZoom()
{
    signInLocally(QStringLiteral("100001"));
    const QSizeF image(800, 1130);
    const qreal viewWidth = 1004;

    // A page image container as the page view makes it: the fitted size, zoomed
    // by scale about its top-left corner.
    QQuickItem *container = backdrop(image);
    QVERIFY(container);
    QCOMPARE(container->width(), viewWidth);

    VORATucaoPlayback playback;
    playback.setImageSize(image);
    QList<VORATucao> list = makeTucaoList(3);
    for (int i = 0; i < list.size(); ++i) { // spread over the page
        list[i].x = 90 + 200 * i;
        list[i].y = 160 + 120 * i;
        list[i].width = 240;
        list[i].height = 70;
    }
    list[1].userId = QStringLiteral("100001");
    list[1].content = QStringLiteral("这是我自己的吐槽，长按可以编辑");
    playback.setTucaoList(list);
    QVERIFY(create(QStringLiteral("TucaoOverlay.qml"), container,
                   {{"playback", QVariant::fromValue<QObject *>(&playback)}, {"fontFamily", fontFamily}}));
    playback.nextPageTucao();
    QTRY_COMPARE(itemsNamed(container, QStringLiteral("tucaoView")).size(), 3);

    auto viewOf = [&](const QString &content) -> QQuickItem * {
        for (QQuickItem *v : itemsNamed(container, QStringLiteral("tucaoView"))) {
            if (v->property("content").toString() == content)
                return v;
        }
        return nullptr;
    };
    for (const VORATucao &t : list) {
        QQuickItem *v = viewOf(t.content);
        QVERIFY(v);
        const QRectF frame = VORATucaoGeometry::setTucaoDisplayFrameWithView(t, image, viewWidth);
        QCOMPARE(QRectF(v->position(), v->size()), frame);
        QCOMPARE(v->property("isOwn").toBool(), t.userId == QLatin1String("100001"));
    }
    QQuickItem *own = viewOf(list[1].content);
    QTRY_COMPARE(itemsNamed(own, QStringLiteral("tucaoLabel")).first()->opacity(), 1.0);
    screenshot(QStringLiteral("tucao-overlay"));

    // Zoomed to 1.5 and scrolled: on screen the tucao move with the image.
    container->setScale(1.5);
    container->setY(-200);
    const QRectF frame = VORATucaoGeometry::setTucaoDisplayFrameWithView(list[1], image, viewWidth);
    QCOMPARE(own->mapToScene(QPointF(0, 0)), QPointF(frame.x() * 1.5, frame.y() * 1.5 - 200));

}

void TestTucaoScreen::menuBarSwitch()
{
    VORAUserConfig::shareUserConfigInstance()->setIsDisplayTuCao(false);
    VORATuCaoMenuView menu;
    menu.setTitle(QStringLiteral("第1话 初遇"));
    menu.setPageLabel(QStringLiteral("3/24"));
    menu.setTucaoTotal(205);
    QQuickItem *bar = create(QStringLiteral("TucaoMenuBar.qml"), m_window->contentItem(),
                             {{"menu", QVariant::fromValue<QObject *>(&menu)}, {"fontFamily", fontFamily}});
    QVERIFY(bar);
    bar->setWidth(1024);
    QCOMPARE(item(QStringLiteral("tucaoShowButton"))->property("picture").toString(), QStringLiteral("tucaoshow.png"));
    QCOMPARE(item(QStringLiteral("tucaoPlayButton"))->property("picture").toString(), QStringLiteral("tucaosuspend.png"));

    QSignalSpy show(&menu, &VORATuCaoMenuView::showTucao);
    QVERIFY(click(QStringLiteral("tucaoShowButton")));
    QCOMPARE(show.count(), 1);
    QVERIFY(menu.showTucaoflag());
    QCOMPARE(item(QStringLiteral("tucaoShowButton"))->property("picture").toString(), QStringLiteral("tucaohide.png"));
    QCOMPARE(item(QStringLiteral("tucaoShowButton"))->property("pressedPicture").toString(),
             QStringLiteral("tucaohidepressed.png"));
    QCOMPARE(item(QStringLiteral("tucaoPlayButton"))->property("picture").toString(), QStringLiteral("tucaostart.png"));
    QVERIFY(VORAUserConfig().isDisplayTuCao());

    QSignalSpy next(&menu, &VORATuCaoMenuView::nextGroupRequested);
    QSignalSpy write(&menu, &VORATuCaoMenuView::writeTucaoRequested);
    QVERIFY(click(QStringLiteral("tucaoNextButton")));
    QVERIFY(click(QStringLiteral("tucaoWriteButton")));
    QCOMPARE(next.count(), 1);
    QCOMPARE(write.count(), 1);
    QCOMPARE(item(QStringLiteral("tucaoMenuTotal"))->property("text").toString(), QStringLiteral("吐槽 205"));
    screenshot(QStringLiteral("tucao-menubar"));
}

void TestTucaoScreen::inputToPlacing()
{
    signInLocally(QStringLiteral("100001"));
    QVERIFY(backdrop(QSizeF(800, 1130)));
    VORATuCaoInputView input;
    QQuickItem *view = create(QStringLiteral("TucaoInputView.qml"), m_window->contentItem(),
                              {{"input", QVariant::fromValue<QObject *>(&input)}, {"fontFamily", fontFamily}});
    QVERIFY(view);
    QCOMPARE(input.screenSize(), QSizeF(1024, 768));
    QVERIFY(!view->isVisible());
    QVERIFY(input.popUpTucaoInputView());
    QVERIFY(view->isVisible());
    // The field takes the focus: in landscape the box rises.
    QTRY_VERIFY(input.keyboardOpen());
    QTRY_COMPARE(item(QStringLiteral("tucaoInputBox"))->y(), input.inputBoxRect().y());
    QCOMPARE(input.inputBoxRect().y(), (768.0 - 200) / 2 - 200);

    // Typed and confirmed: the hint, and the next touch places it.
    item(QStringLiteral("TucaotextFiled"))->forceActiveFocus();
    for (char c : QByteArrayLiteral("nice page"))
        QTest::keyClick(m_window.get(), c);
    QCOMPARE(input.text(), QStringLiteral("nice page"));
    screenshot(QStringLiteral("tucao-input"));
    QVERIFY(click(QStringLiteral("tucaoInputConfirm")));
    QVERIFY(input.isLocation());
    QVERIFY(!input.keyboardOpen());
    QTRY_VERIFY(item(QStringLiteral("tucaoPlacingHint")));
    QVERIFY(!item(QStringLiteral("tucaoInputBox")));
    screenshot(QStringLiteral("tucao-placing"));
    QSignalSpy place(&input, &VORATuCaoInputView::placeTucao);
    QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, QPoint(640, 500));
    QCOMPARE(place.count(), 1);
    QCOMPARE(place.first().at(1).toPointF(), QPointF(640, 500));
    QVERIFY(!view->isVisible());
}

void TestTucaoScreen::editLayer()
{
    signInLocally(QStringLiteral("100001"));
    VORATucaoPagePlacement placement;
    placement.imageSize = QSizeF(800, 1130);
    placement.imageViewSize = QSizeF(1004, VORATucaoGeometry::fittedHeight(placement.imageSize, 1004));
    VORATuCaoEditManager edit(QStringLiteral("这一格太好笑了"), QPointF(500, 300), placement, 1);
    QVERIFY(backdrop(placement.imageSize));
    QQuickItem *layer = create(QStringLiteral("TucaoEditMenu.qml"), m_window->contentItem(),
                               {{"edit", QVariant::fromValue<QObject *>(&edit)}, {"fontFamily", fontFamily}});
    QVERIFY(layer);
    QCOMPARE(layer->size(), QSizeF(1024, 768));
    QQuickItem *frame = item(QStringLiteral("tucaoEditFrame"));
    QVERIFY(frame);
    QCOMPARE(QRectF(frame->position(), frame->size()), edit.editRect());
    screenshot(QStringLiteral("tucao-edit"));

    // Delete on a new tucao: nothing to send, the layer closes.
    QSignalSpy deleteRequested(&edit, &VORATuCaoEditManager::deleteTucaoRequested);
    QVERIFY(click(QStringLiteral("tucaoEditDelete")));
    QVERIFY(deleteRequested.isEmpty());
    QVERIFY(!edit.menuExpanded());
    QTRY_VERIFY(edit.isRemoved());
    QTRY_VERIFY(!layer->isVisible());
}

QTEST_MAIN(TestTucaoScreen)
#include "tst_tucaoscreen.moc"
