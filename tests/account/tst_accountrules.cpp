// The account's local rules, no network: what the forms refuse before asking
// the site, how the sign-in answers and the silent re-sign-in fill the user,
// and where the user panel goes after a sign-in.

#include "TestHome.h"

#include "account/VORAAccountFiller.h"
#include "account/VORAAccountRules.h"
#include "account/VORAUserViewController.h"
#include "core/VORAAppGlobalData.h"
#include "net/VORASignInAnswer.h"
#include "platform/UserDefaults.h"

#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>

namespace {

VORAUser signedInUser()
{
    VORAUser user;
    user.setKey(QStringLiteral("old-key"));
    user.setUserType(2);
    user.setNickName(QStringLiteral("旧昵称"));
    user.setFaceImage(QStringLiteral("old-face"));
    user.setUserId(QStringLiteral("42"));
    user.setUserName(QStringLiteral("olduser"));
    user.setVipUser(QStringLiteral("0"));
    user.setLevel(7);
    user.setTicket(2);
    user.setUserCoin(99);
    user.setSiteName(QStringLiteral("quorin"));
    return user;
}

} // namespace

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
    void signInPayload_data();
    void signInPayload();
    void autoLoginAnswer_data();
    void autoLoginAnswer();
    void serviceAnswers_data();
    void serviceAnswers();

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

void TestAccountRules::signInPayload_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<bool>("passport");
    QTest::addColumn<QString>("nickName");
    QTest::addColumn<QString>("userId");
    QTest::addColumn<QString>("key");
    QTest::addColumn<qint64>("level");
    QTest::addColumn<qint64>("coin");

    QTest::newRow("complete") << QByteArray(R"({"key":"k1","user":{"site":"quorin","nickname":"小明","face":"f","username":"u",
        "group_user":"0","coin":100,"level":3,"vip_level":9,"ticket":2,"user_id":"100001"}})")
                              << false << "小明" << "100001" << "k1" << qint64(3) << qint64(100);
    QTest::newRow("numeric user_id and key") << QByteArray(R"({"key":12345,"user":{"nickname":"n","user_id":100001}})")
                                             << false << "n" << "" << "" << qint64(0) << qint64(0);
    QTest::newRow("nulls and wrong types") << QByteArray(R"({"key":null,"user":{"nickname":null,"coin":"12abc","level":[1],"user_id":null}})")
                                           << false << "" << "" << "" << qint64(0) << qint64(12);
    QTest::newRow("booleans and objects are not text") << QByteArray(R"({"key":true,"user":{"nickname":{"a":1},"user_id":false,"coin":true}})")
                                                       << false << "" << "" << "" << qint64(0) << qint64(1);
    QTest::newRow("user not an object") << QByteArray(R"({"key":"k","user":"oops"})")
                                        << false << "" << "" << "k" << qint64(0) << qint64(0);
    QTest::newRow("site account ignores vip_level") << QByteArray(R"({"key":"k","user":{"group_user":"1","level":4,"vip_level":8}})")
                                                    << false << "" << "" << "k" << qint64(4) << qint64(0);
    QTest::newRow("passport member") << QByteArray(R"({"key":"k","user":{"group_user":"1","level":4,"vip_level":8}})")
                                     << true << "" << "" << "k" << qint64(8) << qint64(0);
    QTest::newRow("passport ordinary") << QByteArray(R"({"key":"k","user":{"group_user":"0","level":4,"vip_level":8}})")
                                       << true << "" << "" << "k" << qint64(4) << qint64(0);
    QTest::newRow("passport without group") << QByteArray(R"({"key":"k","user":{"level":4,"vip_level":8}})")
                                            << true << "" << "" << "k" << qint64(8) << qint64(0);
}

void TestAccountRules::signInPayload()
{
    QFETCH(QByteArray, payload);
    QFETCH(bool, passport);
    QFETCH(QString, nickName);
    QFETCH(QString, userId);
    QFETCH(QString, key);
    QFETCH(qint64, level);
    QFETCH(qint64, coin);
    VORAUser user = signedInUser();
    const QJsonObject data = QJsonDocument::fromJson(payload).object();
    if (passport)
        VORAAccountFiller::fillUserWithPassportReturnData(user, data);
    else
        VORAAccountFiller::fillUserWithReturnData(user, data, 2);
    QCOMPARE(user.nickName(), nickName);
    QCOMPARE(user.userId(), userId);
    QCOMPARE(user.key(), std::optional<QString>(key));
    QVERIFY(user.isLogin());
    QCOMPARE(user.level(), level);
    QCOMPARE(user.userCoin(), coin);
    QCOMPARE(user.userType(), passport ? 3 : 2);
}

