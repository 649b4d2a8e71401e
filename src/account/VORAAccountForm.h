#pragma once

#include "core/RequestStatus.h"
#include "net/VORAHttpBaseWebServiceDelegate.h"

#include <QObject>
#include <QString>

class VORASignInService;

// What every account form shares: `busy` while a call to the site runs (the
// form ignores its actions meanwhile), `message` (the Chinese text the screen
// shows under the form: a validation problem, the site's refusal, a transport
// failure, or a confirmation), and the end of a successful sign-in.
//
// A transport failure reads "网络断开，检查网络设置" when the site's host is not
// reachable (RequestStatus::transportFailure), else the form's own failure
// text ("登录失败，请稍后再试"...). A refusal shows the site's "message" (the
// failure text when it sent none) and leaves the stored user as it was.
//
// Passwords live in the form only until the attempt that uses them ends; they
// are never written to a file or to the log.
class VORAAccountForm : public QObject, public VORAHttpBaseWebServiceDelegate
{
    Q_OBJECT
    Q_PROPERTY(bool busy READ busy NOTIFY statusChanged)
    Q_PROPERTY(QString message READ message NOTIFY statusChanged)
public:
    explicit VORAAccountForm(QObject *parent = nullptr);

    bool busy() const { return m_status.busy(); }
    QString message() const { return m_status.message(); }

signals:
    void statusChanged();
    // The global user is signed in, saved, and "UserViewPostInfo" was posted.
    void signedIn();

protected:
    void setStatus(bool busy, const QString &message);
    // Starts an attempt: false (and `message` = problem) when the form's own
    // check found one; else clears `message` and sets `busy`.
    bool begin(const QString &problem);
    // Ends an attempt when the site did not grant it: true when the call went
    // through with code 1; otherwise shows the failure and clears `busy`.
    bool accepted(const NetError *error, qint64 code, const QString &siteMessage, const QString &failureText);
    // Ends a sign-in: on success fills the global user by the filling rules
    // (userType 3 and the passport's level rule when passport, else userType
    // 2), saves it, posts "UserViewPostInfo" and emits signedIn().
    bool finishSignIn(const VORASignInService &service, const NetError *error, bool passport,
                      const QString &failureText);

private:
    RequestStatus m_status;
};
