#include "platform/NotificationCenter.h"

#include <QAtomicInt>
#include <QStringList>
#include <QTest>
#include <QThread>

#include <memory>

class tst_NotificationCenter : public QObject
{
    Q_OBJECT
private slots:
    void deliversToObserversOfTheNameInOrder();
    void removalAndObserverDestruction();
    void reentrantHandlers();
    void postsFromTwoThreads();
};

void tst_NotificationCenter::deliversToObserversOfTheNameInOrder()
{
    NotificationCenter center;
    QObject a, b, sender;
    QStringList log;
    Notification seen;
    center.addObserver(&a, "Ping", [&](const Notification &n) {
        log << "a";
        seen = n;
    });
    center.addObserver(&b, "Ping", [&](const Notification &) { log << "b"; });
    center.addObserver(&b, "Other", [&](const Notification &) { log << "other"; });

    center.post("Ping", &sender, {{"DownloadCount", "3"}});
    QCOMPARE(log, QStringList({"a", "b"}));
    QCOMPARE(seen.sender, &sender);
    QCOMPARE(seen.userInfo.value("DownloadCount").toString(), QString("3"));

    log.clear();
    center.post("Nobody listens");
    center.post("ping"); // names are case-sensitive
    QVERIFY(log.isEmpty());
}

void tst_NotificationCenter::removalAndObserverDestruction()
{
    NotificationCenter center;
    QObject a;
    // A null observer or handler is refused.
    center.addObserver(nullptr, "Ping", [](const Notification &) {});
    center.addObserver(&a, "Ping", NotificationCenter::Handler());
    QCOMPARE(center.observerCount(), 0);
    center.post("Ping"); // nothing to call, no crash

    int ping = 0, pong = 0;
    center.addObserver(&a, "Ping", [&](const Notification &) { ++ping; });
    center.addObserver(&a, "Pong", [&](const Notification &) { ++pong; });

    center.removeObserver(&a, "Ping");
    center.post("Ping");
    center.post("Pong");
    QCOMPARE(ping, 0);
    QCOMPARE(pong, 1);

    center.removeObserver(&a);
    center.post("Pong");
    QCOMPARE(pong, 1);
    QCOMPARE(center.observerCount(), 0);

    // Removing what is not registered, or a null observer, is harmless.
    center.removeObserver(&a);
    center.removeObserver(nullptr);
    center.removeObserver(&a, "Never");

    // A destroyed observer's registrations go with it.
    int calls = 0;
    auto observer = std::make_unique<QObject>();
    center.addObserver(observer.get(), "Ping", [&](const Notification &) { ++calls; });
    center.addObserver(observer.get(), "Pong", [&](const Notification &) { ++calls; });
    QObject survivor;
    center.addObserver(&survivor, "Ping", [&](const Notification &) { calls += 100; });

    observer.reset();
    QCOMPARE(center.observerCount(), 1);
    center.post("Ping");
    center.post("Pong");
    QCOMPARE(calls, 100);

    // An observer removed explicitly and then destroyed is not touched again,
    // and one re-added after removal is dropped on destruction as well.
    auto again = std::make_unique<QObject>();
    center.addObserver(again.get(), "Ping", [](const Notification &) {});
    center.removeObserver(again.get());
    center.addObserver(again.get(), "Ping", [](const Notification &) {});
    again.reset();
    QCOMPARE(center.observerCount("Ping"), 1);
}

void tst_NotificationCenter::reentrantHandlers()
{
    NotificationCenter center;
    QObject first, second, late;
    QStringList log;
    int lateCalls = 0;

    // The first handler removes the second observer, registers a new one and
    // posts a nested notification, all while being called.
    center.addObserver(&first, "Ping", [&](const Notification &) {
        log << "first";
        center.removeObserver(&second);
        center.addObserver(&late, "Ping", [&](const Notification &) { ++lateCalls; });
        center.post("Nested");
    });
    center.addObserver(&second, "Ping", [&](const Notification &) { log << "second"; });
    center.addObserver(&first, "Nested", [&](const Notification &) { log << "nested"; });

    center.post("Ping");
    QCOMPARE(log, QStringList({"first", "nested"}));
    QCOMPARE(lateCalls, 0); // added during the delivery: not part of it

    log.clear();
    center.removeObserver(&first, "Ping");
    center.post("Ping");
    QCOMPARE(lateCalls, 1);

    // A handler may remove itself.
    QObject self;
    int selfCalls = 0;
    center.addObserver(&self, "Once", [&](const Notification &) {
        ++selfCalls;
        center.removeObserver(&self);
    });
    center.post("Once");
    center.post("Once");
    QCOMPARE(selfCalls, 1);
}

void tst_NotificationCenter::postsFromTwoThreads()
{
    NotificationCenter center;
    QObject observer;
    QAtomicInt count;
    QAtomicInt wrongThread;
    center.addObserver(&observer, "Tick", [&](const Notification &n) {
        count.fetchAndAddRelaxed(1);
        // Delivered on the posting thread.
        if (n.userInfo.value("thread").value<quintptr>() != quintptr(QThread::currentThreadId()))
            wrongThread.fetchAndAddRelaxed(1);
    });

    constexpr int perThread = 2000;
    auto poster = [&] {
        for (int i = 0; i < perThread; ++i) {
            center.post("Tick", nullptr,
                        {{"thread", QVariant::fromValue(quintptr(QThread::currentThreadId()))}});
            if (i % 100 == 0) {
                // Registration churn from the same threads meanwhile.
                QObject churn;
                center.addObserver(&churn, "Tick", [](const Notification &) {});
            }
        }
    };
    std::unique_ptr<QThread> t1(QThread::create(poster));
    std::unique_ptr<QThread> t2(QThread::create(poster));
    t1->start();
    t2->start();
    QVERIFY(t1->wait(60000));
    QVERIFY(t2->wait(60000));
    QCOMPARE(count.loadRelaxed(), 2 * perThread);
    QCOMPARE(wrongThread.loadRelaxed(), 0);
    QCOMPARE(center.observerCount(), 1); // the churned observers were dropped
}

QTEST_GUILESS_MAIN(tst_NotificationCenter)
#include "tst_notificationcenter.moc"
