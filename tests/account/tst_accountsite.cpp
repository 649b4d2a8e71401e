// Sign-in and silent re-sign-in answers of the reference site, filled into the
// global user by the account rules.

#include "TestHome.h"

#include "QuorinSite.h"

#include "account/VORAAccountFiller.h"
#include "net/VORASignInAnswer.h"
#include "core/VORAAppGlobalData.h"
#include "net/VORAAutoLoginService.h"
#include "net/VORAGetAuthenticateQ42UserService.h"

#include <QJsonDocument>
#include <QTest>

#include <memory>

class TestAccountSite : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void signInThenSilentReSignIn();

private:
    TestHome m_home;
    std::unique_ptr<QuorinSite> m_site;
};

void TestAccountSite::initTestCase()
{
    m_site = std::make_unique<QuorinSite>(QuorinSiteOptions{m_home.filePath("site"), 1, false});
    QVERIFY(m_site->listen() != 0);
    qputenv("QUORIN_API_BASE", m_site->baseUrl().toString().toUtf8());
}

void TestAccountSite::signInThenSilentReSignIn()
{
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    VORAGetAuthenticateQ42UserService signIn;
    signIn.userName = QStringLiteral("vip");
    signIn.password = QStringLiteral("vip123");
    signIn.synchronousRequest();
    QVERIFY(!signIn.error());
    const VORASignInAnswer answer =
        VORASignInAnswer::fromOlderAnswer(QJsonDocument::fromJson(signIn.responseData()).object());
    QVERIFY(answer.isSuccess());
    VORAAccountFiller::fillUserWithReturnData(*global->user(), answer.returnData(), 2);
    QCOMPARE(global->user()->userId(), QStringLiteral("100003"));
    QCOMPARE(global->user()->vipUser(), QStringLiteral("1"));
    QCOMPARE(global->user()->level(), 5); // a site-account sign-in takes "level"
    QVERIFY(global->saveUser());

    // The re-sign-in of a paying member takes "vip_level".
    VORAAutoLoginService autoLogin;
    autoLogin.synchronousRequest();
    QVERIFY(!autoLogin.error());
    QVERIFY(autoLogin.data);
    QVERIFY(VORAAccountFiller::applyAutoLoginAnswer(*global->user(), *autoLogin.data, {}));
    QCOMPARE(global->user()->level(), 3);
    QCOMPARE(global->user()->nickName(), QStringLiteral("会员读者"));
    QCOMPARE(global->user()->key(), std::optional<QString>(answer.key));

    // A key the site no longer knows signs the user out.
    global->user()->setKey(QStringLiteral("expired-key"));
    VORAAutoLoginService refused;
    refused.synchronousRequest();
    QVERIFY(!refused.error());
    QVERIFY(!VORAAccountFiller::applyAutoLoginAnswer(*global->user(), refused.data.value_or(QJsonObject()), {}));
    QVERIFY(global->saveUser());
    const auto stored = global->loadUser();
    QVERIFY(stored);
    QVERIFY(!stored->isLogin());
    QCOMPARE(stored->userType(), 1);
    QCOMPARE(stored->userId(), QString());
    QCOMPARE(stored->userName(), QStringLiteral("vip"));
}

QTEST_GUILESS_MAIN(TestAccountSite)
#include "tst_accountsite.moc"
