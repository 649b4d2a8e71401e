// The account forms and the user panel against the reference site over
// loopback: every sign-in route, registration and password reset by a
// text-message code, sign-out, the silent sign-in at the next start, and what
// the app home and the log keep of it all.

#include "NetTestSite.h"

#include "account/VORAAccountFiller.h"
#include "account/VORAForgetPasswordViewController.h"
#include "account/VORAHwLoginViewController.h"
#include "account/VORASignInUserView.h"
#include "account/VORASignUpViewController.h"
#include "account/VORAUserViewController.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORAUtility.h"
#include "net/VORAAutoLoginService.h"
#include "platform/UserDefaults.h"

#include <QDirIterator>
#include <QLoggingCategory>
#include <QMutex>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTcpServer>

namespace {

QMutex g_logMutex;
QStringList g_log;
QtMessageHandler g_previousHandler = nullptr;
QLoggingCategory::CategoryFilter g_previousFilter = nullptr;

// Every message, debug included, is kept; only warnings reach the console.
void captureLog(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    {
        QMutexLocker lock(&g_logMutex);
        g_log << message;
    }
    if (type != QtDebugMsg && type != QtInfoMsg && g_previousHandler)
        g_previousHandler(type, context, message);
}

void everyQuorinMessage(QLoggingCategory *category)
{
    if (g_previousFilter)
        g_previousFilter(category);
    if (qstrncmp(category->categoryName(), "quorin.", 7) == 0)
        category->setEnabled(QtDebugMsg, true);
}

QString codeSentTo(const QString &mobile)
{
    const QRegularExpression re(QStringLiteral("verification code for %1 is ([0-9]{6})").arg(mobile));
    QMutexLocker lock(&g_logMutex);
    for (auto it = g_log.crbegin(); it != g_log.crend(); ++it) {
        if (const auto m = re.match(*it); m.hasMatch())
            return m.captured(1);
    }
    return QString();
}

VORAUser *globalUser()
{
    return VORAAppGlobalData::shareAppGlobalData()->user();
}

} // namespace

class TestAccountFlows : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void signInRoutes_data();
    void signInRoutes();
    void failedSignIn_data();
    void failedSignIn();
    void registrationAndReset();
    void silentSignInAtNextStart();
    void noPasswordKept();
    void cleanupTestCase();

private:
    std::unique_ptr<NetTestSite> m_site;
    QStringList m_passwords;
};

void TestAccountFlows::initTestCase()
{
    g_previousHandler = qInstallMessageHandler(captureLog);
    g_previousFilter = QLoggingCategory::installFilter(everyQuorinMessage);
    m_site = std::make_unique<NetTestSite>();
    QVERIFY(m_site->port);
}

void TestAccountFlows::cleanupTestCase()
{
    m_site.reset();
    QLoggingCategory::installFilter(g_previousFilter);
    qInstallMessageHandler(g_previousHandler);
}

void TestAccountFlows::signInRoutes_data()
{
    QTest::addColumn<QString>("route");
    QTest::addColumn<int>("userType");
    QTest::addColumn<QString>("siteName");
    QTest::addColumn<QString>("nickName"); // what the panel shows

    QTest::newRow("site account") << "site" << 2 << "quorin" << "土豪读者";
    QTest::newRow("QQ") << "qq" << 2 << "qq" << "小企鹅";
    QTest::newRow("microblog partner") << "weibo" << 2 << "weibo" << "小企鹅";
    QTest::newRow("passport") << "passport" << 3 << "harrow" << "小企鹅";
}

