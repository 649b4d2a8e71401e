#include "platform/KeyedArchive.h"

#include "TestHome.h"

#include <QCborArray>
#include <QCborMap>
#include <QDir>
#include <QFile>
#include <QTest>

class tst_KeyedArchive : public QObject
{
    Q_OBJECT
private slots:
    void roundTrip();
    void damagedFilesLoadAsUndefined_data();
    void damagedFilesLoadAsUndefined();
    void impossibleWritesFail();

private:
    static void writeRaw(const QString &path, const QByteArray &bytes)
    {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
};

void tst_KeyedArchive::roundTrip()
{
    TestHome home;
    const QString path = home.filePath("deep/er/AppStatus.txt"); // parents are created
    QCborMap object{{QStringLiteral("appOpenCount"), 3}, {QStringLiteral("deviceId"), QStringLiteral("ABC")}};
    QVERIFY(KeyedArchive::save(path, "AppStatus", object));

    const QCborValue loaded = KeyedArchive::load(path, "AppStatus");
    QCOMPARE(loaded.toMap().value(QStringLiteral("appOpenCount")).toInteger(), 3);
    QVERIFY(KeyedArchive::load(path, "User").isUndefined()); // other key

    // The file is one CBOR map {key: object}, and a second save replaces it.
    QVERIFY(KeyedArchive::save(path, "AppStatus", QCborValue(7)));
    QFile f(path);
    QVERIFY(f.open(QIODevice::ReadOnly));
    const QCborValue root = QCborValue::fromCbor(f.readAll());
    QCOMPARE(root.toMap().size(), 1);
    QCOMPARE(root.toMap().value(QStringLiteral("AppStatus")).toInteger(), 7);
    // No temporary file is left behind.
    QCOMPARE(QDir(home.filePath("deep/er")).entryList(QDir::Files), QStringList{"AppStatus.txt"});
    // A missing file and a directory in the file's place load as undefined.
    QVERIFY(KeyedArchive::load(home.filePath("Missing.txt"), "User").isUndefined());
    QVERIFY(KeyedArchive::load(home.filePath("deep"), "User").isUndefined());

    // Owner-only saves (the User.txt mode): see tst_appglobaldata.
}

void tst_KeyedArchive::damagedFilesLoadAsUndefined_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray valid = QCborValue(QCborMap{
        {QStringLiteral("User"), QCborMap{{QStringLiteral("nickName"), QStringLiteral("someone")}}}}).toCbor();

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("truncated") << valid.left(valid.size() / 2);
    QTest::newRow("text") << QByteArray("{\"User\": {}}");
    QTest::newRow("garbage") << QByteArray("\xff\xfe\x00\x13garbage\x9f\x9f", 13);
    QTest::newRow("array, not a map") << QCborValue(QCborArray{1, 2}).toCbor();
    QTest::newRow("map without the key")
        << QCborValue(QCborMap{{QStringLiteral("Other"), 1}}).toCbor();
    QTest::newRow("integer key") << QCborValue(QCborMap{{1, 2}}).toCbor();
    // A map announcing 2^32 entries, and a text string announcing 2^63 bytes.
    QTest::newRow("huge map header") << QByteArray("\xba\xff\xff\xff\xff", 5);
    QTest::newRow("huge string header")
        << QByteArray("\xa1\x64User\x7b\x7f\xff\xff\xff\xff\xff\xff\xff", 15);
}

void tst_KeyedArchive::damagedFilesLoadAsUndefined()
{
    QFETCH(QByteArray, bytes);
    TestHome home;
    const QString path = home.filePath("User.txt");
    writeRaw(path, bytes);
    QVERIFY(KeyedArchive::load(path, "User").isUndefined());
}

void tst_KeyedArchive::impossibleWritesFail()
{
    TestHome home;
    // A regular file where the parent directory should be: no write possible,
    // whoever runs the test.
    writeRaw(home.filePath("blocked"), "x");
    QVERIFY(!KeyedArchive::save(home.filePath("blocked/User.txt"), "User", QCborValue(1)));

    // A directory in place of the file itself.
    QVERIFY(QDir().mkpath(home.filePath("User.txt")));
    QVERIFY(!KeyedArchive::save(home.filePath("User.txt"), "User", QCborValue(1)));
}

QTEST_GUILESS_MAIN(tst_KeyedArchive)
#include "tst_keyedarchive.moc"
