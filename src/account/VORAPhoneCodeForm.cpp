#include "account/VORAPhoneCodeForm.h"

#include "account/VORAAccountRules.h"

#include "net/VORAGetPhoneVerifyCodeService.h"

const QString VORAPhoneCodeForm::codeFailureText = QStringLiteral("验证码发送失败，请稍后再试");

VORAPhoneCodeForm::VORAPhoneCodeForm(const QString &codeType, QObject *parent)
    : VORAAccountForm(parent)
    , m_codeService(new VORAGetPhoneVerifyCodeService(this))
{
    m_codeService->type = codeType;
    m_countdownTimer.setInterval(1000);
    connect(&m_countdownTimer, &QTimer::timeout, this, &VORAPhoneCodeForm::tick);
}

void VORAPhoneCodeForm::setMobile(const QString &mobile)
{
    if (m_mobile == mobile)
        return;
    m_mobile = mobile;
    emit mobileChanged();
}

void VORAPhoneCodeForm::setCode(const QString &code)
{
    if (m_code == code)
        return;
    m_code = code;
    emit codeChanged();
}

QString VORAPhoneCodeForm::codeButtonText() const
{
    return m_countdown > 0 ? QStringLiteral("重新发送(%1)").arg(m_countdown) : QStringLiteral("获取验证码");
}

void VORAPhoneCodeForm::requestCode()
{
    if (busy() || m_countdown > 0 || !begin(VORAAccountRules::mobileProblem(m_mobile)))
        return;
    m_codeService->mobile = m_mobile;
    m_codeService->asynchronousRequestWithDelegate(this);
}

void VORAPhoneCodeForm::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error)
{
    if (service != m_codeService) {
        submitted(service, error);
        return;
    }
    if (!accepted(error, m_codeService->code, m_codeService->message, codeFailureText))
        return;
    setStatus(false, m_codeService->message);
    setCountdown(resendSeconds);
    m_countdownTimer.start();
}

void VORAPhoneCodeForm::tick()
{
    setCountdown(m_countdown - 1);
    if (m_countdown <= 0)
        m_countdownTimer.stop();
}

void VORAPhoneCodeForm::setCountdown(int seconds)
{
    if (m_countdown == seconds)
        return;
    m_countdown = seconds;
    emit countdownChanged();
}
