// The app and its embedded site as real processes: the site ends with the app
// however the app ends, comes back when it dies while the app runs (and the
// feed loads again), gives up after a bounded number of restarts, and a site
// already on the port is used only when it serves this app home.
#include "SiteTestClient.h"

#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace {
const QString kApp = QStringLiteral(QUORIN_APP_EXECUTABLE);
const QString kSite = QStringLiteral(QUORIN_SITE_EXECUTABLE);
constexpr int kStartMs = 60000; // a cold start draws the demo catalogue
constexpr int kMaxRestarts = 3; // VORAEmbeddedSite::maxRestarts

quint16 freePort()
{
    QTcpServer probe;
    return probe.listen(QHostAddress::LocalHost, 0) ? probe.serverPort() : 0;
}

// A process that still runs (a zombie has ended).
bool alive(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return false;
    const QByteArray line = stat.readAll();
    const int close = line.lastIndexOf(')');
    return close > 0 && line.size() > close + 2 && line.at(close + 2) != 'Z';
}

} // namespace

class TestEmbeddedSite : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        // Read all along: a full pipe would stop the app in its next log line.
        connect(&m_app, &QProcess::readyRead, this, [this] { m_log += m_app.readAll(); });
    }
    void init();
    void cleanup();
    void siteEndsWithTheApp_data();
    void siteEndsWithTheApp();
    void siteComesBackThenGivesUp();
    void reusesOnlyItsOwnSite_data();
    void reusesOnlyItsOwnSite();

private:
    void startApp();
    // The site's "site/identity" answer, empty when nothing answers.
    QJsonObject identity();
    qint64 sitePid() { return identity().value(QLatin1String("pid")).toInteger(); }
    int feedRequests() { return identity().value(QLatin1String("requests")).toObject().value(QLatin1String("ios/pad/list.php")).toInt(); }
    QByteArray appLog() { return m_log; }

    std::unique_ptr<QTemporaryDir> m_home;
    quint16 m_port = 0;
    QProcess m_app;
    QProcess m_other;
    QByteArray m_log;
};

void TestEmbeddedSite::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    m_port = freePort();
    m_log.clear();
    QVERIFY(m_home->isValid() && m_port);
}

void TestEmbeddedSite::cleanup()
{
    if (QTest::currentTestFailed()) { // the app's own lines, without the site's request log
        for (const QByteArray &line : m_log.split('\n'))
            if (line.startsWith("quorin.app") || line.startsWith("quorin.platform"))
                qInfo().noquote() << line;
    }
    for (QProcess *p : {&m_app, &m_other}) {
        p->kill();
        p->waitForFinished(5000);
    }
    if (const qint64 pid = sitePid())
        ::kill(pid_t(pid), SIGKILL);
}

void TestEmbeddedSite::startApp()
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    const QString base = QStringLiteral("http://127.0.0.1:%1/").arg(m_port);
    env.insert(QStringLiteral("QUORIN_HOME"), m_home->path());
    env.insert(QStringLiteral("QUORIN_API_BASE"), base);
    env.insert(QStringLiteral("QUORIN_PAY_BASE"), base);
    env.insert(QStringLiteral("QUORIN_SITE_EMBED"), QStringLiteral("1"));
    env.insert(QStringLiteral("QUORIN_SITE_BIN"), kSite);
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    m_app.setProcessEnvironment(env);
    m_app.setProcessChannelMode(QProcess::MergedChannels);
    m_app.start(kApp, {QStringLiteral("--no-screenshot")});
    QVERIFY(m_app.waitForStarted(10000));
}

QJsonObject TestEmbeddedSite::identity()
{
    SiteTestClient client(QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(m_port)));
    return client.get(QStringLiteral("site/identity")).json;
}

void TestEmbeddedSite::siteEndsWithTheApp_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::addColumn<int>("siteGoneMs");
    QTest::addColumn<bool>("cleanExit");
    QTest::newRow("SIGTERM") << int(SIGTERM) << 3000 << true;
    QTest::newRow("SIGINT") << int(SIGINT) << 3000 << true;
    QTest::newRow("SIGKILL") << int(SIGKILL) << 5000 << false;
}

void TestEmbeddedSite::siteEndsWithTheApp()
{
    QFETCH(int, signalNumber);
    QFETCH(int, siteGoneMs);
    QFETCH(bool, cleanExit);
    startApp();
    QTRY_VERIFY_WITH_TIMEOUT(sitePid() > 0, kStartMs);
    const qint64 site = sitePid();
    QVERIFY(site != m_app.processId()); // a child of its own, not a thread

    QElapsedTimer clock;
    clock.start();
    ::kill(pid_t(m_app.processId()), signalNumber);
    QTRY_VERIFY_WITH_TIMEOUT(!alive(site), siteGoneMs);
    QTRY_COMPARE_WITH_TIMEOUT(m_app.state(), QProcess::NotRunning, 5000);
    if (cleanExit)
        QVERIFY2(m_app.exitStatus() == QProcess::NormalExit && m_app.exitCode() == 0,
                 qPrintable(QStringLiteral("status %1, code %2").arg(m_app.exitStatus()).arg(m_app.exitCode())));
    qInfo() << "site gone" << clock.elapsed() << "ms after the signal";
}

void TestEmbeddedSite::siteComesBackThenGivesUp()
{
    startApp();
    QTRY_VERIFY_WITH_TIMEOUT(feedRequests() > 0, kStartMs); // started and in use
    for (int restart = 1; restart <= kMaxRestarts; ++restart) {
        const qint64 before = sitePid();
        ::kill(pid_t(before), SIGKILL);
        // Back within seconds, and the feed asked the new site again.
        QTRY_VERIFY_WITH_TIMEOUT(sitePid() > 0 && sitePid() != before, 15000);
        QTRY_VERIFY_WITH_TIMEOUT(feedRequests() > 0, 15000);
    }
    ::kill(pid_t(sitePid()), SIGKILL);
    QTRY_VERIFY_WITH_TIMEOUT(appLog().contains("not starting it any more"), 15000);
    QVERIFY(identity().isEmpty());
    QCOMPARE(m_app.state(), QProcess::Running);
}

void TestEmbeddedSite::reusesOnlyItsOwnSite_data()
{
    QTest::addColumn<bool>("sameHome");
    QTest::newRow("this app home") << true;
    QTest::newRow("another app home") << false;
}

void TestEmbeddedSite::reusesOnlyItsOwnSite()
{
    QFETCH(bool, sameHome);
    QTemporaryDir elsewhere;
    const QString data = sameHome ? m_home->path() + QLatin1String("/site-data") : elsewhere.path();
    m_other.start(kSite, {QStringLiteral("--port"), QString::number(m_port), QStringLiteral("--data"), data});
    QTRY_VERIFY_WITH_TIMEOUT(sitePid() == m_other.processId(), kStartMs);

    startApp();
    if (sameHome) {
        // Used as it is: the app's requests reach it.
        QTRY_VERIFY_WITH_TIMEOUT(feedRequests() > 0, kStartMs);
    } else {
        // Said plainly, not used silently.
        QTRY_VERIFY_WITH_TIMEOUT(appLog().contains("not as the site of this app home"), kStartMs);
    }
    QCOMPARE(sitePid(), m_other.processId()); // no second site was started
    QCOMPARE(m_app.state(), QProcess::Running);
}

QTEST_GUILESS_MAIN(TestEmbeddedSite)
#include "tst_embeddedsite.moc"
