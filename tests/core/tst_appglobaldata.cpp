#include "core/VORAAppGlobalData.h"
#include "core/VORAArchiveNames.h"
#include "core/VORAUtility.h"

#include "platform/AppDirectories.h"
#include "platform/KeyedArchive.h"
#include "platform/UserDefaults.h"

#include "TestHome.h"

#include <QCborMap>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QPointer>
#include <QTcpServer>
#include <QTest>

#include <memory>
#include <sys/stat.h>

// Stands in for the store's bookshelf manager, which lives in a higher library.
class BookshelfManagerDouble : public QObject
{
    Q_OBJECT
public:
    int syncCalls = 0;
    VORAAppGlobalData *holder = nullptr;
    Q_INVOKABLE void syncBookshelfFromServer() { ++syncCalls; }
};

class tst_AppGlobalData : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void firstStartThenSecondStart();
    void statusWrittenByAnEarlierRun();
    void damagedArchivesLoadAsDefaults_data();
    void damagedArchivesLoadAsDefaults();
    void userFileIsOwnerOnly();
    void userDecodingIsDefensive_data();
    void userDecodingIsDefensive();
    void logonOutKeepsTheAccountIdentity();
    void bookshelfSyncTimeRule_data();
    void bookshelfSyncTimeRule();
    void bookshelfSyncAtStart_data();
    void bookshelfSyncAtStart();

private:
    static QString userDataFile(const char *name)
    {
        return VORAUtility::getUserDataDirectory() + QString::fromUtf8(name);
    }
    static void writeRaw(const QString &path, const QByteArray &bytes)
    {
        QVERIFY(QDir().mkpath(QFileInfo(path).absolutePath()));
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    static void startUp()
    {
        AppDirectories::ensureLayout();
        VORAUtility::createUserDataDirectory();
        VORAUtility::createSupportDataDirectory();
        VORAUtility::createComicBookDirectory();
    }

    std::unique_ptr<TestHome> m_home;
    QList<BookshelfManagerDouble *> m_made;
};

void tst_AppGlobalData::init()
{
    m_home = std::make_unique<TestHome>();
    qunsetenv("QUORIN_API_BASE");
    m_made.clear();
    VORAAppGlobalData::setBookShelfManagerFactory([this](VORAAppGlobalData *holder) {
        auto *manager = new BookshelfManagerDouble;
        manager->holder = holder;
        m_made << manager;
        return manager;
    });
}

void tst_AppGlobalData::cleanup()
{
    VORAAppGlobalData::setBookShelfManagerFactory({});
    qunsetenv("QUORIN_API_BASE");
    m_home.reset();
}

void tst_AppGlobalData::firstStartThenSecondStart()
{
    startUp();
    for (const QString &dir : {VORAUtility::getUserDataDirectory(), VORAUtility::getSupportDataDirectory(),
                               VORAUtility::comicBookDirectory(), VORAUtility::getCachesDirectory()})
        QVERIFY2(QFileInfo(dir).isDir(), qPrintable(dir));

    const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);
    QString deviceId;
    QDateTime syncTime;
    {
        VORAAppGlobalData first;
        VORAAppStatus *status = first.appStatus();
        QCOMPARE(status->fromAppStore(), 1);
        QVERIFY(status->bookshelfUpdateTime() >= before);
        QVERIFY(!first.user()->isLogin());
        // The holder handed itself to the factory; synced "now": nothing to do.
        QCOMPARE(m_made.size(), 1);
        QCOMPARE(m_made.first()->holder, &first);
        QCOMPARE(m_made.first()->syncCalls, 0);
        // Creating the holder writes nothing; the start-up saves after counting.
        QVERIFY(!QFileInfo::exists(userDataFile(VORAArchiveNames::appStatusFile)));

        status->setAppOpenCount(status->appOpenCount() + 1);
        first.user()->setKey(QString("")); // an empty key still means signed in
        first.user()->setUserId("42");
        QVERIFY(first.saveAppStatus());
        QVERIFY(first.saveUser());
        deviceId = status->deviceId();
        syncTime = status->bookshelfUpdateTime();
    }
    {
        VORAAppGlobalData second;
        QCOMPARE(second.appStatus()->appOpenCount(), 1);
        QCOMPARE(second.appStatus()->deviceId(), deviceId);
        QCOMPARE(second.appStatus()->bookshelfUpdateTime(), syncTime);
        QVERIFY(second.user()->isLogin());
        QCOMPARE(second.user()->key(), std::optional<QString>(QString("")));
        QCOMPARE(second.user()->userId(), QString("42"));
    }
    // Another home, another first start: a different device id.
    TestHome other;
    VORAAppGlobalData elsewhere;
    QVERIFY(elsewhere.appStatus()->deviceId() != deviceId);
}

