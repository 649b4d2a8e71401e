#include "account/VORAAccountForm.h"

#include "account/AccountLogging.h"
#include "account/VORAAccountFiller.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORAUtility.h"
#include "net/VORASignInService.h"
#include "platform/NotificationCenter.h"

const QString VORAAccountForm::noNetworkText = QStringLiteral("网络断开，检查网络设置");

VORAAccountForm::VORAAccountForm(QObject *parent)
    : QObject(parent)
{
}

void VORAAccountForm::setBusy(bool busy)
{
    if (m_busy == busy)
        return;
    m_busy = busy;
    emit busyChanged();
}

void VORAAccountForm::setMessage(const QString &message)
{
    if (m_message == message)
        return;
    m_message = message;
    emit messageChanged();
}

bool VORAAccountForm::begin(const QString &problem)
{
    setMessage(problem);
    if (!problem.isEmpty())
        return false;
    setBusy(true);
    return true;
}

bool VORAAccountForm::accepted(const NetError *error, qint64 code, const QString &siteMessage,
                               const QString &failureText)
{
    if (!error && code == 1)
        return true;
    if (error) {
        qCInfo(lcAccount) << metaObject()->className() << "call failed:" << error->localizedDescription;
        setMessage(VORAUtility::isExistenceNetwork() ? failureText : noNetworkText);
    } else {
        qCInfo(lcAccount) << metaObject()->className() << "refused with code" << code;
        setMessage(siteMessage.isEmpty() ? failureText : siteMessage);
    }
    setBusy(false);
    return false;
}

bool VORAAccountForm::finishSignIn(const VORASignInService &service, const NetError *error, bool passport,
                                   const QString &failureText)
{
    if (!accepted(error, service.code, service.message, failureText))
        return false;
    VORASignInAnswer answer;
    answer.code = service.code;
    answer.key = service.key;
    answer.user = service.data;
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    if (passport)
        VORAAccountFiller::fillUserWithPassportReturnData(*global->user(), answer.returnData());
    else
        VORAAccountFiller::fillUserWithReturnData(*global->user(), answer.returnData(), 2);
    global->saveUser();
    qCInfo(lcAccount) << "signed in as user" << global->user()->userId() << "through" << service.path();
    setBusy(false);
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::userViewPostInfo), this);
    emit signedIn();
    return true;
}
