// A process killed with SIGKILL in the middle of a stream of saves loses no
// save that had returned.

#include "TestHome.h"

#include "store/VORADatabaseManager.h"

#include <QProcess>
#include <QTest>

class TestStoreCrash : public QObject
{
    Q_OBJECT

private slots:
    void killedWriterKeepsEveryCommit();
};

void TestStoreCrash::killedWriterKeepsEveryCommit()
{
    TestHome home;
    for (int round = 0; round < 3; ++round) {
        QProcess writer;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QUORIN_HOME", home.path());
        writer.setProcessEnvironment(env);
        writer.start(QStringLiteral(STORE_COMMIT_LOOP), {});
        QVERIFY(writer.waitForStarted());
        QByteArray output;
        QTRY_VERIFY_WITH_TIMEOUT((output += writer.readAllStandardOutput()).count('\n') >= 300, 60000);
        writer.kill(); // SIGKILL: no destructor, no checkpoint, no close
        QVERIFY(writer.waitForFinished());
        output += writer.readAllStandardOutput();

        const auto lines = output.split('\n');
        QStringList printed;
        for (const QByteArray &line : lines) {
            if (!line.isEmpty())
                printed << QString::fromLatin1(line);
        }
        QVERIFY(printed.size() >= 300);
        VORADatabaseManager db;
        QStringList stored;
        for (const auto &chapter : db.getDownloadChapterWithComicId("crash"))
            stored << chapter.chapterId;
        for (const QString &id : std::as_const(printed))
            QVERIFY2(stored.contains(id), qPrintable("commit " + id + " was lost"));
        // Each run starts counting from 1 again; clear the chapters for the next round.
        db.deleteDownloadChapterList(db.getDownloadChapterWithComicId("crash"));
        QVERIFY(db.getAllDownloadChapter().isEmpty());
    }
}

QTEST_GUILESS_MAIN(TestStoreCrash)
#include "tst_storecrash.moc"
