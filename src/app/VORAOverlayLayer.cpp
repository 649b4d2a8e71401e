#include "VORAOverlayLayer.h"

#include "AppLog.h"
#include "core/VORANotificationNames.h"
#include "platform/NotificationCenter.h"

VORAOverlayLayer::VORAOverlayLayer(QObject *parent)
    : QObject(parent)
{
    m_noticeTimer.setSingleShot(true);
    connect(&m_noticeTimer, &QTimer::timeout, this, [this] {
        m_noticeVisible = false;
        emit noticeChanged();
    });
    m_progressTimer.setSingleShot(true);
    connect(&m_progressTimer, &QTimer::timeout, this, &VORAOverlayLayer::closeProgress);

    auto &center = NotificationCenter::defaultCenter();
    center.addObserver(this, QString::fromLatin1(VORANotificationNames::uiNoticeRequest), [this](const Notification &n) {
        const double seconds = n.userInfo.value(QStringLiteral("duration"), 2.0).toDouble();
        showNotice(n.userInfo.value(QStringLiteral("text")).toString(), int(seconds * 1000));
    });
    center.addObserver(this, QString::fromLatin1(VORANotificationNames::uiAlertRequest),
                       [this](const Notification &n) { onAlertRequest(n); });
    center.addObserver(this, QString::fromLatin1(VORANotificationNames::uiLoadingRequest),
                       [this](const Notification &n) { onLoadingRequest(n); });
    center.addObserver(this, QString::fromLatin1(VORANotificationNames::uiTextPanelRequest), [this](const Notification &n) {
        const double seconds = n.userInfo.value(QStringLiteral("delay"), 1.0).toDouble();
        showTextPanel(n.userInfo.value(QStringLiteral("text")).toString(), int(seconds * 1000));
    });
}

VORAOverlayLayer::~VORAOverlayLayer()
{
    NotificationCenter::defaultCenter().removeObserver(this);
}

QVariantList VORAOverlayLayer::alerts() const
{
    QVariantList list;
    for (const Alert &a : m_alerts) {
        list.append(QVariantMap{{QStringLiteral("alertId"), a.id},
                                {QStringLiteral("tag"), a.tag},
                                {QStringLiteral("kind"), a.kind},
                                {QStringLiteral("title"), a.title},
                                {QStringLiteral("message"), a.message},
                                {QStringLiteral("buttons"), a.buttons}});
    }
    return list;
}

QStringList VORAOverlayLayer::alertMessages() const
{
    QStringList list;
    for (const Alert &a : m_alerts)
        list.append(a.message);
    return list;
}

QVariantList VORAOverlayLayer::loadingViews() const
{
    QVariantList list;
    for (const Loading &l : m_loading)
        list.append(QVariantMap{{QStringLiteral("text"), l.text}, {QStringLiteral("tag"), loadingViewTag}});
    return list;
}

void VORAOverlayLayer::onAlertRequest(const Notification &n)
{
    Alert a;
    a.id = m_nextAlertId++;
    a.tag = n.userInfo.value(QStringLiteral("tag")).toInt();
    a.kind = n.userInfo.value(QStringLiteral("kind")).toString();
    a.title = n.userInfo.value(QStringLiteral("title")).toString();
    a.message = n.userInfo.value(QStringLiteral("message")).toString();
    a.buttons = n.userInfo.value(QStringLiteral("buttons")).toStringList();
    if (a.buttons.isEmpty())
        a.buttons = QStringList{QStringLiteral("确定")};
    a.delegate = n.userInfo.value(QStringLiteral("delegate")).value<QObject *>();
    m_alerts.append(a);
    emit alertsChanged();
}

void VORAOverlayLayer::answerAlert(int alertId, int buttonIndex)
{
    for (qsizetype i = 0; i < m_alerts.size(); ++i) {
        if (m_alerts.at(i).id != alertId)
            continue;
        const Alert a = m_alerts.takeAt(i);
        emit alertsChanged();
        if (buttonIndex < 0 || buttonIndex >= a.buttons.size()) {
            qCWarning(lcApp) << "alert" << a.tag << "answered with a button it does not have:" << buttonIndex;
            return;
        }
        if (a.delegate) {
            const bool ok = QMetaObject::invokeMethod(a.delegate.data(), "alertView", Qt::DirectConnection,
                                                      Q_ARG(int, a.tag), Q_ARG(int, buttonIndex));
            if (!ok)
                qCWarning(lcApp) << "alert delegate has no alertView(int,int):" << a.delegate->metaObject()->className();
        }
        return;
    }
}

void VORAOverlayLayer::onLoadingRequest(const Notification &n)
{
    const QString action = n.userInfo.value(QStringLiteral("action")).toString();
    QObject *parentView = n.userInfo.value(QStringLiteral("parentView")).value<QObject *>();
    // One loading view per parent: showing again replaces its text.
    for (qsizetype i = 0; i < m_loading.size(); ++i) {
        if (m_loading.at(i).parentView.isNull() || m_loading.at(i).parentView == parentView) {
            m_loading.removeAt(i);
            --i;
        }
    }
    if (action == QLatin1String("show"))
        m_loading.append(Loading{parentView, n.userInfo.value(QStringLiteral("text")).toString()});
    emit loadingViewsChanged();
}

void VORAOverlayLayer::showNotice(const QString &text, int durationMs)
{
    m_noticeText = text;
    m_noticeVisible = true;
    m_noticeTimer.start(qMax(durationMs, 1));
    emit noticeChanged();
}

void VORAOverlayLayer::showProgress(const QString &text)
{
    m_progressTimer.stop();
    m_progressText = text;
    m_progressBlocking = true;
    m_progressVisible = true;
    emit progressChanged();
}

void VORAOverlayLayer::closeProgress()
{
    m_progressTimer.stop();
    if (!m_progressVisible)
        return;
    m_progressVisible = false;
    emit progressChanged();
}

void VORAOverlayLayer::showTextPanel(const QString &text, int delayMs)
{
    m_progressText = text;
    m_progressBlocking = false;
    m_progressVisible = true;
    m_progressTimer.start(qMax(delayMs, 1));
    emit progressChanged();
}
