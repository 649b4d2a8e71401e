#include "account/VORASignUpViewController.h"

#include "account/VORAAccountRules.h"

#include "core/VORAAppGlobalData.h"
#include "net/VORACreateQuorinUserService.h"

const QString VORASignUpViewController::failureText = QStringLiteral("注册失败，请稍后再试");

VORASignUpViewController::VORASignUpViewController(QObject *parent)
    : VORAPhoneCodeForm(QString(), parent)
    , m_createService(new VORACreateQuorinUserService(this))
{
    m_createService->isMobileRegister = true;
}

void VORASignUpViewController::setUserName(const QString &userName)
{
    if (m_userName == userName)
        return;
    m_userName = userName;
    emit userNameChanged();
}

void VORASignUpViewController::setPassword(const QString &password)
{
    if (m_password == password)
        return;
    m_password = password;
    emit passwordChanged();
}

void VORASignUpViewController::signUp()
{
    if (busy() || !begin(VORAAccountRules::signUpProblem(mobile(), code(), m_userName, m_password)))
        return;
    m_createService->mobile = mobile();
    m_createService->verifyCode = code();
    m_createService->userName = m_userName;
    m_createService->password = m_password;
    m_createService->deviceId = VORAAppGlobalData::shareAppGlobalData()->appStatus()->deviceId();
    m_createService->asynchronousRequestWithDelegate(this);
}

void VORASignUpViewController::submitted(VORAHttpBaseWebService *service, const NetError *error)
{
    if (service != m_createService)
        return;
    m_createService->password.clear();
    setPassword(QString());
    finishSignIn(*m_createService, error, false, failureText);
}
