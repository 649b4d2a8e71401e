// The fault knobs the client suites cannot see (a stall holds up nothing else,
// gzip only when accepted, latency, clear) and the HTTP layer itself
// (keep-alive and pipelining, limits, HTTP/1.0, a site thread that answers
// while the test's thread blocks). What an error status, a malformed body or a
// body cut short does to a request is the client suites' (tests/net).
#include "QuorinSite.h"
#include "QuorinSiteFaults.h"
#include "SiteTestClient.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QtTest>

#include <memory>

#include <zlib.h>

namespace {
QByteArray gunzip(const QByteArray &data)
{
    z_stream zs{};
    if (inflateInit2(&zs, 15 + 16) != Z_OK)
        return {};
    QByteArray out(1 << 20, '\0');
    zs.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data.constData()));
    zs.avail_in = uInt(data.size());
    zs.next_out = reinterpret_cast<Bytef *>(out.data());
    zs.avail_out = uInt(out.size());
    const int rc = inflate(&zs, Z_FINISH);
    out.truncate(qsizetype(zs.total_out));
    inflateEnd(&zs);
    return rc == Z_STREAM_END ? out : QByteArray();
}

// Sends raw bytes on a fresh connection and reads until the peer closes or the
// expected number of answers arrived. Blocking, with no event loop here: only
// the site's own thread can answer.
QByteArray rawExchange(quint16 port, const QByteArray &bytes, int answers = 1)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, port);
    if (!socket.waitForConnected(5000))
        return {};
    socket.write(bytes);
    socket.waitForBytesWritten(5000);
    QByteArray got;
    while (socket.waitForReadyRead(10000)) {
        got += socket.readAll();
        if (got.count("HTTP/1.1 ") >= answers) {
            // Read the rest of the last body when a length is known.
            const qsizetype head = got.lastIndexOf("\r\n\r\n");
            const qsizetype cl = got.lastIndexOf("Content-Length: ");
            if (head > 0 && cl > 0) {
                const qsizetype len = got.mid(cl + 16, got.indexOf("\r\n", cl) - cl - 16).toLongLong();
                if (got.size() - head - 4 >= len)
                    break;
            }
        }
    }
    return got;
}
}

class TestSiteFaults : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void stalledPathDoesNotHoldUpOthers();
    void gzipOnlyWhenAccepted();
    void latencyStillAnswersAndClearResets();
    void keepAlivePipeliningAndLimits_data();
    void keepAlivePipeliningAndLimits();

private:
    std::unique_ptr<QuorinSite> m_site;
};

void TestSiteFaults::initTestCase()
{
    m_site = std::make_unique<QuorinSite>(QuorinSiteOptions()); // on a private temporary directory
    QVERIFY(m_site->listen());
}

void TestSiteFaults::init()
{
    m_site->faults().clear();
}

void TestSiteFaults::stalledPathDoesNotHoldUpOthers()
{
    m_site->faults().setStall(QStringLiteral("ios/pad/list.php"));
    SiteTestClient client(m_site->baseUrl());
    const int before = m_site->requestCount(QStringLiteral("ios/pad/list.php"));
    QNetworkReply *stalled = client.manager().get(QNetworkRequest(client.url(QStringLiteral("ios/pad/list.php"), {{"page", "0"}})));
    // The stalled request arrives and is recorded, but never answered...
    QTRY_COMPARE(m_site->requestCount(QStringLiteral("ios/pad/list.php")), before + 1);
    // ...while other paths, on other connections, are.
    QCOMPARE(client.get(QStringLiteral("ios/pad/comic_127.php"), {{"comic_id", "10001"}}).json.value("code").toInt(), 1);
    QVERIFY(!stalled->isFinished());
    stalled->abort();
    stalled->deleteLater();
    // "*" stalls everything; turning it off serves again.
    m_site->faults().setStall(QStringLiteral("*"));
    QNetworkReply *any = client.manager().get(QNetworkRequest(client.url(QStringLiteral("ios/pad/hot_keywords.php"))));
    QTRY_VERIFY(m_site->requestCount(QStringLiteral("ios/pad/hot_keywords.php")) >= 1);
    QVERIFY(!any->isFinished());
    any->abort();
    any->deleteLater();
    m_site->faults().setStall(QStringLiteral("*"), false);
    QCOMPARE(client.get(QStringLiteral("ios/pad/hot_keywords.php")).json.value("code").toInt(), 1);
}

