#include "platform/AppDirectories.h"
#include "platform/UserDefaults.h"

#include "TestHome.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

class tst_UserDefaults : public QObject
{
    Q_OBJECT
private slots:
    void directoriesAndDefaultsFollowTheHome();
    void valuesReachTheFileAtOnce();
};

void tst_UserDefaults::directoriesAndDefaultsFollowTheHome()
{
    TestHome home;
    // The exact paths are checked through VORAUtility in tst_utility.
    QCOMPARE(AppDirectories::home(), home.path());

    AppDirectories::ensureLayout();
    for (const QString &dir : {AppDirectories::documents(), AppDirectories::caches(),
                               AppDirectories::applicationSupport(), AppDirectories::preferences()})
        QVERIFY2(QFileInfo(dir).isDir(), qPrintable(dir));

    // A trailing separator in the variable does not double up.
    qputenv("QUORIN_HOME", (home.path() + "/").toUtf8());
    QCOMPARE(AppDirectories::documents(), home.path() + "/Documents");
    // Without the variable: the platform's data location, never an empty path.
    qunsetenv("QUORIN_HOME");
    QVERIFY(!AppDirectories::home().isEmpty());
    QVERIFY(!AppDirectories::home().endsWith('/'));
    qputenv("QUORIN_HOME", home.path().toUtf8());

    // The standard defaults follow the home too.
    UserDefaults &defaults = UserDefaults::standard();
    QCOMPARE(defaults.filePath(), home.path() + "/Library/Preferences/com.quorin.reader.ini");
    defaults.setValue("where", "first");
    {
        TestHome second;
        QVERIFY(!defaults.contains("where"));
        defaults.setValue("where", "second");
    }
    QCOMPARE(defaults.value("where").toString(), QString("first"));
}

void tst_UserDefaults::valuesReachTheFileAtOnce()
{
    // Switches and numbers of the wrong type: tst_userconfig, over a reopened
    // store; a removed key gone from the file: tst_appglobaldata's sign-out.
    TestHome home;
    const QString path = home.filePath("Library/Preferences/test.ini");
    {
        UserDefaults defaults(path);
        defaults.setValue("KIsVerticalScreen", false);
        defaults.setValue("QQLoginData", QVariantMap{{"QQLoginnickName", "小明"}});
        defaults.setValue("text", "not a map");
        // Written without waiting for the store to go away.
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QVERIFY(f.readAll().contains("KIsVerticalScreen=false"));
    }
    UserDefaults again(path);
    QCOMPARE(again.dictionaryForKey("QQLoginData").value("QQLoginnickName").toString(), QString("小明"));
    QVERIFY(again.dictionaryForKey("text").isEmpty());
}

QTEST_GUILESS_MAIN(tst_UserDefaults)
#include "tst_userdefaults.moc"
