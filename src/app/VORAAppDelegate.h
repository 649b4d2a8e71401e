#pragma once

#include "net/VORAHttpBaseWebServiceDelegate.h"

#include <QJsonObject>
#include <QObject>
#include <QPointer>
#include <QUrl>

#include <memory>

class QQmlApplicationEngine;
class QQuickWindow;
class VORAAutoLoginService;
class VORACheckVersionService;
class VORAOverlayLayer;
class VORARootViewController;

// The application object's delegate: the start-up sequence, the silent
// re-sign-in and the version check, the background / active handling, and
// the URLs of the app's own scheme.
class VORAAppDelegate : public QObject, public VORAHttpBaseWebServiceDelegate
{
    Q_OBJECT
    Q_PROPERTY(int alertType READ alertType NOTIFY alertTypeChanged)
public:
    static constexpr int progressPanelTag = 19870319;
    static constexpr int ratingLaunchCount = 20;
    static constexpr int ratingAlertTag = 1;
    static constexpr int updateAlertTag = 2;
    // The app's scheme: six letters and "://", nine characters in all.
    static inline const QString urlScheme = QStringLiteral("quorin");
    // Source application of URLs that come back from the system browser (the
    // payment page); on this platform every URL handed to a running or
    // starting instance counts as such.
    static inline const QString browserSourceApplication = QStringLiteral("system.browser");

    explicit VORAAppDelegate(VORAOverlayLayer *overlays, QObject *parent = nullptr);
    ~VORAAppDelegate() override;

    // Loads the QML window in step 10 (off in tests of the start-up rules).
    void setShowsWindow(bool on) { m_showsWindow = on; }
    // Initial window size (1024 × 768 unless changed).
    void setInitialSize(int width, int height);

    // The launch-finished callback: the start-up sequence.
    bool didFinishLaunching();

    VORARootViewController *rootViewController() const { return m_rootViewController; }
    QQuickWindow *window() const;
    QQmlApplicationEngine *engine() const { return m_engine.get(); }
    VORAOverlayLayer *overlays() const { return m_overlays; }
    int alertType() const { return m_alertType; }

    void showMBProgressHUD(const QString &text);
    void closeMBProgressHUD();
    void openMBProgressHUDView(const QString &text, double delaySeconds);

    void autoLogin();
    // No remote notifications on this platform: registers nothing.
    void initPush();
    void push(const QString &deviceToken);

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;
    // The version answer's rules (string comparison of versions, kept so).
    void handleCheckVersionAnswer(const QJsonObject &returnData);
    Q_INVOKABLE void alertView(int tag, int buttonIndex);

    // URL opened with a source application; true when somebody took it.
    bool openURL(const QUrl &url, const QString &sourceApplication);
    bool openURL(const QString &urlText, const QString &sourceApplication);

    void applicationDidEnterBackground();
    void applicationDidBecomeActive();

signals:
    void alertTypeChanged();
    void launched();
    // The system browser should open this address.
    void openUrlRequested(const QUrl &url);

private:
    void loadWindow();
    void onApplicationStateChanged(Qt::ApplicationState state);

    VORAOverlayLayer *m_overlays = nullptr;
    VORARootViewController *m_rootViewController = nullptr;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    std::unique_ptr<QObject> m_window; // made by a component of m_engine: the caller owns it
    QPointer<VORAAutoLoginService> m_autoLoginService;
    QPointer<VORACheckVersionService> m_checkVersionService;
    bool m_showsWindow = true;
    int m_width = 1024;
    int m_height = 768;
    int m_alertType = -1;
    int m_comicShareType = 0;
    bool m_isTucao = false;
    bool m_isWeiboLogin = false;
    QStringList m_weiboLoginArr;
    Qt::ApplicationState m_lastState = Qt::ApplicationActive;
};
