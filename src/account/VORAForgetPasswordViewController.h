#pragma once

#include "account/VORAPhoneCodeForm.h"

#include <QString>

class VORAResetPasswordService;

// A new password for the account registered with a mobile. Besides the
// properties of VORAPhoneCodeForm (mobile, code, countdown, codeButtonText,
// busy, message):
//   password  read/write, the new password; cleared when an attempt ends
// requestCode() asks a code for a registered mobile (the site answers
// "该手机号码尚未注册" otherwise). resetPassword() checks the fields
// (VORAAccountRules::resetProblem), sends "v3/app/ios/pad/member/resetpwd"
// (a route of the reference site, docs/accounts.md) and on success shows
// "密码已重置，请登录" and emits done(); the user then signs in as usual.
// Failures: the site's refusal, "网络断开，检查网络设置", else
// "密码重置失败，请稍后再试".
class VORAForgetPasswordViewController : public VORAPhoneCodeForm
{
    Q_OBJECT
    Q_PROPERTY(QString password READ password WRITE setPassword NOTIFY passwordChanged)
public:
    static const QString failureText; // "密码重置失败，请稍后再试"
    static const QString doneText;    // "密码已重置，请登录"

    explicit VORAForgetPasswordViewController(QObject *parent = nullptr);

    QString password() const { return m_password; }
    void setPassword(const QString &password);

    Q_INVOKABLE void resetPassword();

signals:
    void passwordChanged();
    void done();

protected:
    void submitted(VORAHttpBaseWebService *service, const NetError *error) override;

private:
    VORAResetPasswordService *m_resetService = nullptr;
    QString m_password;
};
