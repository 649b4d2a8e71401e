// The HTTP engine against the reference site over loopback.

#include "NetTestSite.h"

#include "net/PersistentCookieJar.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTcpServer>
#include <QThread>

#include <memory>

namespace {

QUrl siteUrl(NetTestSite &site, const QString &path)
{
    return QUrl(site.site->baseUrl().toString() + path);
}

QByteArray cookieValue(const QByteArray &cookieHeader, const QByteArray &name)
{
    for (const QByteArray &part : cookieHeader.split(';')) {
        const QByteArray p = part.trimmed();
        if (p.startsWith(name + '='))
            return p.mid(name.size() + 1);
    }
    return QByteArray();
}

void start(ASIHTTPRequest &request, RequestRecorder &recorder)
{
    request.setDelegate(&recorder);
    request.startAsynchronous();
}

// Runs one synchronous request on a thread of its own and hands it back.
std::unique_ptr<ASIHTTPRequest> runOnWorker(const QUrl &url)
{
    std::unique_ptr<ASIHTTPRequest> request;
    QThread *worker = QThread::create([&] {
        request.reset(new ASIHTTPRequest(url));
        request->startSynchronous();
    });
    worker->start();
    worker->wait();
    delete worker;
    return request;
}

} // namespace

class TestAsiHttpRequest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { m_site = std::make_unique<NetTestSite>(); QVERIFY(m_site->port != 0); }
    void cleanup()
    {
        m_site->faults().clear();
        ASIHTTPRequest::setDefaultTimeOutSeconds(15);
    }
    void cleanupTestCase() { m_site.reset(); }

    void defaultsOnTheWire();
    void outcomes_data();
    void outcomes();
    void clearDelegatesAndCancelReportsNothing();
    void cookiesPersistAcrossThreadsAndRestarts();

private:
    std::unique_ptr<NetTestSite> m_site;
};