void tst_AppGlobalData::statusWrittenByAnEarlierRun()
{
    const QDateTime synced = QDateTime::currentDateTimeUtc().addSecs(-60);
    QCborMap old;
    old.insert(QStringLiteral("appOpenCount"), 41);
    old.insert(QStringLiteral("bookshelfUpdateTime"), QCborValue(synced));
    old.insert(QStringLiteral("deviceId"), QStringLiteral("OLD-DEVICE"));
    old.insert(QStringLiteral("fromAppStroe"), 0);
    old.insert(QStringLiteral("fromAppStore"), 1); // not the archive key: ignored
    old.insert(QStringLiteral("autoUpdate"), 1);   // never taken from the file
    writeRaw(userDataFile(VORAArchiveNames::appStatusFile),
             QCborValue(QCborMap{{QStringLiteral("AppStatus"), old}}).toCbor());

    VORAAppGlobalData global;
    const VORAAppStatus *s = global.appStatus();
    QCOMPARE(s->appOpenCount(), 41);
    QCOMPARE(s->bookshelfUpdateTime(), synced);
    QCOMPARE(s->deviceId(), QString("OLD-DEVICE"));
    QCOMPARE(s->fromAppStore(), 0);
    QCOMPARE(s->autoUpdate(), 0);

    // Written back under the old key, and still without autoUpdate.
    global.appStatus()->setAutoUpdate(1);
    QVERIFY(global.saveAppStatus());
    const QCborMap saved = KeyedArchive::load(userDataFile(VORAArchiveNames::appStatusFile),
                                              "AppStatus").toMap();
    QVERIFY(saved.contains(QStringLiteral("fromAppStroe")));
    QVERIFY(!saved.contains(QStringLiteral("fromAppStore")));
    QVERIFY(!saved.contains(QStringLiteral("autoUpdate")));
}

void tst_AppGlobalData::damagedArchivesLoadAsDefaults_data()
{
    // Files the archive cannot read at all (truncated, garbage, other keys): tst_keyedarchive.
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("root object is a number")
        << QCborValue(QCborMap{{QStringLiteral("AppStatus"), 5}, {QStringLiteral("User"), 5}}).toCbor();
}

void tst_AppGlobalData::damagedArchivesLoadAsDefaults()
{
    QFETCH(QByteArray, bytes);
    if (QByteArray(QTest::currentDataTag()) != "missing") {
        writeRaw(userDataFile(VORAArchiveNames::appStatusFile), bytes);
        writeRaw(userDataFile(VORAArchiveNames::userFile), bytes);
    }
    VORAAppGlobalData global;
    QCOMPARE(global.appStatus()->appOpenCount(), 0);
    QVERIFY(!global.appStatus()->deviceId().isEmpty());
    QVERIFY(!global.user()->isLogin());
    // A damaged file is replaced by the next save.
    QVERIFY(global.saveAppStatus());
    QVERIFY(global.loadAppStatus().has_value());
}

void tst_AppGlobalData::userFileIsOwnerOnly()
{
    startUp();
    const QString path = userDataFile(VORAArchiveNames::userFile);
    writeRaw(path, "old"); // an earlier, world-readable file
    QVERIFY(QFile::setPermissions(path, QFile::permissions(path) | QFileDevice::ReadOther
                                            | QFileDevice::ReadGroup));
    VORAAppGlobalData global;
    global.user()->setKey(QString("secret"));
    QVERIFY(global.saveUser());
    struct stat st {};
    QCOMPARE(::stat(QFile::encodeName(path).constData(), &st), 0);
    QCOMPARE(int(st.st_mode & 0777), 0600);
    QCOMPARE(global.loadUser()->key(), std::optional<QString>(QString("secret")));
}

void tst_AppGlobalData::userDecodingIsDefensive_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QCborValue>("stored");
    QTest::addColumn<int>("expected");

    // Values in range read back as stored (a saved user read by the next start:
    // firstStartThenSecondStart here, the tucao input's jump types in tests/tucao).
    QTest::newRow("userType 3") << "userType" << QCborValue(3) << 3;
    for (int t : {0, 4})
        QTest::addRow("userType %d", t) << "userType" << QCborValue(t) << 1;
    QTest::newRow("userType as text") << "userType" << QCborValue("2") << 1;
    QTest::newRow("userType as double") << "userType" << QCborValue(2.0) << 1;
    QTest::newRow("userType beyond int") << "userType" << QCborValue(qint64(1) << 32 | 2) << 1;
    QTest::newRow("userViewJumpType 2") << "userViewJumpType" << QCborValue(2) << 0;
    QTest::newRow("userViewJumpIsTopupType 3") << "userViewJumpIsTopupType" << QCborValue(3) << 0;
    QTest::newRow("userViewJumpIsTopupType -1") << "userViewJumpIsTopupType" << QCborValue(-1) << 0;
}

void tst_AppGlobalData::userDecodingIsDefensive()
{
    QFETCH(QString, field);
    QFETCH(QCborValue, stored);
    QFETCH(int, expected);
    QCborMap user{{QStringLiteral("userId"), QStringLiteral("7")},
                  {QStringLiteral("key"), 12345}, // not text: no key
                  {QStringLiteral("level"), QStringLiteral("high")},
                  {QStringLiteral("nickName"), QCborValue(QCborValue::Null)}};
    user.insert(field, stored);
    writeRaw(userDataFile(VORAArchiveNames::userFile),
             QCborValue(QCborMap{{QStringLiteral("User"), user}}).toCbor());

    VORAAppGlobalData global;
    const VORAUser *u = global.user();
    const int actual = field == "userType"   ? u->userType()
        : field == "userViewJumpType"        ? u->userViewJumpType()
                                             : u->userViewJumpIsTopupType();
    QCOMPARE(actual, expected);
    QCOMPARE(u->userId(), QString("7"));
    QVERIFY(!u->isLogin());
    QCOMPARE(u->level(), 0);
    QVERIFY(u->nickName().isEmpty());
}

