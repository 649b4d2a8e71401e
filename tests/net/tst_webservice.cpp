// The web service template: URLs, bodies, delegate contract, cancellation,
// tolerant parsing and concurrency, against the reference site.

#include "NetTestSite.h"

#include "net/VORAAddTucaoService.h"
#include "net/VORACheckVersionService.h"
#include "net/VORAGetChapterInfoService.h"
#include "net/VORAGetCloudTagService.h"
#include "net/VORAGetComicBasicInfoService.h"
#include "net/VORAGetRcommentService.h"
#include "net/VORAGetTucaoService.h"
#include "net/VORASortWebService.h"
#include "net/VORAVipPayAiaxService.h"
#include "net/UpdateVersionService.h"
#include "net/NetLog.h"

#include "core/VORAAppGlobalData.h"

#include <QHash>
#include <QRegularExpression>
#include <QThread>

#include <functional>
#include <memory>

namespace {

// A service of the test's own: method code 2 (not a known code), a parameter,
// and the text it was given to parse.
class ProbeService : public VORAHttpBaseWebService
{
public:
    QString path() const override { return QStringLiteral("ios/pad/hot_keywords.php"); }
    int q42HttpMethod() const override { return 2; }
    Parameters parameter() const override { return {{QStringLiteral("num"), QStringLiteral("4")}}; }
    void parseResponseString(const QString &text) override
    {
        lastText = text;
        ++parses;
    }
    QString lastText;
    int parses = 0;
};

} // namespace

class TestWebService : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        m_site = std::make_unique<NetTestSite>();
        QVERIFY(m_site->port != 0);
        VORAAppGlobalData::shareAppGlobalData()->appStatus()->setDeviceId(QStringLiteral("dev42"));
    }
    void cleanup()
    {
        m_site->faults().clear();
        VORAAppGlobalData::shareAppGlobalData()->user()->setKey(std::nullopt);
    }
    void cleanupTestCase() { m_site.reset(); }

    void urlRules_data();
    void urlRules();
    void postCarriesCommonParametersInQueryAndOwnInBody();
    void unknownMethodCodeIsGet();
    void paymentServicesUseThePaymentBase();
    void invalidUrlSendsAndReportsNothing();
    void loggedUrlsHideTheKeyAndPasswords();
    void cancelWhileStalled_data();
    void cancelWhileStalled();
    void cancelRequestAndDestructionReportNothing();
    void delegateMayRestartOrDestroyTheService();
    void malformedAnswers_data();
    void malformedAnswers();
    void gzipAnswerReachesParserAsText();
    void concurrentRequestsKeepTheirOwnAnswers();

private:
    bool runAsync(VORAHttpBaseWebService &service, ServiceRecorder &recorder)
    {
        const int before = recorder.calls;
        service.asynchronousRequestWithDelegate(&recorder);
        return QTest::qWaitFor([&] { return recorder.calls > before; }, 15000);
    }

    std::unique_ptr<NetTestSite> m_site;
};

void TestWebService::urlRules_data()
{
    QTest::addColumn<bool>("signedIn");
    QTest::addColumn<QString>("service");
    QTest::addColumn<QString>("pattern"); // after the base URL

    const QString common = QStringLiteral("version=3\\.5\\.0&android_id=dev42&time=\\d+&");
    QTest::newRow("signed out, no parameters")
        << false << "version" << QStringLiteral("ios/pad/version\\.php\\?") + common;
    QTest::newRow("signed in, no parameters")
        << true << "version" << QStringLiteral("ios/pad/version\\.php\\?key=K-1&") + common;
    QTest::newRow("parameters in the service's order, not escaped by the base")
        << false << "tucao"
        << QStringLiteral("ios/pad/get_tucao\\.php\\?") + common
               + QStringLiteral("image_id=a b&last_id=100000000&page_size=200&type=next_page&");
    QTest::newRow("first id replaces last id")
        << true << "tucao-first"
        << QStringLiteral("ios/pad/get_tucao\\.php\\?key=K-1&") + common
               + QStringLiteral("image_id=a b&first_id=7&page_size=5&type=prev_page&");
}