void TestAccountRules::autoLoginAnswer_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QVariantMap>("qqLoginData");
    QTest::addColumn<bool>("signedIn");
    QTest::addColumn<QString>("nickName");
    QTest::addColumn<qint64>("level");

    const QVariantMap qq{{"QQLoginnickName", QStringLiteral("QQ里的名字")}};
    QTest::newRow("ordinary member") << QByteArray(R"({"data":{"stateCode":1,"returnData":{"key":"nk","user":{"site":"quorin",
        "nickname":"小明","user_id":"7","username":"u","group_user":"0","face":"f","level":3,"vip_level":6,"ticket":4}}}})")
                                     << qq << true << "小明" << qint64(3);
    QTest::newRow("paying member") << QByteArray(R"({"data":{"stateCode":1,"returnData":{"key":"nk","user":{"site":"quorin",
        "nickname":"会员","user_id":"7","group_user":"1","level":3,"vip_level":6}}}})")
                                   << QVariantMap() << true << "会员" << qint64(6);
    QTest::newRow("qq user takes the QQ name") << QByteArray(R"({"data":{"stateCode":1,"returnData":{"key":"nk","user":{"site":"qq",
        "nickname":"站内名","user_id":"7","group_user":"0","level":1}}}})")
                                               << qq << true << "QQ里的名字" << qint64(1);
    QTest::newRow("qq user without QQ data") << QByteArray(R"({"data":{"stateCode":1,"returnData":{"key":"nk","user":{"site":"qq",
        "nickname":"站内名","user_id":"7","group_user":"0"}}}})")
                                             << QVariantMap() << true << "" << qint64(0);
    QTest::newRow("refused") << QByteArray(R"({"data":{"stateCode":0,"message":"请重新登录"}})") << qq << false << ""
                             << qint64(7);
    QTest::newRow("state as text 2") << QByteArray(R"({"data":{"stateCode":"2"}})") << qq << false << "" << qint64(7);
    QTest::newRow("no data") << QByteArray(R"({"code":1})") << qq << false << "" << qint64(7);
    QTest::newRow("data not an object") << QByteArray(R"({"data":[1]})") << qq << false << "" << qint64(7);
}

void TestAccountRules::autoLoginAnswer()
{
    QFETCH(QByteArray, answer);
    QFETCH(QVariantMap, qqLoginData);
    QFETCH(bool, signedIn);
    QFETCH(QString, nickName);
    QFETCH(qint64, level);
    // The QQ data is read from the user defaults, as at a start.
    if (qqLoginData.isEmpty())
        UserDefaults::standard().remove(QStringLiteral("QQLoginData"));
    else
        UserDefaults::standard().setValue(QStringLiteral("QQLoginData"), qqLoginData);
    VORAUser user = signedInUser();
    QCOMPARE(VORAAccountFiller::applyAutoLoginAnswer(user, QJsonDocument::fromJson(answer).object()), signedIn);
    QCOMPARE(user.isLogin(), signedIn);
    QCOMPARE(user.nickName(), nickName);
    QCOMPARE(user.level(), level);
    if (signedIn) {
        QCOMPARE(user.key(), std::optional<QString>(QStringLiteral("nk")));
        QCOMPARE(user.userType(), 2); // not changed by the re-sign-in
    } else {
        QCOMPARE(user.userType(), 1);
        QCOMPARE(user.userId(), QString());
        QCOMPARE(user.faceImage(), QString());
        QCOMPARE(user.userName(), QStringLiteral("olduser")); // only the four fields go
    }
}

void TestAccountRules::serviceAnswers_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<bool>("newer");
    QTest::addColumn<qint64>("code");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("key");

    QTest::newRow("older success") << QByteArray(R"({"code":1,"message":"ok","key":"k","user":{"nickname":"n"}})")
                                   << false << qint64(1) << "ok" << "k";
    QTest::newRow("older, odd types") << QByteArray(R"({"code":1,"message":null,"key":12,"user":"u"})") << false
                                      << qint64(1) << "" << "";
    QTest::newRow("older refusal") << QByteArray(R"({"code":0,"message":"密码错误"})") << false << qint64(0) << "密码错误"
                                   << "";
    QTest::newRow("newer success") << QByteArray(R"({"data":{"stateCode":1,"message":"","returnData":{"key":"k2","user":{"nickname":"m"}}}})")
                                   << true << qint64(1) << "" << "k2";
    QTest::newRow("newer refusal keeps no key") << QByteArray(R"({"data":{"stateCode":3,"message":"手机号已注册","returnData":{"key":"k2"}}})")
                                                << true << qint64(3) << "手机号已注册" << "";
    QTest::newRow("newer numeric message") << QByteArray(R"({"data":{"stateCode":0,"message":500}})") << true << qint64(0)
                                           << "" << "";
    QTest::newRow("empty") << QByteArray("{}") << true << qint64(0) << "" << "";
}

void TestAccountRules::serviceAnswers()
{
    QFETCH(QByteArray, answer);
    QFETCH(bool, newer);
    QFETCH(qint64, code);
    QFETCH(QString, message);
    QFETCH(QString, key);
    const QJsonObject object = QJsonDocument::fromJson(answer).object();
    const VORASignInAnswer parsed = newer ? VORASignInAnswer::fromNewerAnswer(object) : VORASignInAnswer::fromOlderAnswer(object);
    QCOMPARE(parsed.code, code);
    QCOMPARE(parsed.message, message);
    QCOMPARE(parsed.key, key);
    if (!parsed.isSuccess())
        QVERIFY(!parsed.user);
}

QTEST_GUILESS_MAIN(TestAccountRules)
#include "tst_accountrules.moc"
