#include "VORAAppDelegate.h"

#include "AppLog.h"
#include "VORAImageProvider.h"
#include "VORAOverlayLayer.h"
#include "VORARootViewController.h"
#include "account/VORAAccountFiller.h"
#include "core/RequestStatus.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORASystemConfig.h"
#include "core/VORAUtility.h"
#include "net/VORAAutoLoginService.h"
#include "net/VORACheckVersionService.h"
#include "net/VORAPushmessageService.h"
#include "platform/NotificationCenter.h"
#include "reader/VORAPageImageProvider.h"
#include "store/VORABookShelfManager.h"
#include "store/VORADatabaseManager.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickWindow>
#include <QScreen>

#include <algorithm>

VORAAppDelegate::VORAAppDelegate(VORAOverlayLayer *overlays, QObject *parent)
    : QObject(parent)
    , m_overlays(overlays)
{
    connect(qApp, &QGuiApplication::applicationStateChanged, this, &VORAAppDelegate::onApplicationStateChanged);
}

VORAAppDelegate::~VORAAppDelegate()
{
    if (m_autoLoginService)
        m_autoLoginService->cancelRequest();
    if (m_checkVersionService)
        m_checkVersionService->cancelRequest();
    // The QML goes before the objects it shows, the window before its engine.
    m_window.reset();
    m_engine.reset();
}

void VORAAppDelegate::setInitialSize(int width, int height)
{
    if (width <= 0 || height <= 0)
        return;
    // On a desktop the window never opens larger than the screen's free area.
    // The offscreen platform's screen is made up: screenshots keep their size.
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (screen && QGuiApplication::platformName() != QLatin1String("offscreen")) {
        const QSize available = screen->availableSize();
        if (available.width() > 0 && available.height() > 0) {
            width = std::min(width, available.width());
            height = std::min(height, available.height());
        }
    }
    m_width = width;
    m_height = height;
}

QQuickWindow *VORAAppDelegate::window() const
{
    return qobject_cast<QQuickWindow *>(m_window.get());
}

bool VORAAppDelegate::didFinishLaunching()
{
    // The analytics, sharing and microblog kits are not part of this build.
    VORAUtility::createUserDataDirectory();
    VORAUtility::createSupportDataDirectory();
    VORAUtility::createComicBookDirectory();

    m_isTucao = false;
    m_isWeiboLogin = false;
    m_weiboLoginArr.clear();

    VORADatabaseManager::initializeDB();

    // The global holder makes its bookshelf manager (and may start the daily
    // update check) on first use: the store's factory must be in place first.
    VORABookShelfManager::installIntoGlobalData();
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    VORAAppStatus *status = global->appStatus();
    status->setAppOpenCount(status->appOpenCount() + 1);
    if (!global->saveAppStatus())
        qCWarning(lcApp) << "could not save the application status";
    qCInfo(lcApp) << "launch" << status->appOpenCount();

    // No download manager in this build yet.

    if (status->appOpenCount() == ratingLaunchCount) {
        m_alertType = 1;
        emit alertTypeChanged();
        VORAUtility::requestAlertMessage(QStringLiteral("你喜欢这个应用吗？"), QStringLiteral("温馨提醒"), ratingAlertTag,
                                         QStringLiteral("喜欢"), QStringLiteral("不喜欢"), this);
    }

    m_rootViewController = new VORARootViewController(m_width >= m_height, this);
    connect(m_rootViewController, &VORARootViewController::openUrlRequested, this, &VORAAppDelegate::openUrlRequested);
    m_rootViewController->switchView(100);
    if (m_showsWindow)
        loadWindow();

    autoLogin();
    emit launched();
    return true;
}

void VORAAppDelegate::loadWindow()
{
    m_engine = std::make_unique<QQmlApplicationEngine>();
    m_engine->addImageProvider(QStringLiteral("quorin"), new VORAImageProvider);
    m_engine->addImageProvider(VORAPageImageProvider::providerName, new VORAPageImageProvider);
    // The window's required properties: what it draws and its first size.
    QQmlComponent component(m_engine.get(), QUrl(QStringLiteral("qrc:/Quorin/qml/Main.qml")));
    m_window.reset(component.createWithInitialProperties({
        {QStringLiteral("rootController"), QVariant::fromValue(m_rootViewController)},
        {QStringLiteral("overlayLayer"), QVariant::fromValue(m_overlays)},
        {QStringLiteral("width"), m_width},
        {QStringLiteral("height"), m_height},
    }));
    if (!window())
        qCCritical(lcApp) << "the main window could not be loaded:" << component.errorString();
}

void VORAAppDelegate::showMBProgressHUD(const QString &text)
{
    m_overlays->showProgress(text);
}

void VORAAppDelegate::closeMBProgressHUD()
{
    m_overlays->closeProgress();
}

void VORAAppDelegate::openMBProgressHUDView(const QString &text, double delaySeconds)
{
    m_overlays->showTextPanel(text, int(delaySeconds * 1000));
}

