#pragma once

#include "account/VORAPhoneCodeForm.h"

#include <QString>

class VORACreateQuorinUserService;

// Registration by mobile. Besides the properties of VORAPhoneCodeForm
// (mobile, code, countdown, codeButtonText, busy, message):
//   userName  read/write, the new account's name
//   password  read/write; cleared when an attempt ends, never stored
// signUp() checks the fields (VORAAccountRules::signUpProblem: the mobile, a
// six-digit code, 3 to 20 letters, digits, "_" or Chinese characters, a 6 to
// 32 character password), registers ("v3/app/ios/pad/member/mobilereg") and
// on success signs the new account in (userType 2) and emits signedIn().
// Failures: the site's refusal ("验证码错误或已过期", "该用户名已被注册"...),
// "网络断开，检查网络设置", else "注册失败，请稍后再试".
class VORASignUpViewController : public VORAPhoneCodeForm
{
    Q_OBJECT
    Q_PROPERTY(QString userName READ userName WRITE setUserName NOTIFY userNameChanged)
    Q_PROPERTY(QString password READ password WRITE setPassword NOTIFY passwordChanged)
public:
    static const QString failureText; // "注册失败，请稍后再试"

    explicit VORASignUpViewController(QObject *parent = nullptr);

    QString userName() const { return m_userName; }
    void setUserName(const QString &userName);
    QString password() const { return m_password; }
    void setPassword(const QString &password);

    Q_INVOKABLE void signUp();

signals:
    void userNameChanged();
    void passwordChanged();

protected:
    void submitted(VORAHttpBaseWebService *service, const NetError *error) override;

private:
    VORACreateQuorinUserService *m_createService = nullptr;
    QString m_userName;
    QString m_password;
};