void TestWebService::urlRules()
{
    QFETCH(bool, signedIn);
    QFETCH(QString, service);
    QFETCH(QString, pattern);

    if (signedIn)
        VORAAppGlobalData::shareAppGlobalData()->user()->setKey(QStringLiteral("K-1"));
    std::unique_ptr<VORAHttpBaseWebService> s;
    if (service == QLatin1String("version")) {
        s = std::make_unique<UpdateVersionService>();
    } else {
        auto t = std::make_unique<VORAGetTucaoService>();
        t->pageId = QStringLiteral("a b");
        t->lastId = QStringLiteral("100000000");
        t->pageSize = 200;
        if (service == QLatin1String("tucao-first")) {
            t->firstId = QStringLiteral("7");
            t->pageSize = 5;
            t->isNext = false;
        }
        s = std::move(t);
    }
    const QString url = s->getRequestUrl();
    const QString base = m_site->site->baseUrl().toString();
    QVERIFY2(url.startsWith(base), qPrintable(url));
    QVERIFY2(QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(url.mid(base.size())).hasMatch(),
             qPrintable(url));
    // The time is whole seconds of now.
    const qint64 time = QRegularExpression(QStringLiteral("time=(\\d+)&")).match(url).captured(1).toLongLong();
    QVERIFY(qAbs(time - QDateTime::currentSecsSinceEpoch()) <= 5);
}

void TestWebService::postCarriesCommonParametersInQueryAndOwnInBody()
{
    VORAAppGlobalData::shareAppGlobalData()->user()->setKey(QStringLiteral("K-1"));
    VORAAddTucaoService add;
    add.objectId = QStringLiteral("77");
    add.content = QStringLiteral("好&看=1 a+/?#%");
    add.createTime = QDateTime::fromSecsSinceEpoch(1400000000, Qt::UTC);
    add.x = 1;
    add.y = -2;
    add.width = 30;
    add.height = 40;
    ServiceRecorder recorder;
    QVERIFY(runAsync(add, recorder));
    QVERIFY(!recorder.lastError);

    const auto record = m_site->site->lastRequest(QStringLiteral("ios/pad/add_tucao.php"));
    QCOMPARE(record.method, QByteArray("POST"));
    QVERIFY(QRegularExpression(QStringLiteral("^key=K-1&version=3\\.5\\.0&android_id=dev42&time=\\d+&$"))
                .match(QString::fromLatin1(record.query)).hasMatch());
    QCOMPARE(record.body, QByteArray("image_id=77&content=%E5%A5%BD%26%E7%9C%8B%3D1%20a%2B%2F%3F%23%25&color=0&back=0"
                                     "&create_time=1400000000&x=1&y=-2&w=30&h=40"));
    QCOMPARE(NetTestSite::header(record, "Content-Type"), QByteArray("application/x-www-form-urlencoded; charset=utf-8"));
}

void TestWebService::unknownMethodCodeIsGet()
{
    ProbeService probe;
    ServiceRecorder recorder;
    QVERIFY(runAsync(probe, recorder));
    const auto record = m_site->site->lastRequest(QStringLiteral("ios/pad/hot_keywords.php"));
    QCOMPARE(record.method, QByteArray("GET"));
    QVERIFY(record.body.isEmpty());
    QVERIFY(record.query.endsWith("&num=4&"));
}

void TestWebService::paymentServicesUseThePaymentBase()
{
    const QByteArray saved = qgetenv("QUORIN_PAY_BASE");
    qputenv("QUORIN_PAY_BASE", "http://127.0.0.1:1/paybase");
    VORAVipPayAiaxService pay;
    VORAGetCloudTagService api;
    const QString payUrl = pay.getRequestUrl();
    const QString apiUrl = api.getRequestUrl();
    qputenv("QUORIN_PAY_BASE", saved);
    QVERIFY2(payUrl.startsWith(QLatin1String("http://127.0.0.1:1/paybase/pay/ajax.php?")), qPrintable(payUrl));
    QVERIFY(apiUrl.startsWith(m_site->site->baseUrl().toString() + QLatin1String("ios/pad/hot_keywords.php?")));
}

