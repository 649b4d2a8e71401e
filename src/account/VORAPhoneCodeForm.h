#pragma once

#include "account/VORAAccountForm.h"

#include <QString>
#include <QTimer>

class VORAGetPhoneVerifyCodeService;

// A form proven by a text-message code: the registration and the password
// reset. Besides `busy` and `message`:
//   mobile          read/write
//   code            read/write, the code the text message brought
//   countdown       seconds until another code may be asked (60 after a code
//                   was sent, then down to 0)
//   codeButtonText  "获取验证码", or "重新发送(N)" while the countdown runs
// requestCode() checks the mobile ("请输入正确的手机号码"), asks the site to
// send a code ("v3/app/ios/pad/member/getmessage") and on success shows the
// site's message ("验证码已发送，请注意查收") and starts the countdown. It does
// nothing while busy or while the countdown runs.
class VORAPhoneCodeForm : public VORAAccountForm
{
    Q_OBJECT
    Q_PROPERTY(QString mobile READ mobile WRITE setMobile NOTIFY mobileChanged)
    Q_PROPERTY(QString code READ code WRITE setCode NOTIFY codeChanged)
    Q_PROPERTY(int countdown READ countdown NOTIFY countdownChanged)
    Q_PROPERTY(QString codeButtonText READ codeButtonText NOTIFY countdownChanged)
public:
    static constexpr int resendSeconds = 60;
    static const QString codeFailureText; // "验证码发送失败，请稍后再试"

    QString mobile() const { return m_mobile; }
    void setMobile(const QString &mobile);
    QString code() const { return m_code; }
    void setCode(const QString &code);
    int countdown() const { return m_countdown; }
    QString codeButtonText() const;

    Q_INVOKABLE void requestCode();

    // The countdown's step, 1000 ms; tests shorten it.
    void setCountdownInterval(int ms) { m_countdownTimer.setInterval(ms); }

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) final;

signals:
    void mobileChanged();
    void codeChanged();
    void countdownChanged();

protected:
    // codeType: "" for a registration code, "resetpwd" for a password reset.
    VORAPhoneCodeForm(const QString &codeType, QObject *parent);
    // The answer of the form's own submission.
    virtual void submitted(VORAHttpBaseWebService *service, const NetError *error) = 0;

private:
    void tick();
    void setCountdown(int seconds);

    VORAGetPhoneVerifyCodeService *m_codeService = nullptr;
    QTimer m_countdownTimer;
    QString m_mobile;
    QString m_code;
    int m_countdown = 0;
};
