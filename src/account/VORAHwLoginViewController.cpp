#include "account/VORAHwLoginViewController.h"

#include "account/VORAAccountRules.h"
#include "account/VORAPartnerKit.h"

#include "net/VORAHarrowLoginService.h"

const QString VORAHwLoginViewController::failureText = QStringLiteral("登录失败，请稍后再试");

VORAHwLoginViewController::VORAHwLoginViewController(QObject *parent)
    : VORAAccountForm(parent)
    , m_partnerKit(new VORAPartnerKit(this))
    , m_passportService(new VORAHarrowLoginService(this))
{
    m_partnerKit->partner = QStringLiteral("harrow");
}

void VORAHwLoginViewController::setAccount(const QString &account)
{
    if (m_account == account)
        return;
    m_account = account;
    emit accountChanged();
}

void VORAHwLoginViewController::signIn()
{
    if (busy() || !begin(VORAAccountRules::partnerProblem(m_partnerKit->partner, m_account)))
        return;
    m_partnerKit->account = m_account.trimmed();
    m_partnerKit->asynchronousRequestWithDelegate(this);
}

void VORAHwLoginViewController::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error)
{
    if (service == m_partnerKit) {
        if (!accepted(error, m_partnerKit->code, m_partnerKit->message, failureText))
            return;
        m_passportService->sessionId = m_partnerKit->sessionId;
        m_passportService->asynchronousRequestWithDelegate(this);
    } else if (service == m_passportService) {
        finishSignIn(*m_passportService, error, true, failureText);
    }
}
