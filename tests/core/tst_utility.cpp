#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORASystemConfig.h"
#include "core/VORAUtility.h"

#include "platform/NotificationCenter.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFont>
#include <QJsonDocument>
#include <QTest>

class tst_Utility : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void directoriesAndFiles();
    void fileSizeOfDirCountsOnlyTheTopLevel();
    void validators_data();
    void validators();
    void jsonReaders_data();
    void jsonReaders();
    void urlEscaping_data();
    void urlEscaping();
    void systemConfig();
    void textHeight();
    void uiRequests();

private:
    std::unique_ptr<TestHome> m_home;
};

void tst_Utility::init()
{
    m_home = std::make_unique<TestHome>();
}

void tst_Utility::cleanup()
{
    qunsetenv("QUORIN_API_BASE");
    qunsetenv("QUORIN_PAY_BASE");
    m_home.reset();
}

void tst_Utility::directoriesAndFiles()
{
    // The doubled slash of the common cache is kept as the old app wrote it;
    // every path follows the home when it changes.
    QCOMPARE(VORAUtility::commonCacheDirectory(), m_home->path() + "/Library/Caches/appCache//common/");
    {
        TestHome other;
        QVERIFY(VORAUtility::pageCacheDirectory().startsWith(other.path() + "/"));
    }

    // The start-up directories: see tst_appglobaldata.
    // createDir leaves whatever already stands at the path.
    const QString file = m_home->filePath("occupied");
    QFile f(file);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.close();
    VORAUtility::createDir(file);
    QVERIFY(QFileInfo(file).isFile());
    const QString tree = m_home->filePath("a/b/c");
    VORAUtility::createDir(tree);
    QVERIFY(QFileInfo(tree).isDir());
    QFile leaf(tree + "/leaf");
    QVERIFY(leaf.open(QIODevice::WriteOnly));
    leaf.close();
    VORAUtility::deleteDir(m_home->filePath("a"));
    QVERIFY(!QFileInfo::exists(m_home->filePath("a")));
    VORAUtility::deleteDir(QString()); // ignored, home intact
    QVERIFY(QFileInfo(m_home->path()).isDir());
}

void tst_Utility::fileSizeOfDirCountsOnlyTheTopLevel()
{
    const QString dir = m_home->filePath("page");
    QVERIFY(QDir().mkpath(dir + "/sub/deeper"));
    const auto write = [](const QString &path, qint64 size) {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        QVERIFY(f.resize(size));
    };
    write(dir + "/page.jpg", 1048576);
    write(dir + "/half.jpg", 524288);
    write(dir + "/sub/a.jpg", 5000000);
    write(dir + "/sub/deeper/b.jpg", 123);
    QCOMPARE(VORAUtility::fileSizeOfDir(dir), 1.5);
    QCOMPARE(VORAUtility::fileSizeOfDir(dir + "/sub/deeper"), 123.0 / 1048576.0);
    QCOMPARE(VORAUtility::fileSizeOfDir(m_home->filePath("missing")), 0.0);
}

void tst_Utility::validators_data()
{
    QTest::addColumn<QString>("validator");
    QTest::addColumn<QString>("input");
    QTest::addColumn<bool>("valid");

    int n = 0;
    const auto rows = [&n](const char *validator, bool valid, const QStringList &inputs) {
        for (const QString &input : inputs)
            QTest::addRow("%s #%d", validator, ++n) << validator << input << valid;
    };
    rows("email", true, {"reader@quorin.com", "a.b_c%d+e-f@mail.example.cn"});
    rows("email", false, {"reader@quorin.comic", "reader@quorin.c", "reader.quorin.com", "rea der@quorin.com",
                          "reader@quorin.com x", "", "reader@quorin.com\n"});
    QStringList phones, badPhones{"1701234567", "170123456789", "170 12345678", "", QString::fromUtf8("170１２３４５６７８")};
    for (const char *prefix : {"130", "133", "134", "145", "147", "170", "177", "178", "186", "189"})
        phones << QString(prefix) + "12345678";
    for (const char *prefix : {"120", "128", "140", "171"})
        badPhones << QString(prefix) + "12345678";
    rows("phone", true, phones);
    rows("phone", false, badPhones);
    rows("number", true, {"0123456789", ""});
    rows("number", false, {"-1", "1.5", " 1", QString::fromUtf8("１２"), QString::fromUtf8("٣")});
}