void TestAccountFlows::signInRoutes()
{
    QFETCH(QString, route);
    QFETCH(int, userType);
    QFETCH(QString, siteName);
    QFETCH(QString, nickName);
    VORAUserViewController panel;
    QVERIFY(!panel.isLogin());
    VORAAccountForm *form = panel.signInView();
    if (route == QLatin1String("site")) {
        panel.signInView()->setUserName(QStringLiteral("rich"));
        panel.signInView()->setPassword(QStringLiteral("rich123"));
        m_passwords << QStringLiteral("rich123");
        panel.signInView()->signIn();
    } else if (route == QLatin1String("passport")) {
        form = panel.hwLoginView();
        panel.hwLoginView()->setAccount(nickName);
        panel.hwLoginView()->signIn();
    } else {
        panel.signInView()->setPartnerAccount(nickName);
        if (route == QLatin1String("qq"))
            panel.signInView()->signInWithQQ();
        else
            panel.signInView()->signInWithPartner(route);
    }
    QVERIFY(form->busy());
    QTRY_VERIFY_WITH_TIMEOUT(!form->busy(), 10000);
    QVERIFY2(panel.isLogin(), qPrintable(form->message()));
    QCOMPARE(panel.nickName(), nickName);
    QCOMPARE(panel.signInView()->password(), QString());
    QCOMPARE(globalUser()->userType(), userType);
    QCOMPARE(globalUser()->siteName(), siteName);
    QCOMPARE(UserDefaults::standard().contains(QStringLiteral("QQLoginData")), route == QLatin1String("qq"));
    const auto saved = VORAAppGlobalData::shareAppGlobalData()->loadUser();
    QVERIFY(saved && saved->key() == globalUser()->key());

    const QString userId = globalUser()->userId();
    QVERIFY(!userId.isEmpty());
    panel.signOut();
    QVERIFY(!panel.isLogin());
    const auto signedOut = VORAAppGlobalData::shareAppGlobalData()->loadUser();
    QVERIFY(signedOut && !signedOut->isLogin());
    QCOMPARE(signedOut->userId(), userId);
    QCOMPARE(signedOut->userType(), 1); // what else the sign-out clears: tst_appglobaldata
}

void TestAccountFlows::failedSignIn_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("message");

    QTest::newRow("refused") << "" << "用户名或密码错误";
    QTest::newRow("answer cut off") << "drop" << "登录失败，请稍后再试";
    QTest::newRow("no network") << "closed" << "网络断开，检查网络设置";
}

void TestAccountFlows::failedSignIn()
{
    QFETCH(QString, fault);
    QFETCH(QString, message);
    VORASignInUserView form;
    QVERIFY(form.message().isEmpty());
    QTcpServer closed;
    if (fault == QLatin1String("drop")) {
        m_site->faults().setDropMidBody(QStringLiteral("ios/pad/login.php"));
    } else if (fault == QLatin1String("closed")) {
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const QByteArray base = QStringLiteral("http://127.0.0.1:%1/").arg(closed.serverPort()).toUtf8();
        closed.close();
        qputenv("QUORIN_API_BASE", base);
    }
    const QByteArray before = [] {
        QFile f(VORAUtility::getUserDataDirectory() + QStringLiteral("User.txt"));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }();
    form.setUserName(QStringLiteral("reader"));
    form.setPassword(QStringLiteral("wrong-pw-1"));
    m_passwords << QStringLiteral("wrong-pw-1");
    form.signIn();
    QTRY_VERIFY_WITH_TIMEOUT(!form.busy(), 10000);
    m_site->faults().clear();
    qputenv("QUORIN_API_BASE", m_site->site->baseUrl().toString().toUtf8());
    QCOMPARE(form.message(), message);
    QCOMPARE(form.password(), QString());
    QVERIFY(!globalUser()->isLogin());
    QFile after(VORAUtility::getUserDataDirectory() + QStringLiteral("User.txt"));
    QVERIFY(after.open(QIODevice::ReadOnly));
    QCOMPARE(after.readAll(), before);
}

