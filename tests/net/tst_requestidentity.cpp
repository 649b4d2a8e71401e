// Requests built on worker threads while the main thread signs in and out:
// every URL carries one whole key (or none) and the device id. Meant to run
// under the thread sanitizer too (README, sanitizer builds).

#include "net/VORAGetCloudTagService.h"

#include "core/VORAAppGlobalData.h"

#include <QElapsedTimer>
#include <QMutex>
#include <QRegularExpression>
#include <QTest>
#include <QThread>

#include <atomic>
#include <memory>
#include <vector>

class TestRequestIdentity : public QObject
{
    Q_OBJECT
private slots:
    void workersReadWholeKeysDuringSignInAndOut();
};

void TestRequestIdentity::workersReadWholeKeysDuringSignInAndOut()
{
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    // Long texts live on the heap: a torn read shows as a wrong or broken key.
    const QStringList keys{QString(64, QLatin1Char('a')), QString(80, QLatin1Char('b')), QString()};
    const QStringList devices{QString(40, QLatin1Char('D')), QString(48, QLatin1Char('E'))};

    global->appStatus()->setDeviceId(devices.first());
    std::atomic_bool stop{false};
    std::atomic_int built{0};
    std::atomic_int wrong{0};
    const QString shape = QStringLiteral("\\?(?:key=([ab]*)&)?version=[^&]*&android_id=([DE]*)&time=");
    QString firstWrong;
    QMutex firstWrongMutex;
    std::vector<std::unique_ptr<QThread>> workers;
    for (int i = 0; i < 3; ++i) {
        workers.emplace_back(QThread::create([&] {
            VORAGetCloudTagService service;
            const QRegularExpression expected(shape); // one per thread
            while (!stop.load()) {
                const QString url = service.getRequestUrl();
                const QRegularExpressionMatch m = expected.match(url);
                const bool keyOk = !m.hasCaptured(1) || keys.contains(m.captured(1));
                if (!m.hasMatch() || !keyOk || !devices.contains(m.captured(2))) {
                    if (++wrong == 1) {
                        QMutexLocker lock(&firstWrongMutex);
                        firstWrong = url;
                    }
                }
                ++built;
            }
        }));
        workers.back()->start();
    }

    QElapsedTimer clock;
    clock.start();
    for (int i = 0; built.load() < 20000 && clock.elapsed() < 20000; ++i) {
        if (i % 3 == 2)
            global->user()->setKey(std::nullopt); // signed out
        else
            global->user()->setKey(keys.at(i % keys.size()));
        global->appStatus()->setDeviceId(devices.at(i % devices.size()));
    }
    stop = true;
    for (auto &worker : workers)
        QVERIFY(worker->wait(10000));
    QVERIFY2(wrong.load() == 0, qPrintable(QStringLiteral("%1 wrong, first: %2").arg(wrong.load()).arg(firstWrong)));
    QVERIFY(built.load() > 0);
}

QTEST_GUILESS_MAIN(TestRequestIdentity)
#include "tst_requestidentity.moc"
