#pragma once

// Shared pieces of the catalogue screen tests: the reference site in process,
// a signed-in user from a real sign-in, and the alerts the screens raise.

#include "QuorinSite.h"
#include "QuorinSiteFaults.h"
#include "TestHome.h"
#include "account/VORAAccountFiller.h"
#include "net/VORASignInAnswer.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "net/VORAGetAuthenticateQ42UserService.h"
#include "net/VORAHttpBaseWebServiceDelegate.h"
#include "platform/NotificationCenter.h"
#include "store/VORABookShelfManager.h"
#include "store/VORADatabaseManager.h"

#include <QObject>
#include <QTcpServer>
#include <QTest>
#include <QVariantMap>

#include <memory>

// Waits for one asynchronous service run.
class ServiceWaiter : public QObject, public VORAHttpBaseWebServiceDelegate
{
public:
    bool done = false;
    bool failed = false;
    void requestDidFinishWithService(VORAHttpBaseWebService *, const NetError *error) override
    {
        done = true;
        failed = error != nullptr;
    }
};

// Every alert request posted while it lives.
class AlertRecorder : public QObject
{
public:
    AlertRecorder()
    {
        NotificationCenter::defaultCenter().addObserver(
            this, QString::fromLatin1(VORANotificationNames::uiAlertRequest),
            [this](const Notification &n) { alerts.append(n.userInfo); });
    }
    ~AlertRecorder() override { NotificationCenter::defaultCenter().removeObserver(this); }
    QVariantMap last() const { return alerts.isEmpty() ? QVariantMap() : alerts.last(); }
    int lastTag() const { return last().value(QStringLiteral("tag")).toInt(); }
    QString lastMessage() const { return last().value(QStringLiteral("message")).toString(); }
    QList<QVariantMap> alerts;
};

// Signs the global user in through the site ("reader", "rich" or "vip"), or out
// for an empty name. Returns false when the sign-in failed.
inline bool signInAs(const QString &userName, const QString &password)
{
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    VORAUser *user = global->user();
    if (userName.isEmpty()) {
        user->logonOut();
        user->setUserCoin(0);
        user->setVipUser(QString());
        global->saveUser();
        return true;
    }
    VORAGetAuthenticateQ42UserService service;
    service.userName = userName;
    service.password = password;
    ServiceWaiter waiter;
    service.asynchronousRequestWithDelegate(&waiter);
    if (!QTest::qWaitFor([&]() { return waiter.done; }, 10000) || waiter.failed || !service.data)
        return false;
    VORASignInAnswer answer; // the service keeps "user" as its data
    answer.code = service.code;
    answer.key = service.key;
    answer.user = *service.data;
    if (!answer.isSuccess())
        return false;
    VORAAccountFiller::fillUserWithReturnData(*user, answer.returnData(), 1);
    global->saveUser();
    return user->isLogin();
}

// Points the app at a loopback port nobody listens on.
inline void pointAtClosedPort()
{
    QTcpServer closed;
    QVERIFY(closed.listen(QHostAddress::LocalHost));
    const quint16 port = closed.serverPort();
    closed.close();
    qputenv("QUORIN_API_BASE", QByteArrayLiteral("http://127.0.0.1:") + QByteArray::number(port) + '/');
}

// The site and a fresh app home for one test executable.
struct CatalogueTestEnvironment
{
    TestHome home;
    std::unique_ptr<QuorinSite> site;

    bool start()
    {
        VORADatabaseManager::initializeDB();
        VORABookShelfManager::installIntoGlobalData();
        site = std::make_unique<QuorinSite>(QuorinSiteOptions{home.filePath(QStringLiteral("site"))});
        if (site->listen() == 0)
            return false;
        pointAtSite();
        VORAAppGlobalData::shareAppGlobalData();
        return true;
    }
    void pointAtSite() { qputenv("QUORIN_API_BASE", site->baseUrl().toString().toUtf8()); }
};
