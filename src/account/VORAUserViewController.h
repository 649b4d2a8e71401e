#pragma once

#include "core/VORAUser.h"

#include <QObject>
#include <QString>

#include <algorithm>
#include <climits>

class VORAForgetPasswordViewController;
class VORAHwLoginViewController;
class VORASignInUserView;
class VORASignUpViewController;

Q_MOC_INCLUDE("account/VORAForgetPasswordViewController.h")
Q_MOC_INCLUDE("account/VORAHwLoginViewController.h")
Q_MOC_INCLUDE("account/VORASignInUserView.h")
Q_MOC_INCLUDE("account/VORASignUpViewController.h")

// The user panel: the signed-in user's figures, or the forms that sign one in.
//
// Properties (all NOTIFY userChanged, re-read from the global user by
// upDateUserBasic(), which runs on every "UserViewPostInfo"):
//   isLogin    a session key is kept
//   nickName   the user's nickname; for QQ users (siteName "qq") the QQ
//              display name kept in the user defaults' "QQLoginData"
//   faceImage  avatar address
//   level      member level (the paying-member level for passport users)
//   isVip      a paying member (vipUser is set and not "0")
//   userCoin, ticket, userName
// The forms (CONSTANT, owned by the panel): signInView (VORASignInUserView),
// signUpView (VORASignUpViewController), forgetPasswordView
// (VORAForgetPasswordViewController), hwLoginView (VORAHwLoginViewController).
//
// Actions:
//   signOut()          logonOut, save, post "UserViewPostInfo" (the app asks
//                      "确定要退出当前账号吗？" first)
//   upDateUserBasic()  re-reads the global user
//   signInFinished()   the after-sign-in jump; runs by itself when a form of
//                      the panel signed in
//
// The after-sign-in jump reads two fields the sender stored on the user before
// sending the reader to sign in:
//   userViewJumpIsTopupType  0: open the membership top-up (tag 111), emits
//                            topUpRequested(1); 1: open the coin top-up (tag
//                            112), emits topUpRequested(2); 2: no top-up page
//                            (the main user button, and every other path that
//                            sends the reader to sign in)
//   userViewJumpType         with no top-up page: 1 emits closeRequested() (go
//                            back where the reader was, e.g. the reader's page
//                            editor); 0 keeps the panel open on the signed-in user
// The kind of topUpRequested is the payment screen's kind (pushPayVC: 1
// membership, 2 coins). After the jump both fields go back to 0 and 2.
class VORAUserViewController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isLogin READ isLogin NOTIFY userChanged)
    Q_PROPERTY(QString nickName READ nickName NOTIFY userChanged)
    Q_PROPERTY(QString faceImage READ faceImage NOTIFY userChanged)
    // The figures are ints for QML (whose type information has no 64-bit
    // integers); a stored figure beyond an int's range reads as its limit.
    Q_PROPERTY(int level READ level NOTIFY userChanged)
    Q_PROPERTY(bool isVip READ isVip NOTIFY userChanged)
    Q_PROPERTY(int userCoin READ userCoin NOTIFY userChanged)
    Q_PROPERTY(int ticket READ ticket NOTIFY userChanged)
    Q_PROPERTY(QString userName READ userName NOTIFY userChanged)
    Q_PROPERTY(VORASignInUserView *signInView READ signInView CONSTANT)
    Q_PROPERTY(VORASignUpViewController *signUpView READ signUpView CONSTANT)
    Q_PROPERTY(VORAForgetPasswordViewController *forgetPasswordView READ forgetPasswordView CONSTANT)
    Q_PROPERTY(VORAHwLoginViewController *hwLoginView READ hwLoginView CONSTANT)
public:
    enum JumpType { JumpStay = 0, JumpBack = 1 };
    enum TopUpType { TopUpMembership = 0, TopUpCoins = 1, TopUpNone = 2 };
    enum PayKind { PayMembership = 1, PayCoins = 2 };

    explicit VORAUserViewController(QObject *parent = nullptr);
    ~VORAUserViewController() override;

    bool isLogin() const { return m_user.isLogin(); }
    QString nickName() const { return m_nickName; }
    QString faceImage() const { return m_user.faceImage(); }
    int level() const { return asInt(m_user.level()); }
    bool isVip() const;
    int userCoin() const { return asInt(m_user.userCoin()); }
    int ticket() const { return asInt(m_user.ticket()); }
    QString userName() const { return m_user.userName(); }
    VORASignInUserView *signInView() const { return m_signInView; }
    VORASignUpViewController *signUpView() const { return m_signUpView; }
    VORAForgetPasswordViewController *forgetPasswordView() const { return m_forgetPasswordView; }
    VORAHwLoginViewController *hwLoginView() const { return m_hwLoginView; }

    Q_INVOKABLE void upDateUserBasic();
    Q_INVOKABLE void signOut();
    Q_INVOKABLE void signInFinished();

signals:
    void userChanged();
    void closeRequested();
    void topUpRequested(int kind);

private:
    static int asInt(qint64 v) { return int(std::clamp<qint64>(v, INT_MIN, INT_MAX)); }
    VORAUser m_user; // a copy of the global user as last read
    QString m_nickName;
    VORASignInUserView *m_signInView = nullptr;
    VORASignUpViewController *m_signUpView = nullptr;
    VORAForgetPasswordViewController *m_forgetPasswordView = nullptr;
    VORAHwLoginViewController *m_hwLoginView = nullptr;
};