void TestAsiHttpRequest::defaultsOnTheWire()
{
    // Checked before any test shortens it.
    QCOMPARE(ASIHTTPRequest::defaultTimeOutSeconds(), 15);

    ASIHTTPRequest request(siteUrl(*m_site, QStringLiteral("ios/pad/hot_keywords.php?num=3")));
    RequestRecorder recorder;
    start(request, recorder);
    QCOMPARE(request.timeOutSeconds(), 15);
    QCOMPARE(request.numberOfTimesToRetryOnTimeout(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(recorder.finished, 1, 10000);
    QCOMPARE(recorder.failed, 0);
    QCOMPARE(request.responseStatusCode(), 200);

    const auto record = m_site->site->lastRequest(QStringLiteral("ios/pad/hot_keywords.php"));
    QVERIFY(record.valid);
    QCOMPARE(record.method, QByteArray("GET"));
    const QByteArray agent = NetTestSite::header(record, "User-Agent");
    QVERIFY2(QRegularExpression(QStringLiteral("^Quorin Reader 3\\.5 \\([^;]+; [^;]+ [^;]+; [^;]+\\)$"))
                 .match(QString::fromUtf8(agent)).hasMatch(),
             agent.constData());
    QVERIFY(NetTestSite::header(record, "Accept-Encoding").contains("gzip"));
    QVERIFY(NetTestSite::header(record, "Connection").toLower().contains("keep-alive"));

    const QJsonDocument doc = QJsonDocument::fromJson(request.responseData());
    QCOMPARE(doc.object().value(QLatin1String("data")).toArray().size(), 3);
}

void TestAsiHttpRequest::outcomes_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("status");     // for "status": the HTTP status the site sends
    QTest::addColumn<int>("errorCode");  // 0: delivered as an answer
    QTest::addColumn<int>("httpStatus"); // status seen by the client when delivered

    QTest::newRow("500 is an answer") << "status" << 500 << 0 << 500; // any status but 401
    QTest::newRow("401 needs authentication") << "status" << 401 << 3 << 0;
    QTest::newRow("connection dropped mid-body") << "drop" << 0 << 1 << 0;
    QTest::newRow("stalled answer times out, no retry") << "stall" << 0 << 2 << 0;
    QTest::newRow("connection refused") << "refused" << 0 << 1 << 0;
    QTest::newRow("scheme the engine cannot speak") << "scheme" << 0 << 6 << 0;
    QTest::newRow("no host") << "nohost" << 0 << 6 << 0;
}

void TestAsiHttpRequest::outcomes()
{
    QFETCH(QString, fault);
    QFETCH(int, status);
    QFETCH(int, errorCode);
    QFETCH(int, httpStatus);

    const QString path = QStringLiteral("ios/pad/coin_log.php");
    QUrl url = siteUrl(*m_site, path);
    const QByteArray body = "{\"code\":0,\"message\":\"x\"}";
    const int before = m_site->site->requestCount(path);
    if (fault == QLatin1String("status")) {
        m_site->faults().setErrorStatus(path, status, body);
    } else if (fault == QLatin1String("drop")) {
        m_site->faults().setDropMidBody(path);
    } else if (fault == QLatin1String("stall")) {
        m_site->faults().setStall(path);
        ASIHTTPRequest::setDefaultTimeOutSeconds(1);
    } else if (fault == QLatin1String("refused")) {
        QTcpServer probe;
        QVERIFY(probe.listen(QHostAddress::LocalHost));
        url.setPort(probe.serverPort());
        probe.close(); // nobody listens there now
    } else if (fault == QLatin1String("scheme")) {
        url.setScheme(QStringLiteral("ftp"));
    } else if (fault == QLatin1String("nohost")) {
        url = QUrl(QStringLiteral("http:///ios/pad/coin_log.php"));
    }

    ASIHTTPRequest request(url);
    RequestRecorder recorder;
    start(request, recorder);
    QTRY_COMPARE_WITH_TIMEOUT(recorder.finished + recorder.failed, 1, 10000);
    if (errorCode == 0) {
        QCOMPARE(recorder.finished, 1);
        QVERIFY(!request.error());
        QCOMPARE(request.responseStatusCode(), httpStatus);
        QCOMPARE(request.responseData(), body);
    } else {
        QCOMPARE(recorder.failed, 1);
        QCOMPARE(recorder.lastError->domain, QStringLiteral("ASIHTTPRequestErrorDomain"));
        QCOMPARE(recorder.lastError->code, errorCode);
        QCOMPARE(recorder.lastError->localizedDescription, NetError::asiError(errorCode).localizedDescription);
        QVERIFY(!recorder.lastError->localizedDescription.isEmpty());
    }
    // Nothing more arrives later.
    auto control = runOnWorker(siteUrl(*m_site, QStringLiteral("ios/pad/hot_keywords.php")));
    QCoreApplication::processEvents();
    QCOMPARE(recorder.finished + recorder.failed, 1);
    if (fault == QLatin1String("stall"))
        QCOMPARE(m_site->site->requestCount(path), before + 1);
}

void TestAsiHttpRequest::clearDelegatesAndCancelReportsNothing()
{
    RequestRecorder recorder;

    // Never started.
    {
        ASIHTTPRequest idle(siteUrl(*m_site, QStringLiteral("ios/pad/hot_keywords.php")));
        idle.setDelegate(&recorder);
        idle.clearDelegatesAndCancel();
        idle.startAsynchronous(); // a cancelled request does not start
        QCoreApplication::processEvents();
    }
    // Finished. (A running request cancelled so reports nothing: the service suite's cancelRequest.)
    ASIHTTPRequest done(siteUrl(*m_site, QStringLiteral("ios/pad/hot_keywords.php")));
    start(done, recorder);
    QTRY_COMPARE_WITH_TIMEOUT(recorder.finished, 1, 10000);
    done.clearDelegatesAndCancel();
    QVERIFY(!done.error());
    QCOMPARE(recorder.failed, 0);
}

void TestAsiHttpRequest::cookiesPersistAcrossThreadsAndRestarts()
{
    PersistentCookieJar::clearAll();
    const QString first = QStringLiteral("ios/pad/hot_keywords.php");
    const QString second = QStringLiteral("ios/pad/coin_log.php");

    ASIHTTPRequest a(siteUrl(*m_site, first));
    RequestRecorder recorder;
    start(a, recorder);
    QTRY_COMPARE_WITH_TIMEOUT(recorder.finished, 1, 10000);
    QVERIFY(cookieValue(NetTestSite::header(m_site->site->lastRequest(first), "Cookie"), "qsid").isEmpty());
    QByteArray setCookie;
    for (const auto &h : a.responseHeaders()) {
        if (h.first.compare("Set-Cookie", Qt::CaseInsensitive) == 0)
            setCookie = h.second;
    }
    const QByteArray sid = cookieValue(setCookie.split(';').first(), "qsid");
    QVERIFY2(!sid.isEmpty(), setCookie.constData());

    // A later request of the main thread sends it back.
    ASIHTTPRequest b(siteUrl(*m_site, second));
    start(b, recorder);
    QTRY_COMPARE_WITH_TIMEOUT(recorder.finished, 2, 10000);
    QCOMPARE(cookieValue(NetTestSite::header(m_site->site->lastRequest(second), "Cookie"), "qsid"), sid);

    // So does a worker thread's manager.
    QVERIFY(!runOnWorker(siteUrl(*m_site, second))->error());
    QCOMPARE(cookieValue(NetTestSite::header(m_site->site->lastRequest(second), "Cookie"), "qsid"), sid);

    // The store is a file of the app home, readable by the owner only.
    QFile store(PersistentCookieJar::storagePath());
    QVERIFY(store.exists());
    QVERIFY(store.permissions().testFlag(QFileDevice::ReadOwner));
    QVERIFY(!store.permissions().testFlag(QFileDevice::ReadOther));
    QVERIFY(!store.permissions().testFlag(QFileDevice::ReadGroup));

    // A new process starts from the file only.
    PersistentCookieJar::reloadFromDisk();
    QVERIFY(!runOnWorker(siteUrl(*m_site, first))->error());
    QCOMPARE(cookieValue(NetTestSite::header(m_site->site->lastRequest(first), "Cookie"), "qsid"), sid);

    // A damaged store is no store: no crash, no cookie, and a fresh one is made.
    QVERIFY(store.open(QIODevice::WriteOnly | QIODevice::Truncate));
    store.write("\x01\x02garbage; =; \n\xff\xfe;;;\n");
    store.close();
    PersistentCookieJar::reloadFromDisk();
    QVERIFY(!runOnWorker(siteUrl(*m_site, second))->error());
    QVERIFY(cookieValue(NetTestSite::header(m_site->site->lastRequest(second), "Cookie"), "qsid").isEmpty());
    QCOMPARE(PersistentCookieJar::storedCookies().size(), 1);
}

QTEST_GUILESS_MAIN(TestAsiHttpRequest)
#include "tst_asihttprequest.moc"
