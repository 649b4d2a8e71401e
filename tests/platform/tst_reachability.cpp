#include "platform/NotificationCenter.h"
#include "platform/Reachability.h"

#include <QHostAddress>
#include <QTcpServer>
#include <QTest>

#include <memory>

class tst_Reachability : public QObject
{
    Q_OBJECT
private slots:
    void listeningPortIsReachable();
    void closedPortIsNotReachable();
    void announcesChanges();
    void unusableTargets();

private:
    static quint16 closedPort()
    {
        // A port that was free a moment ago and is closed again.
        QTcpServer server;
        if (!server.listen(QHostAddress::LocalHost, 0))
            return 0;
        const quint16 port = server.serverPort();
        server.close();
        return port;
    }
};

void tst_Reachability::listeningPortIsReachable()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost, 0));
    Reachability *monitor = Reachability::reachabilityWithHostName("127.0.0.1", server.serverPort());
    QVERIFY(monitor);
    QTRY_COMPARE(monitor->currentReachabilityStatus(), 1);
    // One monitor per host and port.
    QCOMPARE(Reachability::reachabilityWithHostName("127.0.0.1", server.serverPort()), monitor);
    QVERIFY(Reachability::reachabilityWithHostName("localhost", server.serverPort()) != monitor);
}

void tst_Reachability::closedPortIsNotReachable()
{
    const quint16 port = closedPort();
    QVERIFY(port != 0);
    Reachability *monitor = Reachability::reachabilityWithHostName("127.0.0.1", port);
    // Several answers in a row, each at once, all "not reachable".
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(monitor->currentReachabilityStatus(), 0);
        QTest::qWait(20);
    }
}

void tst_Reachability::announcesChanges()
{
    auto server = std::make_unique<QTcpServer>();
    QVERIFY(server->listen(QHostAddress::LocalHost, 0));
    const quint16 port = server->serverPort();

    QObject observer;
    QList<Notification> seen;
    QList<QObject *> senders;
    NotificationCenter::defaultCenter().addObserver(
        &observer, "kNetworkReachabilityChangedNotification", [&](const Notification &n) {
            senders << n.sender;
            if (n.sender->property("testPort").toInt() == port)
                seen << n;
        });

    Reachability *monitor = Reachability::reachabilityWithHostName("127.0.0.1", port);
    monitor->setProperty("testPort", port);
    QTRY_COMPARE(monitor->currentReachabilityStatus(), 1);
    QTRY_VERIFY(!seen.isEmpty());
    QCOMPARE(seen.last().sender, monitor);
    QCOMPARE(seen.last().userInfo.value("status").toInt(), 1);
    for (QObject *sender : std::as_const(senders))
        QVERIFY(qobject_cast<Reachability *>(sender)); // always the monitor itself

    // The server goes away: the state follows and is announced once more.
    server.reset();
    QTRY_COMPARE(monitor->currentReachabilityStatus(), 0);
    QTRY_VERIFY(seen.last().userInfo.value("status").toInt() == 0);
    QCOMPARE(seen.last().sender, monitor);

    // And back.
    QTcpServer again;
    if (!again.listen(QHostAddress::LocalHost, port))
        return; // the port was taken meanwhile; the rest cannot be shown
    QTRY_COMPARE(monitor->currentReachabilityStatus(), 1);
}

void tst_Reachability::unusableTargets()
{
    // An empty host, port 0 or a name that cannot resolve: "not reachable".
    QCOMPARE(Reachability::reachabilityWithHostName(QString(), 80)->currentReachabilityStatus(), 0);
    QCOMPARE(Reachability::reachabilityWithHostName("127.0.0.1", 0)->currentReachabilityStatus(), 0);
    Reachability *bogus = Reachability::reachabilityWithHostName("no-such-host.invalid", 80);
    QTest::qWait(50);
    QCOMPARE(bogus->currentReachabilityStatus(), 0);
}

QTEST_GUILESS_MAIN(tst_Reachability)
#include "tst_reachability.moc"