void TestWebService::invalidUrlSendsAndReportsNothing()
{
    const QByteArray saved = qgetenv("QUORIN_API_BASE");
    qputenv("QUORIN_API_BASE", "http://127.0.0.1:99999/");
    VORAGetCloudTagService tags;
    ServiceRecorder recorder;
    tags.asynchronousRequestWithDelegate(&recorder);
    QVERIFY(!tags.request());
    tags.synchronousRequest();
    qputenv("QUORIN_API_BASE", saved);
    QVERIFY(!tags.error());
    QCoreApplication::processEvents();
    QCOMPARE(recorder.calls, 0);
}

void TestWebService::loggedUrlsHideTheKeyAndPasswords()
{
    VORAAppGlobalData::shareAppGlobalData()->user()->setKey(QStringLiteral("s3cret"));
    VORAGetCloudTagService tags;
    const QString logged = netLogSafe(tags.getRequestUrl() + QLatin1String("password=hunter2&keyword=a"));
    QVERIFY2(!logged.contains(QLatin1String("s3cret")) && !logged.contains(QLatin1String("hunter2")), qPrintable(logged));
    QVERIFY2(logged.contains(QLatin1String("?key=***&")) && logged.contains(QLatin1String("&keyword=a")), qPrintable(logged));
}

void TestWebService::cancelWhileStalled_data()
{
    QTest::addColumn<bool>("onWorker"); // a worker's synchronous request, cancelled from the main thread
    QTest::addColumn<bool>("quiet");    // cancelRequest rather than cancel
    QTest::newRow("cancel, asynchronous") << false << false;
    QTest::newRow("cancel, on a worker") << true << false;
    QTest::newRow("cancelRequest, on a worker") << true << true;
}

void TestWebService::cancelWhileStalled()
{
    QFETCH(bool, onWorker);
    QFETCH(bool, quiet);
    const QString path = QStringLiteral("ios/pad/hot_keywords.php");
    m_site->faults().setStall(path);
    const int before = m_site->site->requestCount(path);
    VORAGetCloudTagService tags;
    ServiceRecorder recorder;
    std::optional<NetError> error;
    std::unique_ptr<QThread> worker(QThread::create([&] {
        tags.synchronousRequest();
        error = tags.error() ? std::optional<NetError>(*tags.error()) : std::nullopt;
    }));
    if (onWorker)
        worker->start();
    else
        tags.asynchronousRequestWithDelegate(&recorder);
    QTRY_COMPARE_WITH_TIMEOUT(m_site->site->requestCount(path), before + 1, 10000);
    QTRY_VERIFY_WITH_TIMEOUT(tags.request() != nullptr, 10000);
    if (quiet)
        tags.cancelRequest();
    else
        tags.cancel();
    if (onWorker) {
        QVERIFY(worker->wait(10000));
    } else {
        // Reported once, in the engine's domain; later cancels add nothing.
        QTRY_COMPARE_WITH_TIMEOUT(recorder.calls, 1, 5000);
        QCOMPARE(recorder.lastError->code, 4);
        QCOMPARE(recorder.lastError->domain, QStringLiteral("ASIHTTPRequestErrorDomain"));
        error = tags.error() ? std::optional<NetError>(*tags.error()) : std::nullopt;
        tags.cancel();
        tags.cancelRequest();
        QCoreApplication::processEvents();
    }
    QVERIFY(error);
    QCOMPARE(error->code, 4);
    QVERIFY(tags.tagList.isEmpty());
    QCOMPARE(recorder.calls, onWorker ? 0 : 1);
}

void TestWebService::cancelRequestAndDestructionReportNothing()
{
    m_site->faults().setLatencyMs(200);
    ServiceRecorder recorder;

    VORAGetCloudTagService cancelled;
    cancelled.asynchronousRequestWithDelegate(&recorder);
    cancelled.cancelRequest();

    auto destroyed = std::make_unique<VORAGetCloudTagService>();
    destroyed->asynchronousRequestWithDelegate(&recorder);
    destroyed.reset();

    // A delegate that goes away first is never called.
    VORAGetCloudTagService orphan;
    auto gone = std::make_unique<ServiceRecorder>();
    orphan.asynchronousRequestWithDelegate(gone.get());
    gone.reset();

    // A delegate object that does not implement the contract is skipped.
    QObject plain;
    VORAGetCloudTagService optional;
    optional.asynchronousRequestWithDelegate(&plain);

    // Answers that come afterwards prove the others had their time.
    VORAGetCloudTagService control;
    ServiceRecorder controlRecorder;
    QVERIFY(runAsync(control, controlRecorder));
    QVERIFY(!controlRecorder.lastError);
    QTRY_VERIFY_WITH_TIMEOUT(!orphan.tagList.isEmpty(), 10000);
    QTRY_VERIFY_WITH_TIMEOUT(!optional.tagList.isEmpty(), 10000);
    QCoreApplication::processEvents();
    QCOMPARE(recorder.calls, 0);
    QVERIFY(cancelled.tagList.isEmpty());
}

