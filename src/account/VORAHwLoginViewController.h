#pragma once

#include "account/VORAAccountForm.h"

#include <QString>

class VORAHarrowLoginService;
class VORAPartnerKit;

// Sign-in through the partner passport. The partner's web sign-in is played
// by the reference site's demo partner (VORAPartnerKit, partner "harrow"),
// which hands back a passport session id; the site then signs that session in
// ("v3/app/ios/pad/member/hrwlogin") and the user is filled by the passport's
// rules (userType 3; the paying member's level from "vip_level").
//   account  read/write, the account name at the passport; "demo" at first
//   busy, message as in VORAAccountForm
// signIn() starts it; it ends in signedIn() or in `message` (the refusal,
// "网络断开，检查网络设置", else "登录失败，请稍后再试").
class VORAHwLoginViewController : public VORAAccountForm
{
    Q_OBJECT
    Q_PROPERTY(QString account READ account WRITE setAccount NOTIFY accountChanged)
public:
    static const QString failureText; // "登录失败，请稍后再试"

    explicit VORAHwLoginViewController(QObject *parent = nullptr);

    QString account() const { return m_account; }
    void setAccount(const QString &account);

    Q_INVOKABLE void signIn();

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;

signals:
    void accountChanged();

private:
    VORAPartnerKit *m_partnerKit = nullptr;
    VORAHarrowLoginService *m_passportService = nullptr;
    QString m_account = QStringLiteral("demo");
};
