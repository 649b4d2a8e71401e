// What the account forms refuse before asking the site, and where the user
// panel goes after a sign-in. No network.

#include "TestHome.h"

#include "account/VORAAccountRules.h"
#include "account/VORAUserViewController.h"
#include "core/VORAAppGlobalData.h"
#include "platform/UserDefaults.h"

#include <QSignalSpy>
#include <QTest>

class TestAccountRules : public QObject
{
    Q_OBJECT

private slots:
    void formProblems_data();
    void formProblems();
    void afterSignInJump_data();
    void afterSignInJump();
    void panelNickName_data();
    void panelNickName();

private:
    TestHome m_home;
};

void TestAccountRules::formProblems_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QString>("problem");

    const QString ok = QString();
    QTest::newRow("sign-in ok") << "signIn" << QStringList{"reader", "reader123"} << ok;
    QTest::newRow("sign-in blank name") << "signIn" << QStringList{"  ", "x"} << "请输入用户名";
    QTest::newRow("sign-in no password") << "signIn" << QStringList{"reader", ""} << "请输入密码";
    QTest::newRow("sign-in mobile") << "signIn" << QStringList{"13912345678", "x"} << ok;
    QTest::newRow("sign-in not a mobile") << "signIn" << QStringList{"12912345678", "x"} << "请输入正确的手机号码";
    QTest::newRow("sign-in short digits are a name") << "signIn" << QStringList{"12345", "x"} << ok;
    QTest::newRow("sign-in email") << "signIn" << QStringList{"a.b@example.com", "x"} << ok;
    QTest::newRow("sign-in bad email") << "signIn" << QStringList{"a@b", "x"} << "请输入正确的邮箱地址";
    QTest::newRow("partner ok") << "partner" << QStringList{"qq", "小企鹅"} << ok;
    QTest::newRow("partner none") << "partner" << QStringList{"", "a"} << "请选择合作网站";
    QTest::newRow("partner no account") << "partner" << QStringList{"weibo", " "} << "请输入合作网站的账号";
    QTest::newRow("sign-up ok") << "signUp" << QStringList{"13912345678", "012345", "新读者_1", "pass word&1"} << ok;
    QTest::newRow("sign-up bad mobile") << "signUp" << QStringList{"1391234567", "012345", "abc", "secret"}
                                        << "请输入正确的手机号码";
    QTest::newRow("sign-up no code") << "signUp" << QStringList{"13912345678", "", "abc", "secret"} << "请输入验证码";
    QTest::newRow("sign-up letters in code") << "signUp" << QStringList{"13912345678", "12345a", "abc", "secret"}
                                             << "验证码为6位数字";
    QTest::newRow("sign-up no name") << "signUp" << QStringList{"13912345678", "123456", "", "secret"} << "请输入用户名";
    QTest::newRow("sign-up short name") << "signUp" << QStringList{"13912345678", "123456", "ab", "secret"}
                                        << "用户名应为3到20个字母、数字、下划线或汉字";
    QTest::newRow("sign-up name with blank") << "signUp" << QStringList{"13912345678", "123456", "a b c", "secret"}
                                             << "用户名应为3到20个字母、数字、下划线或汉字";
    QTest::newRow("sign-up short password") << "signUp" << QStringList{"13912345678", "123456", "abc", "12345"}
                                            << "密码长度应为6到32位";
    QTest::newRow("sign-up long password") << "signUp" << QStringList{"13912345678", "123456", "abc", QString(33, 'x')}
                                           << "密码长度应为6到32位";
    QTest::newRow("reset ok") << "reset" << QStringList{"17012345678", "654321", "secret"} << ok;
    QTest::newRow("reset no password") << "reset" << QStringList{"17012345678", "654321", ""} << "请输入密码";
    QTest::newRow("reset code too long") << "reset" << QStringList{"17012345678", "6543210", "secret"}
                                         << "验证码为6位数字";
}

void TestAccountRules::formProblems()
{
    QFETCH(QString, form);
    QFETCH(QStringList, fields);
    QFETCH(QString, problem);
    QString found;
    if (form == QLatin1String("signIn"))
        found = VORAAccountRules::signInProblem(fields[0], fields[1]);
    else if (form == QLatin1String("partner"))
        found = VORAAccountRules::partnerProblem(fields[0], fields[1]);
    else if (form == QLatin1String("signUp"))
        found = VORAAccountRules::signUpProblem(fields[0], fields[1], fields[2], fields[3]);
    else
        found = VORAAccountRules::resetProblem(fields[0], fields[1], fields[2]);
    QCOMPARE(found, problem);
}

void TestAccountRules::afterSignInJump_data()
{
    QTest::addColumn<int>("jumpType");
    QTest::addColumn<int>("topUpType");
    QTest::addColumn<int>("topUpKind"); // 0: none asked
    QTest::addColumn<bool>("close");

    QTest::newRow("main user button") << 0 << 2 << 0 << false;
    QTest::newRow("back to the reader") << 1 << 2 << 0 << true;
    QTest::newRow("membership top-up") << 0 << 0 << 1 << false;
    QTest::newRow("coin top-up from the reader") << 1 << 1 << 2 << false;
}

void TestAccountRules::afterSignInJump()
{
    QFETCH(int, jumpType);
    QFETCH(int, topUpType);
    QFETCH(int, topUpKind);
    QFETCH(bool, close);
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    global->user()->setUserViewJumpType(jumpType);
    global->user()->setUserViewJumpIsTopupType(topUpType);
    VORAUserViewController panel;
    QSignalSpy topUp(&panel, &VORAUserViewController::topUpRequested);
    QSignalSpy closing(&panel, &VORAUserViewController::closeRequested);
    panel.signInFinished();
    QCOMPARE(topUp.size(), topUpKind ? 1 : 0);
    if (topUpKind)
        QCOMPARE(topUp.first().first().toInt(), topUpKind);
    QCOMPARE(closing.size(), close ? 1 : 0);
    // The jump is used once: the saved user goes back to the main button's values.
    const auto saved = global->loadUser();
    QVERIFY(saved);
    QCOMPARE(saved->userViewJumpType(), 0);
    QCOMPARE(saved->userViewJumpIsTopupType(), 2);
}

void TestAccountRules::panelNickName_data()
{
    QTest::addColumn<QString>("siteName");
    QTest::addColumn<QVariant>("qqName");
    QTest::addColumn<QString>("shown");

    QTest::newRow("site account") << "quorin" << QVariant(QStringLiteral("QQ名")) << "站内名";
    QTest::newRow("QQ account") << "qq" << QVariant(QStringLiteral("QQ名")) << "QQ名";
    QTest::newRow("QQ account without QQ data") << "qq" << QVariant() << "站内名";
}

void TestAccountRules::panelNickName()
{
    QFETCH(QString, siteName);
    QFETCH(QVariant, qqName);
    QFETCH(QString, shown);
    VORAUser *user = VORAAppGlobalData::shareAppGlobalData()->user();
    user->setSiteName(siteName);
    user->setNickName(QStringLiteral("站内名"));
    if (qqName.isValid())
        UserDefaults::standard().setValue(QStringLiteral("QQLoginData"), QVariantMap{{"QQLoginnickName", qqName}});
    else
        UserDefaults::standard().remove(QStringLiteral("QQLoginData"));
    VORAUserViewController panel;
    QCOMPARE(panel.nickName(), shown);
}

QTEST_GUILESS_MAIN(TestAccountRules)
#include "tst_accountrules.moc"
