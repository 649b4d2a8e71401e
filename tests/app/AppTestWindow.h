#pragma once

// The app shell started in a real (offscreen) window for the window suites,
// with the clicks, taps, swipes and drags a finger would make.

#include "VORAAppDelegate.h"
#include "VORAOverlayLayer.h"
#include "VORARootViewController.h"
#include "core/VORANotificationNames.h"
#include "platform/NotificationCenter.h"

#include <QPoint>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSize>
#include <QTest>

#include <memory>

struct AppTestWindow
{
    QObject observer;
    bool autoLoginAnswered = false; // the start-up's silent sign-in has been answered
    std::unique_ptr<VORAOverlayLayer> layer = std::make_unique<VORAOverlayLayer>();
    std::unique_ptr<VORAAppDelegate> delegate;

    explicit AppTestWindow(QSize size)
    {
        NotificationCenter::defaultCenter().addObserver(
            &observer, QString::fromUtf8(VORANotificationNames::userViewPostInfo),
            [this](const Notification &) { autoLoginAnswered = true; });
        delegate = std::make_unique<VORAAppDelegate>(layer.get());
        delegate->setShowsWindow(true);
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
    QQuickWindow *window() const { return delegate->window(); }

    // Every visible item of that name below from (the window's content by default).
    QList<QQuickItem *> items(const QString &name, QQuickItem *from = nullptr) const
    {
        QList<QQuickItem *> found;
        if (!window())
            return found;
        QList<QQuickItem *> queue{from ? from : window()->contentItem()};
        while (!queue.isEmpty()) {
            QQuickItem *it = queue.takeFirst();
            if (!it->isVisible())
                continue;
            if (it->objectName() == name)
                found.append(it);
            queue.append(it->childItems());
        }
        return found;
    }
    QQuickItem *item(const QString &name) const
    {
        const QList<QQuickItem *> list = items(name);
        return list.isEmpty() ? nullptr : list.first();
    }
    // Positioners place their children when the scene is polished, before the next
    // frame: lay the scene out first, or a button may still stand where its row began.
    QPoint centreOf(QQuickItem *it) const
    {
        window()->grabWindow();
        return it->mapToScene(QPointF(it->width() / 2, it->height() / 2)).toPoint();
    }
    bool click(const QString &name) const
    {
        QQuickItem *it = item(name);
        if (!it)
            return false;
        QTest::mouseClick(window(), Qt::LeftButton, {}, centreOf(it));
        return true;
    }
    void tap(QPoint at) const { QTest::mouseClick(window(), Qt::LeftButton, {}, at); }
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
    // With QUORIN_WRITE_SCREENSHOTS=1, the window into docs/screenshots/, once pictures
    // decoded off the main thread, fades and slides have arrived.
    void shot(const char *name) const
    {
        if (qEnvironmentVariableIntValue("QUORIN_WRITE_SCREENSHOTS") != 1 || !window())
            return;
        QTest::qWait(600);
        window()->grabWindow().save(QStringLiteral(QUORIN_SOURCE_DIR "/docs/screenshots/") + QLatin1String(name));
    }
};