void TestSiteFaults::gzipOnlyWhenAccepted()
{
    m_site->faults().setGzip(true);
    SiteTestClient client(m_site->baseUrl());
    // Asked for explicitly, the body arrives compressed (QNAM's own asking: tests/net).
    const QUrl url = client.url(QStringLiteral("ios/pad/list.php"), {{"page", "0"}});
    const auto packed = client.getRaw(url, {{"Accept-Encoding", "gzip"}});
    QCOMPARE(packed.header("Content-Encoding"), QByteArray("gzip"));
    QCOMPARE(QJsonDocument::fromJson(gunzip(packed.body)).object().value("code").toInt(), 1);
    // Refused (q=0) or not asked for: plain.
    QVERIFY(client.getRaw(url, {{"Accept-Encoding", "gzip;q=0, identity"}}).header("Content-Encoding").isEmpty());
    const QByteArray raw = rawExchange(m_site->baseUrl().port(), "GET /ios/pad/hot_keywords.php HTTP/1.1\r\nHost: x\r\n\r\n");
    QVERIFY(raw.startsWith("HTTP/1.1 200"));
    QVERIFY(!raw.contains("Content-Encoding"));
}

void TestSiteFaults::latencyStillAnswersAndClearResets()
{
    m_site->faults().setLatencyMs(150);
    m_site->faults().setMalformed(QStringLiteral("*"), "x");
    m_site->faults().setGzip(true);
    SiteTestClient client(m_site->baseUrl());
    QCOMPARE(client.get(QStringLiteral("ios/pad/hot_keywords.php")).body, QByteArray("x"));
    m_site->faults().clear();
    QCOMPARE(m_site->faults().latencyMs(), 0);
    QVERIFY(!m_site->faults().gzip());
    QCOMPARE(client.get(QStringLiteral("ios/pad/hot_keywords.php")).json.value("code").toInt(), 1);
}

void TestSiteFaults::keepAlivePipeliningAndLimits_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("answers");
    QTest::addColumn<QByteArray>("expectFirst");
    QTest::addColumn<bool>("closes");
    const QByteArray get = "GET /ios/pad/hot_keywords.php?num=1 HTTP/1.1\r\nHost: x\r\n\r\n";
    QTest::newRow("two pipelined, kept alive") << get + get << 2 << QByteArray("HTTP/1.1 200") << false;
    QTest::newRow("HTTP/1.0 closes") << QByteArray("GET /ios/pad/hot_keywords.php HTTP/1.0\r\n\r\n") << 1 << QByteArray("HTTP/1.1 200") << true;
    QTest::newRow("bad request line") << QByteArray("HELLO\r\n\r\n") << 1 << QByteArray("HTTP/1.1 400") << true;
    QTest::newRow("header too large") << "GET / HTTP/1.1\r\nX: " + QByteArray(40000, 'a') + "\r\n\r\n" << 1 << QByteArray("HTTP/1.1 431") << true;
    QTest::newRow("body too large") << QByteArray("POST /ios/pad/fav.php HTTP/1.1\r\nContent-Length: 999999999\r\n\r\n") << 1 << QByteArray("HTTP/1.1 413") << true;
    QTest::newRow("negative length") << QByteArray("POST /ios/pad/fav.php HTTP/1.1\r\nContent-Length: -4\r\n\r\n") << 1 << QByteArray("HTTP/1.1 400") << true;
    QTest::newRow("chunked request") << QByteArray("POST /ios/pad/fav.php HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n\r\n") << 1 << QByteArray("HTTP/1.1 501") << true;
    QTest::newRow("method not allowed") << QByteArray("DELETE /ios/pad/list.php HTTP/1.1\r\nHost: x\r\n\r\n") << 1 << QByteArray("HTTP/1.1 405") << false;
    QTest::newRow("form post on a raw socket") << QByteArray("POST /ios/pad/check_update.php HTTP/1.1\r\nContent-Type: application/x-www-form-urlencoded\r\nContent-Length: 19\r\n\r\npost_data=10001|0||") << 1 << QByteArray("HTTP/1.1 200") << false;
}

void TestSiteFaults::keepAlivePipeliningAndLimits()
{
    QFETCH(QByteArray, request);
    QFETCH(int, answers);
    QFETCH(QByteArray, expectFirst);
    QFETCH(bool, closes);
    const QByteArray got = rawExchange(m_site->baseUrl().port(), request, answers);
    QVERIFY2(got.startsWith(expectFirst), got.left(200).constData());
    QCOMPARE(int(got.count("HTTP/1.1 ")), answers);
    QCOMPARE(got.contains("Connection: close"), closes);
    // Every answer has a JSON body, refusals included.
    const qsizetype head = got.lastIndexOf("\r\n\r\n");
    QVERIFY(QJsonDocument::fromJson(got.mid(head + 4)).isObject());
}

QTEST_MAIN(TestSiteFaults)
#include "tst_sitefaults.moc"