void tst_AppGlobalData::logonOutKeepsTheAccountIdentity()
{
    startUp();
    UserDefaults::standard().setValue("QQLoginData", QVariantMap{{"QQLoginnickName", "qq name"}});
    UserDefaults::standard().setValue("KIsVerticalScreen", false);

    // The panel's sign-out (tst_accountflows) checks the id kept on disk, the
    // user type and the QQ data gone; here what else goes and what stays.
    VORAAppGlobalData global;
    VORAUser *u = global.user();
    u->setNickName("reader");
    u->setKey(QString("session"));
    u->setFaceImage("http://img/face.png");
    u->setSiteName("qq");
    u->setUserCoin(300);

    u->logonOut();
    QVERIFY(!u->isLogin());
    QVERIFY(u->nickName().isEmpty() && u->faceImage().isEmpty());
    QCOMPARE(u->userCoin(), 300);
    QCOMPARE(u->siteName(), QString("qq"));
    // Only that key goes, from the file too.
    UserDefaults fromDisk(UserDefaults::standardFilePath());
    QVERIFY(!fromDisk.contains("QQLoginData"));
    QVERIFY(fromDisk.contains("KIsVerticalScreen"));
    u->logonOut(); // twice, and without QQ data: harmless
    QVERIFY(!u->isLogin());
}

void tst_AppGlobalData::bookshelfSyncTimeRule_data()
{
    QTest::addColumn<qint64>("msecsAgo");
    QTest::addColumn<bool>("due");
    QTest::newRow("just synced") << qint64(0) << false;
    QTest::newRow("exactly 86400 s") << qint64(86400000) << false;
    QTest::newRow("86400.999 s") << qint64(86400999) << false;
    QTest::newRow("86401 s") << qint64(86401000) << true;
    QTest::newRow("in the future") << qint64(-90000000) << false;
}

void tst_AppGlobalData::bookshelfSyncTimeRule()
{
    QFETCH(qint64, msecsAgo);
    QFETCH(bool, due);
    const QDateTime now = QDateTime::fromMSecsSinceEpoch(1700000000000, Qt::UTC);
    QCOMPARE(VORAAppGlobalData::isBookshelfSyncDue(now.addMSecs(-msecsAgo), now), due);
    QCOMPARE(VORAAppGlobalData::isBookshelfSyncDue(QDateTime(), now), true); // never synced
}

void tst_AppGlobalData::bookshelfSyncAtStart_data()
{
    QTest::addColumn<qint64>("secondsAgo");
    QTest::addColumn<bool>("reachable");
    QTest::addColumn<int>("syncCalls");
    QTest::newRow("86401 s, network") << qint64(86401) << true << 1;
    QTest::newRow("86401 s, no network") << qint64(86401) << false << 0; // when it is due: bookshelfSyncTimeRule
}

void tst_AppGlobalData::bookshelfSyncAtStart()
{
    QFETCH(qint64, secondsAgo);
    QFETCH(bool, reachable);
    QFETCH(int, syncCalls);

    QTcpServer site;
    QVERIFY(site.listen(QHostAddress::LocalHost, 0));
    const quint16 port = site.serverPort();
    if (!reachable)
        site.close();
    qputenv("QUORIN_API_BASE", QByteArray("http://127.0.0.1:") + QByteArray::number(port) + "/ios/");
    // Wait until the monitor of this host knows the state the row wants.
    QTRY_COMPARE(VORAUtility::isExistenceNetwork(), reachable);

    QCborMap status{{QStringLiteral("bookshelfUpdateTime"),
                     QCborValue(QDateTime::currentDateTimeUtc().addSecs(-secondsAgo))},
                    {QStringLiteral("fromAppStroe"), 0}};
    writeRaw(userDataFile(VORAArchiveNames::appStatusFile),
             QCborValue(QCborMap{{QStringLiteral("AppStatus"), status}}).toCbor());

    QPointer<QObject> manager;
    {
        VORAAppGlobalData global;
        manager = global.bookShelfManager();
        QVERIFY(manager);
        QCOMPARE(qobject_cast<BookshelfManagerDouble *>(manager.data())->syncCalls, syncCalls);
    }
    QVERIFY(!manager); // the holder owns its manager

    // Without a factory there is no manager and nothing to call.
    VORAAppGlobalData::setBookShelfManagerFactory({});
    VORAAppGlobalData bare;
    QVERIFY(!bare.bookShelfManager());
}

QTEST_GUILESS_MAIN(tst_AppGlobalData)
#include "tst_appglobaldata.moc"
