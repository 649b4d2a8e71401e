// The quorin-site executable as the demo run starts it: it answers, logs one
// line per request, applies the fault options, and refuses bad command lines.
// (--quiet, which only silences that log, is not run.)
#include "SiteTestClient.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {
const QString kSite = QStringLiteral(QUORIN_SITE_EXECUTABLE);
}

class TestSiteExecutable : public QObject
{
    Q_OBJECT
private slots:
    void answersLogsAndAppliesFaults();
    void badCommandLines_data();
    void badCommandLines();

private:
    bool start(QProcess &process, const QStringList &extra, QUrl *base);
    QTemporaryDir m_dir;
};

bool TestSiteExecutable::start(QProcess &process, const QStringList &extra, QUrl *base)
{
    process.start(kSite, QStringList{"--port", "0", "--data", m_dir.path()} + extra);
    if (!process.waitForStarted(10000))
        return false;
    static const QRegularExpression re(QStringLiteral("listening on (http://127\\.0\\.0\\.1:[0-9]+/)"));
    QByteArray out;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 60000 && process.state() == QProcess::Running) {
        process.waitForReadyRead(500);
        out += process.readAllStandardOutput();
        const auto m = re.match(QString::fromUtf8(out));
        if (m.hasMatch()) {
            *base = QUrl(m.captured(1));
            return true;
        }
    }
    return false;
}

void TestSiteExecutable::answersLogsAndAppliesFaults()
{
    QProcess site;
    QUrl base;
    QVERIFY2(start(site, {"--error", "ios/pad/list.php=503", "--malformed", "ios/pad/search.php", "--drop", "ios/pad/comic_127.php",
                          "--stall", "ios/pad/grade.php", "--gzip", "--latency", "20"},
                   &base),
             site.readAllStandardError().constData());
    SiteTestClient client(base); // every path in process: tst_sitecatalogue and tests/net
    QCOMPARE(client.get(QStringLiteral("ios/pad/list.php")).status, 503);
    const auto malformed = client.get(QStringLiteral("ios/pad/search.php"), {{"q", "x"}});
    QCOMPARE(malformed.status, 200);
    QVERIFY(!malformed.isObject);
    QVERIFY(client.get(QStringLiteral("ios/pad/comic_127.php"), {{"comic_id", "10001"}}).error != QNetworkReply::NoError);
    const auto packed = client.getRaw(client.url(QStringLiteral("ios/pad/hot_keywords.php")), {{"Accept-Encoding", "gzip"}});
    QCOMPARE(packed.header("Content-Encoding"), QByteArray("gzip"));
    QNetworkReply *stalled = client.manager().get(QNetworkRequest(client.url(QStringLiteral("ios/pad/grade.php"))));
    QCOMPARE(client.get(QStringLiteral("ios/pad/version.php")).json.value("code").toInt(), 1);
    QVERIFY(!stalled->isFinished());
    stalled->abort();
    delete stalled;
    site.terminate();
    QVERIFY(site.waitForFinished(10000));
    // One line per request: method, path, status, bytes, milliseconds.
    const QString log = QString::fromUtf8(site.readAllStandardError());
    static const QRegularExpression line(QStringLiteral("GET ios/pad/version.php 200 [0-9]+ [0-9]+ms"));
    QVERIFY2(line.match(log).hasMatch(), qPrintable(log.left(2000)));
}

void TestSiteExecutable::badCommandLines_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("port text") << QStringList{"--port", "abc"} << "--port";
    QTest::newRow("port too big") << QStringList{"--port", "70000"} << "--port";
    QTest::newRow("error without status") << QStringList{"--error", "ios/pad/list.php"} << "--error";
    QTest::newRow("error status 42") << QStringList{"--error", "ios/pad/list.php=42"} << "--error";
    QTest::newRow("negative latency") << QStringList{"--latency", "-5"} << "--latency";
    QTest::newRow("bad address") << QStringList{"--listen", "localhost:80"} << "--listen";
    QTest::newRow("seed text") << QStringList{"--seed", "one"} << "--seed";
}

void TestSiteExecutable::badCommandLines()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    QProcess site;
    site.start(kSite, QStringList{"--data", m_dir.path()} + arguments);
    QVERIFY(site.waitForFinished(30000));
    QCOMPARE(site.exitCode(), 2);
    QVERIFY(QString::fromUtf8(site.readAllStandardError()).contains(message));
}

QTEST_MAIN(TestSiteExecutable)
#include "tst_siteexecutable.moc"
