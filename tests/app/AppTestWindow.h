#pragma once

// The app shell started in a real (offscreen) window for the window suites,
// with the clicks, taps, swipes and drags a finger would make.

#include "QuorinSite.h"
#include "TestHome.h"
#include "VORAAppDelegate.h"
#include "VORAOverlayLayer.h"
#include "VORARootViewController.h"
#include "core/VORANotificationNames.h"
#include "platform/NotificationCenter.h"

#include <QGuiApplication>
#include <QPoint>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QSize>
#include <QTest>
#include <QWheelEvent>

#include <memory>

// Software drawing, and the in-process site in the home with the app pointed at it.
inline std::unique_ptr<QuorinSite> startSite(const TestHome &home)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    auto site = std::make_unique<QuorinSite>(QuorinSiteOptions{home.filePath(QStringLiteral("site"))});
    if (site->listen() == 0)
        return nullptr;
    qputenv("QUORIN_API_BASE", site->baseUrl().toString().toUtf8());
    return site;
}

// Every item of that name below from, the visible ones only unless hidden ones
// are asked for too (delegates are no QObject children of their views).
inline QList<QQuickItem *> namedItems(QQuickItem *from, const QString &name, bool hiddenToo = false)
{
    QList<QQuickItem *> found;
    QList<QQuickItem *> queue{from};
    while (!queue.isEmpty()) {
        QQuickItem *it = queue.takeFirst();
        if (!hiddenToo && !it->isVisible())
            continue;
        if (it->objectName() == name)
            found.append(it);
        queue.append(it->childItems());
    }
    return found;
}
// Positioners place their children when the scene is polished, before the next
// frame: lay the scene out first, or a button may still stand where its row began.
inline QPoint sceneCentre(QQuickWindow *window, QQuickItem *it)
{
    window->grabWindow();
    return it->mapToScene(QPointF(it->width() / 2, it->height() / 2)).toPoint();
}
inline bool clickItem(QQuickWindow *window, QQuickItem *it)
{
    if (!it)
        return false;
    QTest::mouseClick(window, Qt::LeftButton, {}, sceneCentre(window, it));
    return true;
}
// With QUORIN_WRITE_SCREENSHOTS=1, the window into docs/screenshots/, once pictures
// decoded off the main thread, fades and slides have arrived.
inline bool writeShot(QQuickWindow *window, const QString &name)
{
    if (qEnvironmentVariableIntValue("QUORIN_WRITE_SCREENSHOTS") != 1 || !window)
        return true;
    QTest::qWait(600);
    return window->grabWindow().save(QStringLiteral(QUORIN_SOURCE_DIR "/docs/screenshots/") + name);
}

struct AppTestWindow
{
    QObject observer;
    bool autoLoginAnswered = false; // the start-up's silent sign-in has been answered
    std::unique_ptr<VORAOverlayLayer> layer = std::make_unique<VORAOverlayLayer>();
    std::unique_ptr<VORAAppDelegate> delegate;

    explicit AppTestWindow(QSize size = QSize(1024, 768), bool showsWindow = true)
    {
        NotificationCenter::defaultCenter().addObserver(
            &observer, QString::fromUtf8(VORANotificationNames::userViewPostInfo),
            [this](const Notification &) { autoLoginAnswered = true; });
        delegate = std::make_unique<VORAAppDelegate>(layer.get());
        delegate->setShowsWindow(showsWindow);
        delegate->setInitialSize(size.width(), size.height());
        delegate->didFinishLaunching();
    }
    ~AppTestWindow()
    {
        NotificationCenter::defaultCenter().removeObserver(&observer);
        delegate.reset();
        layer.reset();
    }
    AppTestWindow(const AppTestWindow &) = delete;
    AppTestWindow &operator=(const AppTestWindow &) = delete;

    VORARootViewController *root() const { return delegate->rootViewController(); }
    // The home page shown (no welcome pages over it) and the start-up's sign-in answered.
    bool started() const
    {
        if (!window())
            return false;
        root()->showHomePage();
        return QTest::qWaitFor([this] { return autoLoginAnswered; }, 10000);
    }
    QQuickWindow *window() const { return delegate->window(); }

    QList<QQuickItem *> items(const QString &name, QQuickItem *from = nullptr, bool hiddenToo = false) const
    {
        return window() ? namedItems(from ? from : window()->contentItem(), name, hiddenToo) : QList<QQuickItem *>();
    }
    QQuickItem *item(const QString &name) const
    {
        const QList<QQuickItem *> list = items(name);
        return list.isEmpty() ? nullptr : list.first();
    }
    QPoint centreOf(QQuickItem *it) const { return sceneCentre(window(), it); }
    bool click(const QString &name) const { return clickItem(window(), item(name)); }
    void tap(QPoint at) const { QTest::mouseClick(window(), Qt::LeftButton, {}, at); }
    // Types Latin-1 text into the item with the focus.
    void type(const QString &text) const
    {
        for (const QChar c : text)
            QTest::keyClick(window(), c.toLatin1());
    }
    // One notch of a mouse wheel, down.
    void wheelDown(QPoint at) const
    {
        QWheelEvent wheel(at, window()->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QGuiApplication::sendEvent(window(), &wheel);
    }
    // A finger swipe across the window, in steps.
    void swipe(QPoint from, int dx, int stepMs = 16) const
    {
        window()->grabWindow();
        QTest::mousePress(window(), Qt::LeftButton, {}, from);
        const int steps = 10;
        for (int i = 1; i <= steps; ++i)
            QTest::mouseMove(window(), from + QPoint(dx * i / steps, 0), stepMs);
        QTest::mouseRelease(window(), Qt::LeftButton, {}, from + QPoint(dx, 0), stepMs);
    }
    // A finger drag over an item, in steps, as a flick would come.
    void drag(QQuickItem *it, qreal dy) const
    {
        const QPointF start = it->mapToScene(QPointF(it->width() / 2, dy < 0 ? it->height() - 40 : 40));
        QTest::mousePress(window(), Qt::LeftButton, {}, start.toPoint());
        const int steps = 12;
        for (int i = 1; i <= steps; ++i)
            QTest::mouseMove(window(), (start + QPointF(0, dy * i / steps)).toPoint(), 16);
        QTest::mouseRelease(window(), Qt::LeftButton, {}, (start + QPointF(0, dy)).toPoint(), 16);
    }
    void shot(const char *name) const { writeShot(window(), QLatin1String(name)); }
};
