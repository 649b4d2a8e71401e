#include "account/VORASignInUserView.h"

#include "account/VORAAccountRules.h"
#include "account/VORAPartnerKit.h"

#include "net/VORAGetAuthenticateQ42UserService.h"
#include "net/VORAOpenLoginService.h"
#include "net/VORAQQLoginService.h"
#include "platform/UserDefaults.h"

const QString VORASignInUserView::failureText = QStringLiteral("登录失败，请稍后再试");

namespace {
const QString qqSite = QStringLiteral("qq");
}

VORASignInUserView::VORASignInUserView(QObject *parent)
    : VORAAccountForm(parent)
    , m_signInService(new VORAGetAuthenticateQ42UserService(this))
    , m_partnerKit(new VORAPartnerKit(this))
    , m_qqService(new VORAQQLoginService(this))
    , m_openService(new VORAOpenLoginService(this))
{
}

void VORASignInUserView::setUserName(const QString &userName)
{
    if (m_userName == userName)
        return;
    m_userName = userName;
    emit userNameChanged();
}

void VORASignInUserView::setPassword(const QString &password)
{
    if (m_password == password)
        return;
    m_password = password;
    emit passwordChanged();
}

void VORASignInUserView::setPartnerAccount(const QString &account)
{
    if (m_partnerAccount == account)
        return;
    m_partnerAccount = account;
    emit partnerAccountChanged();
}

void VORASignInUserView::clearPassword()
{
    m_signInService->password.clear();
    setPassword(QString());
}

void VORASignInUserView::signIn()
{
    if (busy() || !begin(VORAAccountRules::signInProblem(m_userName, m_password)))
        return;
    m_signInService->userName = m_userName.trimmed();
    m_signInService->password = m_password;
    m_signInService->asynchronousRequestWithDelegate(this);
}

void VORASignInUserView::signInWithQQ()
{
    signInWithPartner(qqSite);
}

void VORASignInUserView::signInWithPartner(const QString &site)
{
    if (busy() || !begin(VORAAccountRules::partnerProblem(site, m_partnerAccount)))
        return;
    m_partnerKit->partner = site;
    m_partnerKit->account = m_partnerAccount.trimmed();
    m_partnerKit->asynchronousRequestWithDelegate(this);
}

void VORASignInUserView::partnerAuthorized(const NetError *error)
{
    if (!accepted(error, m_partnerKit->code, m_partnerKit->message, failureText))
        return;
    if (m_partnerKit->partner == qqSite) {
        m_qqService->openId = m_partnerKit->openId;
        m_qqService->accessToken = m_partnerKit->accessToken;
        m_qqService->nickname = m_partnerKit->nickname;
        m_qqService->asynchronousRequestWithDelegate(this);
        return;
    }
    m_openService->openId = m_partnerKit->openId;
    m_openService->accessToken = m_partnerKit->accessToken;
    m_openService->siteMark = m_partnerKit->partner;
    m_openService->openName = m_partnerKit->nickname;
    m_openService->asynchronousRequestWithDelegate(this);
}

void VORASignInUserView::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error)
{
    if (service == m_partnerKit) {
        partnerAuthorized(error);
    } else if (service == m_signInService) {
        clearPassword();
        finishSignIn(*m_signInService, error, false, failureText);
    } else if (service == m_qqService) {
        // The QQ display name goes with the user before anyone hears of the
        // sign-in: the user panel shows it in place of the site's nickname.
        const bool granted = !error && m_qqService->code == 1;
        if (granted) {
            UserDefaults::standard().setValue(QStringLiteral("QQLoginData"),
                                              QVariantMap{{QStringLiteral("QQLoginnickName"), m_qqService->nickname}});
        }
        finishSignIn(*m_qqService, error, false, failureText);
    } else if (service == m_openService) {
        finishSignIn(*m_openService, error, false, failureText);
    }
}