void TestWebService::delegateMayRestartOrDestroyTheService()
{
    ServiceRecorder recorder;
    auto *tags = new VORAGetCloudTagService;
    tags->num = 2;
    int runs = 0;
    recorder.onFinish = [&](VORAHttpBaseWebService *s) {
        ++runs;
        auto *t = static_cast<VORAGetCloudTagService *>(s);
        if (runs == 1) {
            QCOMPARE(t->tagList.size(), 2);
            t->num = 3;
            t->asynchronousRequestWithDelegate(&recorder); // restart from inside the callback
        } else {
            QCOMPARE(t->tagList.size(), 3);
            delete t; // and destroy it from inside the callback
        }
    };
    tags->asynchronousRequestWithDelegate(&recorder);
    QTRY_COMPARE_WITH_TIMEOUT(runs, 2, 15000);
    QCoreApplication::processEvents();
    QCOMPARE(recorder.calls, 2);
}

void TestWebService::malformedAnswers_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("expected");
    // A body that is no feed or no comic at all is its screen's (tst_recommentview,
    // tst_comichomepage), a chapter list that is no list the reading session's;
    // the add tucao answers are the publisher's, the sign-in answers tst_accountrules'.
    QTest::newRow("list: odd members")
        << "list"
        << QByteArray("{\"data\":[{\"comic_id\":123,\"name\":null},5,{\"comic_id\":\"9\"}],"
                      "\"slide_data\":[{\"comic_id\":\"4\"},{\"type\":\"0\"}]}")
        << "grid=3 slides=2";
    QTest::newRow("comic: missing everything") << "comic" << QByteArray("{}")
                                               << "data=1 name= vip=0 serial=0 thread= chapters=0 tops=0";
    QTest::newRow("chapter: not an object") << "chapter" << QByteArray("\"x\"") << "data=0";
    QTest::newRow("chapter: odd members") << "chapter" << QByteArray("{\"data\":[{\"image_id\":889},7]}") << "data=1 pages=2";
    QTest::newRow("version: refused")
        << "version" << QByteArray("{\"code\":1,\"data\":{\"stateCode\":0,\"message\":\"m\",\"returnData\":{\"name\":\"9\"}}}")
        << "data=1 returnData=0";
    QTest::newRow("version: returnData not an object")
        << "version" << QByteArray("{\"code\":1,\"data\":{\"stateCode\":1,\"returnData\":[1]}}") << "data=1 returnData=0";
    QTest::newRow("version: accepted")
        << "version" << QByteArray("{\"code\":1,\"data\":{\"stateCode\":1,\"returnData\":{\"name\":\"9\"}}}")
        << "data=1 returnData=1";
    QByteArray huge = "{\"data\":[";
    for (int i = 0; i < 20000; ++i)
        huge += "{\"comic_id\":\"" + QByteArray::number(i) + "\",\"name\":\"" + QByteArray(100, 'n') + "\"},";
    huge.chop(1);
    huge += "]}";
    QTest::newRow("list: large answer") << "list" << huge << "grid=20000 slides=0";
}

