#include "platform/NotificationCenter.h"
#include "platform/Reachability.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QTcpServer>
#include <QTest>

#include <memory>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// A loopback port whose handshakes never finish: a listener that never accepts,
// with its queue already full, so the kernel drops every further SYN.
class UnansweredPort
{
public:
    UnansweredPort()
    {
        m_listener = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in a{};
        a.sin_family = AF_INET;
        a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t len = sizeof(a);
        if (::bind(m_listener, reinterpret_cast<sockaddr *>(&a), len) != 0 || ::listen(m_listener, 0) != 0
            || ::getsockname(m_listener, reinterpret_cast<sockaddr *>(&a), &len) != 0)
            return;
        port = ntohs(a.sin_port);
        for (int i = 0; i < 4; ++i) {
            const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
            ::connect(fd, reinterpret_cast<sockaddr *>(&a), sizeof(a));
            m_fillers.push_back(fd);
        }
    }
    ~UnansweredPort()
    {
        for (int fd : m_fillers)
            ::close(fd);
        ::close(m_listener);
    }
    quint16 port = 0;

private:
    int m_listener = -1;
    std::vector<int> m_fillers;
};

} // namespace

class tst_Reachability : public QObject
{
    Q_OBJECT
private slots:
    void answersAtOnce_data();
    void answersAtOnce();
    void announcesChanges();
};

void tst_Reachability::answersAtOnce_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("status"); // at once and later
    QTest::newRow("open port") << "127.0.0.1" << "open" << 1;
    QTest::newRow("closed port") << "127.0.0.1" << "closed" << 0;
    QTest::newRow("handshake never answered") << "127.0.0.1" << "unanswered" << 0;
    QTest::newRow("empty host") << QString() << "closed" << 0;
    QTest::newRow("port 0") << "127.0.0.1" << "zero" << 0;
    QTest::newRow("unresolvable") << "no-such-host.invalid" << "closed" << 0;
}

void tst_Reachability::answersAtOnce()
{
    QFETCH(QString, host);
    QFETCH(QString, target);
    QFETCH(int, status);
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost, 0));
    quint16 port = server.serverPort();
    UnansweredPort unanswered;
    if (target == QLatin1String("closed"))
        server.close(); // free a moment ago, closed again
    else if (target == QLatin1String("zero"))
        port = 0;
    else if (target == QLatin1String("unanswered"))
        port = unanswered.port;
    QVERIFY(port != 0 || target == QLatin1String("zero"));

    // The asking thread never waits on a connect or a lookup.
    QElapsedTimer clock;
    clock.start();
    Reachability *monitor = Reachability::reachabilityWithHostName(host, port);
    const int first = monitor->currentReachabilityStatus();
    QVERIFY2(clock.elapsed() < 100, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(first, status);
    QTRY_COMPARE(monitor->currentReachabilityStatus(), status);
}

void tst_Reachability::announcesChanges()
{
    auto server = std::make_unique<QTcpServer>();
    QVERIFY(server->listen(QHostAddress::LocalHost, 0));
    const quint16 port = server->serverPort();

    QObject observer;
    QList<Notification> seen;
    NotificationCenter::defaultCenter().addObserver(
        &observer, "kNetworkReachabilityChangedNotification", [&](const Notification &n) {
            QVERIFY(qobject_cast<Reachability *>(n.sender)); // always the monitor itself
            if (n.sender->property("testPort").toInt() == port)
                seen << n;
        });

    Reachability *monitor = Reachability::reachabilityWithHostName("127.0.0.1", port);
    monitor->setProperty("testPort", port);
    // One monitor per host and port.
    QCOMPARE(Reachability::reachabilityWithHostName("127.0.0.1", port), monitor);
    QVERIFY(Reachability::reachabilityWithHostName("localhost", port) != monitor);

    // The server goes away: the state follows and is announced.
    server.reset();
    QTRY_COMPARE(monitor->currentReachabilityStatus(), 0);
    QTRY_VERIFY(!seen.isEmpty() && seen.last().userInfo.value("status").toInt() == 0);
    QCOMPARE(seen.last().sender, monitor);

    // And back.
    QTcpServer again;
    if (!again.listen(QHostAddress::LocalHost, port))
        QSKIP("the port was taken meanwhile");
    QTRY_COMPARE(monitor->currentReachabilityStatus(), 1);
    QTRY_COMPARE(seen.last().userInfo.value("status").toInt(), 1);
}

QTEST_GUILESS_MAIN(tst_Reachability)
#include "tst_reachability.moc"
