#include "account/VORAAccountForm.h"

#include "account/AccountLogging.h"
#include "account/VORAAccountFiller.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "net/VORASignInService.h"
#include "platform/NotificationCenter.h"

VORAAccountForm::VORAAccountForm(QObject *parent)
    : QObject(parent)
{
}

void VORAAccountForm::setStatus(bool busy, const QString &message)
{
    if (m_status.set(busy, message))
        emit statusChanged();
}

bool VORAAccountForm::begin(const QString &problem)
{
    setStatus(problem.isEmpty(), problem);
    return problem.isEmpty();
}

bool VORAAccountForm::accepted(const NetError *error, qint64 code, const QString &siteMessage,
                               const QString &failureText)
{
    if (!error && code == 1)
        return true;
    if (error) {
        qCInfo(lcAccount) << metaObject()->className() << "call failed:" << error->localizedDescription;
        setStatus(false, RequestStatus::transportFailure(failureText));
    } else {
        qCInfo(lcAccount) << metaObject()->className() << "refused with code" << code;
        setStatus(false, siteMessage.isEmpty() ? failureText : siteMessage);
    }
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
    setStatus(false, message());
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::userViewPostInfo), this);
    emit signedIn();
    return true;
}
