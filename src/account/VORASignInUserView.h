#pragma once

#include "account/VORAAccountForm.h"

#include <QString>

class VORAGetAuthenticateQ42UserService;
class VORAOpenLoginService;
class VORAPartnerKit;
class VORAQQLoginService;

// The sign-in form of the user panel: a site account by name (or the mobile
// it registered with) and password, or a partner account.
//
// Properties (besides `busy` and `message` of VORAAccountForm):
//   userName        read/write, as typed
//   password        read/write; cleared when an attempt ends, never stored
//   partnerAccount  read/write, the account name at the partner (the demo
//                   partner stands in for the partners' kits); "demo" at first
// Actions:
//   signIn()                 checks the fields (VORAAccountRules::signInProblem),
//                            then "ios/pad/login.php"
//   signInWithQQ()           the partner "qq", then "ios/pad/login_qq.php"; on
//                            success the user defaults get "QQLoginData" with
//                            "QQLoginnickName" (the QQ display name)
//   signInWithPartner(site)  the partner `site` ("weibo"...), then
//                            "v3/app/ios/pad/member/openLogin" with site_mark
// Every route ends in signedIn() (userType 2) or in `message`:
//   the site's refusal, "网络断开，检查网络设置" without a network, else
//   "登录失败，请稍后再试".
class VORASignInUserView : public VORAAccountForm
{
    Q_OBJECT
    Q_PROPERTY(QString userName READ userName WRITE setUserName NOTIFY userNameChanged)
    Q_PROPERTY(QString password READ password WRITE setPassword NOTIFY passwordChanged)
    Q_PROPERTY(QString partnerAccount READ partnerAccount WRITE setPartnerAccount NOTIFY partnerAccountChanged)
public:
    static const QString failureText; // "登录失败，请稍后再试"

    explicit VORASignInUserView(QObject *parent = nullptr);

    QString userName() const { return m_userName; }
    void setUserName(const QString &userName);
    QString password() const { return m_password; }
    void setPassword(const QString &password);
    QString partnerAccount() const { return m_partnerAccount; }
    void setPartnerAccount(const QString &account);

    Q_INVOKABLE void signIn();
    Q_INVOKABLE void signInWithQQ();
    Q_INVOKABLE void signInWithPartner(const QString &site);

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;

signals:
    void userNameChanged();
    void passwordChanged();
    void partnerAccountChanged();

private:
    void partnerAuthorized(const NetError *error);
    void clearPassword();

    VORAGetAuthenticateQ42UserService *m_signInService = nullptr;
    VORAPartnerKit *m_partnerKit = nullptr;
    VORAQQLoginService *m_qqService = nullptr;
    VORAOpenLoginService *m_openService = nullptr;
    QString m_userName;
    QString m_password;
    QString m_partnerAccount = QStringLiteral("demo");
};