void tst_Utility::validators()
{
    QFETCH(QString, validator);
    QFETCH(QString, input);
    QFETCH(bool, valid);
    bool actual = false;
    if (validator == "email")
        actual = VORAUtility::isValidataEmail(input);
    else if (validator == "phone")
        actual = VORAUtility::isValidataPhoneNumber(input);
    else
        actual = VORAUtility::isNumberOnlyString(input);
    QCOMPARE(actual, valid);
}

void tst_Utility::jsonReaders_data()
{
    QTest::addColumn<QByteArray>("json"); // the value of "v"; objects and arrays are the only non-empty ones
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("integer");
    QTest::addColumn<double>("number");

    const qint64 max = std::numeric_limits<qint64>::max();
    QTest::newRow("string") << QByteArray(R"("abc")") << "abc" << qint64(0) << 0.0;
    QTest::newRow("numeric string") << QByteArray(R"("42")") << "42" << qint64(42) << 42.0;
    QTest::newRow("leading integer") << QByteArray(R"(" -12abc")") << " -12abc" << qint64(-12) << -12.0;
    QTest::newRow("decimal string") << QByteArray(R"("3.75")") << "3.75" << qint64(3) << 3.75;
    QTest::newRow("plus sign") << QByteArray(R"("+7")") << "+7" << qint64(7) << 7.0;
    QTest::newRow("huge string") << QByteArray(R"("99999999999999999999999")") << "99999999999999999999999" << max << 1e23;
    QTest::newRow("empty string") << QByteArray(R"("")") << "" << qint64(0) << 0.0;
    QTest::newRow("integer") << QByteArray("1001") << "" << qint64(1001) << 1001.0;
    QTest::newRow("negative double") << QByteArray("-2.9") << "" << qint64(-2) << -2.9;
    QTest::newRow("big integer") << QByteArray("1700000000123") << "" << qint64(1700000000123) << 1700000000123.0;
    QTest::newRow("huge double") << QByteArray("1e300") << "" << max << 1e300;
    QTest::newRow("null") << QByteArray("null") << "" << qint64(0) << 0.0;
    QTest::newRow("true") << QByteArray("true") << "" << qint64(1) << 1.0;
    QTest::newRow("false") << QByteArray("false") << "" << qint64(0) << 0.0;
    QTest::newRow("object") << QByteArray(R"({"a":1})") << "" << qint64(0) << 0.0;
    QTest::newRow("array") << QByteArray("[1,2]") << "" << qint64(0) << 0.0;
    QTest::newRow("missing") << QByteArray() << "" << qint64(0) << 0.0;
}

void tst_Utility::jsonReaders()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, text);
    QFETCH(qint64, integer);
    QFETCH(double, number);
    const QJsonObject o = json.isEmpty() ? QJsonObject() : QJsonDocument::fromJson("{\"v\":" + json + "}").object();
    const QJsonValue v = o.value("v");
    QCOMPARE(VORAUtility::jsonString(v), text);
    QCOMPARE(VORAUtility::jsonInteger(v), integer);
    QCOMPARE(VORAUtility::jsonDouble(v), number);
    QCOMPARE(!VORAUtility::jsonObject(v).isEmpty(), json.startsWith('{'));
    QCOMPARE(!VORAUtility::jsonArray(v).isEmpty(), json.startsWith('['));
}

