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
    void announcesChanges();
    void unreachableTargets_data();
    void unreachableTargets();
};

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
    QVERIFY(monitor);
    monitor->setProperty("testPort", port);
    QTRY_COMPARE(monitor->currentReachabilityStatus(), 1);
    QTRY_VERIFY(!seen.isEmpty());
    QCOMPARE(seen.last().sender, monitor);
    QCOMPARE(seen.last().userInfo.value("status").toInt(), 1);
    for (QObject *sender : std::as_const(senders))
        QVERIFY(qobject_cast<Reachability *>(sender)); // always the monitor itself
    // One monitor per host and port.
    QCOMPARE(Reachability::reachabilityWithHostName("127.0.0.1", port), monitor);
    QVERIFY(Reachability::reachabilityWithHostName("localhost", port) != monitor);

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

void tst_Reachability::unreachableTargets_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<int>("port");
    QTcpServer server; // a port that was free a moment ago and is closed again
    QVERIFY(server.listen(QHostAddress::LocalHost, 0));
    QTest::newRow("closed port") << "127.0.0.1" << int(server.serverPort());
    QTest::newRow("empty host") << QString() << 80;
    QTest::newRow("port 0") << "127.0.0.1" << 0;
    QTest::newRow("unresolvable") << "no-such-host.invalid" << 80;
}

void tst_Reachability::unreachableTargets()
{
    QFETCH(QString, host);
    QFETCH(int, port);
    Reachability *monitor = Reachability::reachabilityWithHostName(host, quint16(port));
    QVERIFY(monitor);
    // Answered at once, and still "not reachable" once the probes had time to run.
    QCOMPARE(monitor->currentReachabilityStatus(), 0);
    QTest::qWait(30);
    QCOMPARE(monitor->currentReachabilityStatus(), 0);
}

QTEST_GUILESS_MAIN(tst_Reachability)
#include "tst_reachability.moc"
