#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QPointer>
#include <QTimer>
#include <QVariantList>
#include <QVariantMap>

struct Notification;

// The model of the one overlay layer that every screen shares: status-bar
// notices, alerts with tags (answered by tag to the requesting delegate),
// loading views (tag 100202) and the delegate's progress panels (tag
// 19870319, blocking with a spinner or text-only for a while).
//
// It listens for the core's UI requests ("VORAUiNoticeRequest",
// "VORAUiLoadingRequest", "VORAUiAlertRequest"); the QML layer draws it.
class VORAOverlayLayer : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the app makes the one overlay layer")
    Q_PROPERTY(QString noticeText READ noticeText NOTIFY noticeChanged)
    Q_PROPERTY(bool noticeVisible READ noticeVisible NOTIFY noticeChanged)
    Q_PROPERTY(QVariantList alerts READ alerts NOTIFY alertsChanged)
    Q_PROPERTY(QVariantList loadingViews READ loadingViews NOTIFY loadingViewsChanged)
    Q_PROPERTY(bool progressVisible READ progressVisible NOTIFY progressChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY progressChanged)
    Q_PROPERTY(bool progressBlocking READ progressBlocking NOTIFY progressChanged)
public:
    static constexpr int progressPanelTag = 19870319;
    static constexpr int loadingViewTag = 100202;

    explicit VORAOverlayLayer(QObject *parent = nullptr);
    ~VORAOverlayLayer() override;

    QString noticeText() const { return m_noticeText; }
    bool noticeVisible() const { return m_noticeVisible; }
    QVariantList alerts() const;
    QVariantList loadingViews() const;
    bool progressVisible() const { return m_progressVisible; }
    QString progressText() const { return m_progressText; }
    bool progressBlocking() const { return m_progressBlocking; }

    // Alert texts currently shown, oldest first (messages and titles, for checks).
    QStringList alertMessages() const;

    void showNotice(const QString &text, int durationMs);
    // The blocking panel with a spinner, until closeProgress().
    void showProgress(const QString &text);
    void closeProgress();
    // A text-only panel hidden after delayMs.
    void showTextPanel(const QString &text, int delayMs);

    // The answer of the alert with this id: removed from the layer, then the
    // delegate's alertView(tag, buttonIndex) is called (when it still exists).
    Q_INVOKABLE void answerAlert(int alertId, int buttonIndex);

signals:
    void noticeChanged();
    void alertsChanged();
    void loadingViewsChanged();
    void progressChanged();

private:
    struct Alert
    {
        int id = 0;
        int tag = 0;
        QString kind;
        QString title;
        QString message;
        QStringList buttons;
        QPointer<QObject> delegate;
    };
    struct Loading
    {
        QPointer<QObject> parentView;
        QString text;
    };
    void onAlertRequest(const Notification &n);
    void onLoadingRequest(const Notification &n);

    QString m_noticeText;
    bool m_noticeVisible = false;
    QTimer m_noticeTimer;
    QList<Alert> m_alerts;
    int m_nextAlertId = 1;
    QList<Loading> m_loading;
    bool m_progressVisible = false;
    bool m_progressBlocking = false;
    QString m_progressText;
    QTimer m_progressTimer;
};