void tst_Utility::urlEscaping_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("escaped");   // urlParameterEscape
    QTest::addColumn<QString>("encoded");   // encodeUrlParameter

    QTest::newRow("plain") << "abcXYZ019-._~" << "abcXYZ019-._~" << "abcXYZ019-._~";
    QTest::newRow("reserved") << "!*'();:@&=+$,/?%#[]" << "%21%2A%27%28%29%3B%3A%40%26%3D%2B%24%2C%2F%3F%25%23%5B%5D"
                              << "!*'();:@&=+$,/?%#[]";
    QTest::newRow("blank and quote") << "a b\"c" << "a%20b%22c" << "a%20b%22c";
    QTest::newRow("chinese") << QString::fromUtf8("海贼") << "%E6%B5%B7%E8%B4%BC" << "%E6%B5%B7%E8%B4%BC";
    QTest::newRow("angle and braces") << "<{|}>^`\\" << "%3C%7B%7C%7D%3E%5E%60%5C" << "%3C%7B%7C%7D%3E%5E%60%5C";
    QTest::newRow("empty") << "" << "" << "";
}

void tst_Utility::urlEscaping()
{
    QFETCH(QString, input);
    QFETCH(QString, escaped);
    QFETCH(QString, encoded);
    QCOMPARE(VORAUtility::urlParameterEscape(input), escaped);
    QCOMPARE(VORAUtility::encodeUrlParameter(input), encoded);
}

void tst_Utility::systemConfig()
{
    qunsetenv("QUORIN_API_BASE");
    qunsetenv("QUORIN_PAY_BASE");
    QCOMPARE(VORAUtility::dateFromSeconds(1700000000).toString(Qt::ISODate), QString("2023-11-14T22:13:20Z"));

    // Read on every call; a missing trailing "/" is added.
    qputenv("QUORIN_API_BASE", "http://api.example.test:8080/base");
    qputenv("QUORIN_PAY_BASE", "http://pay.example.test/");
    QCOMPARE(VORASystemConfig::getWebServiceUrlBase(), QString("http://api.example.test:8080/base/"));
    QCOMPARE(VORASystemConfig::getPayWebServiceUrlBase(), QString("http://pay.example.test/"));
    QCOMPARE(VORASystemConfig::webHostName(), QString("api.example.test"));
    QCOMPARE(VORASystemConfig::webHostPort(), quint16(8080));
    qputenv("QUORIN_API_BASE", "https://secure.example.test");
    QCOMPARE(VORASystemConfig::webHostPort(), quint16(443));
    qputenv("QUORIN_API_BASE", "");
    QCOMPARE(VORASystemConfig::getWebServiceUrlBase(), QString("http://127.0.0.1:48042/"));
}

void tst_Utility::textHeight()
{
    QFont font;
    font.setPixelSize(14);
    QCOMPARE(VORAUtility::heightForText(QString(), font, 0, 200), QSizeF(0, 0));
    const QSizeF one = VORAUtility::heightForText("word", font, 0, 200);
    QVERIFY(one.height() > 0);
    const QString paragraph = QString("many words in a row ").repeated(20);
    const QSizeF wrapped = VORAUtility::heightForText(paragraph, font, 0, 200);
    QVERIFY(wrapped.height() > 3 * one.height());
    QVERIFY(wrapped.width() <= 200);
    const QSizeF huge = VORAUtility::heightForText(paragraph.repeated(100), font, 0, 200);
    QCOMPARE(huge.height(), 4000.0);
}

void tst_Utility::uiRequests()
{
    // What the overlay layer does with a request is tst_appservices'.
    QObject observer;
    int notices = 0;
    NotificationCenter::defaultCenter().addObserver(&observer, VORANotificationNames::uiNoticeRequest,
                                                    [&](const Notification &) { ++notices; });
    VORAAppStatus *status = VORAAppGlobalData::shareAppGlobalData()->appStatus();
    const qint64 saved = status->fromAppStore();
    status->setFromAppStore(1);
    VORAUtility::noticeWithStatusBarWithString("自动登录成功!");
    QCOMPARE(notices, 0); // suppressed for store builds
    status->setFromAppStore(0);
    VORAUtility::noticeWithStatusBarWithString("自动登录成功!");
    status->setFromAppStore(saved);
    QCOMPARE(notices, 1);
}

QTEST_MAIN(tst_Utility)
#include "tst_utility.moc"