void TestAccountFlows::registrationAndReset()
{
    const QString mobile = QStringLiteral("13812345678");
    VORAUserViewController panel;
    VORASignUpViewController *signUp = panel.signUpView();
    signUp->setMobile(mobile);
    signUp->requestCode();
    QTRY_VERIFY_WITH_TIMEOUT(!signUp->busy(), 10000);
    QCOMPARE(signUp->countdown(), 60);
    QCOMPARE(signUp->codeButtonText(), QStringLiteral("重新发送(60)"));
    signUp->setCountdownInterval(1);
    QTRY_COMPARE(signUp->codeButtonText(), QStringLiteral("获取验证码"));

    // A wrong code is refused by the site; the code it logged is taken.
    const QString code = codeSentTo(mobile);
    QVERIFY(!code.isEmpty());
    signUp->setUserName(QStringLiteral("新读者_42"));
    for (const QString &tried : {code == QLatin1String("000000") ? QStringLiteral("111111") : QStringLiteral("000000"), code}) {
        QVERIFY(!panel.isLogin());
        signUp->setCode(tried);
        signUp->setPassword(QStringLiteral("Secret99"));
        signUp->signUp();
        QTRY_VERIFY_WITH_TIMEOUT(!signUp->busy(), 10000);
    }
    m_passwords << QStringLiteral("Secret99");
    QVERIFY2(panel.isLogin(), qPrintable(signUp->message()));
    QCOMPARE(panel.userName(), QStringLiteral("新读者_42"));
    panel.signOut();

    // The forgotten password: a code for the registered mobile, a new password,
    // then a sign-in by the mobile with it.
    VORAForgetPasswordViewController *forget = panel.forgetPasswordView();
    QSignalSpy done(forget, &VORAForgetPasswordViewController::done);
    forget->setMobile(mobile);
    forget->requestCode();
    QTRY_VERIFY_WITH_TIMEOUT(!forget->busy(), 10000);
    QCOMPARE(forget->countdown(), 60);
    forget->setCode(codeSentTo(mobile));
    forget->setPassword(QStringLiteral("Newpass77"));
    m_passwords << QStringLiteral("Newpass77");
    forget->resetPassword();
    QTRY_VERIFY_WITH_TIMEOUT(!forget->busy(), 10000);
    QCOMPARE(forget->message(), QStringLiteral("密码已重置，请登录"));
    QCOMPARE(done.size(), 1);
    QVERIFY(!panel.isLogin());

    panel.signInView()->setUserName(mobile);
    panel.signInView()->setPassword(QStringLiteral("Newpass77"));
    panel.signInView()->signIn();
    QTRY_VERIFY_WITH_TIMEOUT(!panel.signInView()->busy(), 10000);
    QVERIFY2(panel.isLogin(), qPrintable(panel.signInView()->message()));
    QCOMPARE(panel.userName(), QStringLiteral("新读者_42"));
}

void TestAccountFlows::silentSignInAtNextStart()
{
    // Signed in by the last test; another start over the same app home.
    const std::optional<QString> key = globalUser()->key();
    QVERIFY(key);
    VORAAppGlobalData nextStart;
    QCOMPARE(nextStart.user()->key(), key);
    VORAAutoLoginService autoLogin;
    ServiceRecorder recorder;
    autoLogin.asynchronousRequestWithDelegate(&recorder);
    QTRY_COMPARE_WITH_TIMEOUT(recorder.calls, 1, 10000);
    QVERIFY(!recorder.lastError && autoLogin.data);
    QVERIFY(VORAAccountFiller::applyAutoLoginAnswer(*nextStart.user(), *autoLogin.data));
    QCOMPARE(nextStart.user()->userName(), QStringLiteral("新读者_42"));
}

void TestAccountFlows::noPasswordKept()
{
    QVERIFY(m_passwords.size() >= 5);
    QDirIterator files(m_site->home.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    int read = 0;
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        ++read;
        for (const QString &password : std::as_const(m_passwords))
            QVERIFY2(!bytes.contains(password.toUtf8()), qPrintable(file.fileName()));
    }
    QVERIFY(read >= 2); // User.txt and the user defaults at least
    QMutexLocker lock(&g_logMutex);
    QVERIFY(g_log.size() > 50);
    for (const QString &line : std::as_const(g_log)) {
        for (const QString &password : std::as_const(m_passwords))
            QVERIFY2(!line.contains(password), qPrintable(line));
    }
}

QTEST_GUILESS_MAIN(TestAccountFlows)
#include "tst_accountflows.moc"
