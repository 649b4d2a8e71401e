// The filling rules of the sign-in answers and of the silent re-sign-in.

#include "TestHome.h"

#include "account/VORAAccountFiller.h"
#include "net/VORASignInAnswer.h"
#include "platform/UserDefaults.h"

#include <QJsonDocument>
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

class TestAccountFiller : public QObject
{
    Q_OBJECT

private slots:
    void signInPayload_data();
    void signInPayload();
    void autoLoginAnswer_data();
    void autoLoginAnswer();
    void serviceAnswers_data();
    void serviceAnswers();

private:
    TestHome m_home;
};

void TestAccountFiller::signInPayload_data()
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

void TestAccountFiller::signInPayload()
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

void TestAccountFiller::autoLoginAnswer_data()
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

void TestAccountFiller::autoLoginAnswer()
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

void TestAccountFiller::serviceAnswers_data()
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

void TestAccountFiller::serviceAnswers()
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

QTEST_GUILESS_MAIN(TestAccountFiller)
#include "tst_accountfiller.moc"