void VORAAppDelegate::autoLogin()
{
    if (!VORAUtility::isExistenceNetwork()) {
        openMBProgressHUDView(RequestStatus::noNetworkText, 2.0);
        NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::userViewPostInfo));
        return;
    }
    auto *login = new VORAAutoLoginService(this);
    login->buildVersion = VORASystemConfig::buildVersion();
    m_autoLoginService = login;
    login->asynchronousRequestWithDelegate(this);

    auto *version = new VORACheckVersionService(this);
    m_checkVersionService = version;
    version->asynchronousRequestWithDelegate(this);
}

void VORAAppDelegate::initPush()
{
    qCInfo(lcApp) << "remote notifications do not exist on this platform; nothing registered";
}

void VORAAppDelegate::push(const QString &deviceToken)
{
    const VORAUser *user = VORAAppGlobalData::shareAppGlobalData()->user();
    if (user->userId().isEmpty())
        return;
    auto *service = new VORAPushmessageService(this);
    service->appId = QStringLiteral("0");
    service->ipadToken = deviceToken;
    service->userId = user->userId();
    service->asynchronousRequestWithDelegate(this);
}

void VORAAppDelegate::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error)
{
    if (auto *login = dynamic_cast<VORAAutoLoginService *>(service); login && login == m_autoLoginService) {
        if (!error && login->data) {
            VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
            if (VORAAccountFiller::applyAutoLoginAnswer(*global->user(), *login->data))
                VORAUtility::noticeWithStatusBarWithString(QStringLiteral("自动登录成功!"));
            global->saveUser();
        } else if (error) {
            qCInfo(lcApp) << "automatic sign-in failed:" << error->localizedDescription;
        }
        NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::userViewPostInfo));
        initPush();
        login->deleteLater();
        return;
    }
    if (auto *version = dynamic_cast<VORACheckVersionService *>(service); version && version == m_checkVersionService) {
        if (!error && version->returnData)
            handleCheckVersionAnswer(*version->returnData);
        version->deleteLater();
        return;
    }
    service->deleteLater();
}

void VORAAppDelegate::handleCheckVersionAnswer(const QJsonObject &returnData)
{
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    VORAAppStatus *status = global->appStatus();
    status->setFromAppStore(VORAUtility::jsonInteger(returnData.value(QLatin1String("from"))));
    status->setAutoUpdate(VORAUtility::jsonInteger(returnData.value(QLatin1String("auto_update"))));
    global->saveAppStatus();
    const QJsonValue name = returnData.value(QLatin1String("name"));
    if (status->autoUpdate() != 1 || !name.isString())
        return;
    // Plain string order, not by component: "3.10" is older than "3.5" here.
    if (name.toString() > VORASystemConfig::appVersion()) {
        m_alertType = 0;
        emit alertTypeChanged();
        VORAUtility::requestAlertMessage(VORAUtility::jsonString(returnData.value(QLatin1String("update_content"))),
                                         QStringLiteral("更新提示"), updateAlertTag, QStringLiteral("立即更新"),
                                         QStringLiteral("稍后更新"), this);
    }
}

void VORAAppDelegate::alertView(int, int buttonIndex)
{
    if (buttonIndex == 0 && (m_alertType == 0 || m_alertType == 1)) {
        // The app's page: this build has no store, so the site's home stands for it.
        emit openUrlRequested(QUrl(VORASystemConfig::getWebServiceUrlBase()));
    } else if (buttonIndex == 1 && m_alertType == 1) {
        qCInfo(lcApp) << "the feedback kit is not part of this build";
    }
}

bool VORAAppDelegate::openURL(const QUrl &url, const QString &sourceApplication)
{
    return openURL(url.toString(QUrl::FullyEncoded), sourceApplication);
}

bool VORAAppDelegate::openURL(const QString &urlText, const QString &sourceApplication)
{
    if (sourceApplication == browserSourceApplication) {
        if (!urlText.startsWith(urlScheme + QLatin1String("://"))) {
            qCWarning(lcApp) << "not a URL of this app:" << urlText;
            return false;
        }
        const QString rest = QUrl::fromPercentEncoding(urlText.mid(9).toUtf8());
        NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::safariSuccess), nullptr,
                                                 QVariantMap{{QStringLiteral("object"), rest}});
        return true;
    }
    // The sharing, QQ and microblog kits that took the other URLs are not built.
    qCInfo(lcApp) << "no handler for URL" << urlText << "from" << sourceApplication;
    return false;
}

void VORAAppDelegate::onApplicationStateChanged(Qt::ApplicationState state)
{
    const bool wasActive = m_lastState == Qt::ApplicationActive || m_lastState == Qt::ApplicationInactive;
    m_lastState = state;
    if (state == Qt::ApplicationSuspended || state == Qt::ApplicationHidden) {
        if (wasActive)
            applicationDidEnterBackground();
    } else if (state == Qt::ApplicationActive) {
        applicationDidBecomeActive();
    }
}

void VORAAppDelegate::applicationDidEnterBackground()
{
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::applicationExit));
    // Downloads would keep running until the background time ran out; there
    // is no download manager in this build yet.
}

void VORAAppDelegate::applicationDidBecomeActive()
{
    if (m_comicShareType == 0) {
        // The microblog session would hear of it; the kit is not built.
    }
}