void TestWebService::malformedAnswers()
{
    QFETCH(QString, kind);
    QFETCH(QByteArray, body);
    QFETCH(QString, expected);

    std::unique_ptr<VORAHttpBaseWebService> service;
    std::function<QString()> summary;
    if (kind == QLatin1String("list")) {
        auto *s = new VORAGetRcommentService;
        service.reset(s);
        summary = [s] { return QStringLiteral("grid=%1 slides=%2").arg(s->recommentArray.size()).arg(s->slideArray.size()); };
    } else if (kind == QLatin1String("comic")) {
        auto *s = new VORAGetComicBasicInfoService;
        s->comicId = QStringLiteral("1");
        service.reset(s);
        summary = [s] {
            const auto info = s->comicInfo();
            if (!info)
                return QStringLiteral("data=0");
            return QStringLiteral("data=1 name=%1 vip=%2 serial=%3 thread=%4 chapters=%5 tops=%6")
                .arg(info->name).arg(info->is_vip).arg(info->serialStatus).arg(info->thread_id)
                .arg(info->chapterList.size()).arg(info->topList.size());
        };
    } else if (kind == QLatin1String("chapter")) {
        auto *s = new VORAGetChapterInfoService;
        s->chapterId = QStringLiteral("1");
        service.reset(s);
        summary = [s] {
            const auto pages = s->pageList();
            if (!pages)
                return QStringLiteral("data=0");
            return QStringLiteral("data=1 pages=%1").arg(pages->size());
        };
    } else {
        auto *s = new VORACheckVersionService;
        service.reset(s);
        summary = [s] { return QStringLiteral("data=%1 returnData=%2").arg(s->data ? 1 : 0).arg(s->returnData ? 1 : 0); };
    }
    m_site->faults().setMalformed(service->path(), body);
    ServiceRecorder recorder;
    QVERIFY(runAsync(*service, recorder));
    QVERIFY(!recorder.lastError);
    QCOMPARE(summary(), expected);
}

void TestWebService::gzipAnswerReachesParserAsText()
{
    m_site->faults().setGzip(true);
    ProbeService probe;
    ServiceRecorder recorder;
    QVERIFY(runAsync(probe, recorder));
    QVERIFY(!recorder.lastError);
    QCOMPARE(probe.parses, 1);
    QVERIFY2(probe.lastText.startsWith(QLatin1Char('{')), qPrintable(probe.lastText.left(40)));

    VORAGetCloudTagService tags; // and the real parser
    QVERIFY(runAsync(tags, recorder));
    QCOMPARE(tags.tagList.size(), 15);
}

void TestWebService::concurrentRequestsKeepTheirOwnAnswers()
{
    // The catalogue's own names, to check every answer against.
    VORASortWebService list;
    list.comicCategory = 3;
    list.size = 30;
    ServiceRecorder recorder;
    QVERIFY(runAsync(list, recorder));
    QVERIFY(list.comicList.size() >= 10);
    QHash<QString, QString> names;
    QStringList ids;
    for (const auto &c : list.comicList) {
        names.insert(c.comicId, c.comicName);
        ids << c.comicId;
    }

    m_site->faults().setLatencyMs(20);
    std::vector<std::unique_ptr<VORAGetComicBasicInfoService>> services;
    ServiceRecorder many;
    for (int i = 0; i < 20; ++i) {
        auto s = std::make_unique<VORAGetComicBasicInfoService>();
        s->comicId = ids.at(i % ids.size());
        s->asynchronousRequestWithDelegate(&many);
        services.push_back(std::move(s));
    }
    std::atomic_int workerMismatches{0};
    std::atomic_int workerDone{0};
    auto work = [&](int offset) {
        for (int i = 0; i < 5; ++i) {
            VORAGetComicBasicInfoService s;
            s.comicId = ids.at((offset + i * 3) % ids.size());
            s.synchronousRequest();
            const auto info = s.comicInfo();
            if (s.error() || !info || info->comicId != s.comicId || info->name != names.value(s.comicId)
                || s.request()) // a synchronous request is dropped at the end
                ++workerMismatches;
            ++workerDone;
        }
    };
    QThread *w1 = QThread::create(work, 1);
    QThread *w2 = QThread::create(work, 2);
    w1->start();
    w2->start();
    QTRY_COMPARE_WITH_TIMEOUT(many.calls, 20, 60000);
    QVERIFY(w1->wait(60000));
    QVERIFY(w2->wait(60000));
    delete w1;
    delete w2;
    QCOMPARE(workerDone.load(), 10);
    QCOMPARE(workerMismatches.load(), 0);
    for (const auto &s : services) {
        QVERIFY(!s->error());
        const auto info = s->comicInfo();
        QVERIFY(info);
        QCOMPARE(info->name, names.value(s->comicId));
        QVERIFY(!info->chapterList.isEmpty());
        QCOMPARE(info->chapterList.first().comicId, s->comicId);
    }
}

QTEST_GUILESS_MAIN(TestWebService)
#include "tst_webservice.moc"
