#include "account/VORAForgetPasswordViewController.h"

#include "account/VORAAccountRules.h"

#include "net/VORAGetPhoneVerifyCodeService.h"
#include "net/VORAResetPasswordService.h"

const QString VORAForgetPasswordViewController::failureText = QStringLiteral("密码重置失败，请稍后再试");
const QString VORAForgetPasswordViewController::doneText = QStringLiteral("密码已重置，请登录");

VORAForgetPasswordViewController::VORAForgetPasswordViewController(QObject *parent)
    : VORAPhoneCodeForm(QString::fromLatin1(VORAGetPhoneVerifyCodeService::resetPasswordType), parent)
    , m_resetService(new VORAResetPasswordService(this))
{
}

void VORAForgetPasswordViewController::setPassword(const QString &password)
{
    if (m_password == password)
        return;
    m_password = password;
    emit passwordChanged();
}

void VORAForgetPasswordViewController::resetPassword()
{
    if (busy() || !begin(VORAAccountRules::resetProblem(mobile(), code(), m_password)))
        return;
    m_resetService->mobile = mobile();
    m_resetService->verifyCode = code();
    m_resetService->password = m_password;
    m_resetService->asynchronousRequestWithDelegate(this);
}

void VORAForgetPasswordViewController::submitted(VORAHttpBaseWebService *service, const NetError *error)
{
    if (service != m_resetService)
        return;
    m_resetService->password.clear();
    setPassword(QString());
    if (!accepted(error, m_resetService->code, m_resetService->message, failureText))
        return;
    setStatus(false, doneText);
    emit done();
}
