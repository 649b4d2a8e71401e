#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QString>

// The settings panel (button tag 108): the reader preferences of
// VORAUserConfig, the size of the page and comic caches with a button that
// clears them, and the version. Sizes are measured and caches cleared on a
// worker thread.
class VORASettingView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the root controller makes the settings panel")
    Q_PROPERTY(bool isNotifyUpdate READ isNotifyUpdate WRITE setIsNotifyUpdate NOTIFY preferencesChanged)
    Q_PROPERTY(bool isTurnPageByVolumeBtn READ isTurnPageByVolumeBtn WRITE setIsTurnPageByVolumeBtn NOTIFY preferencesChanged)
    Q_PROPERTY(bool isDisplayTuCao READ isDisplayTuCao WRITE setIsDisplayTuCao NOTIFY preferencesChanged)
    Q_PROPERTY(bool isVerticalScreen READ isVerticalScreen WRITE setIsVerticalScreen NOTIFY preferencesChanged)
    Q_PROPERTY(bool isAutoLuminance READ isAutoLuminance WRITE setIsAutoLuminance NOTIFY preferencesChanged)
    Q_PROPERTY(QString cacheSizeText READ cacheSizeText NOTIFY cacheChanged)
    Q_PROPERTY(bool busy READ isBusy NOTIFY cacheChanged)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(bool isLogin READ isLogin NOTIFY userChanged)
    Q_PROPERTY(QString userName READ userName NOTIFY userChanged)
public:
    explicit VORASettingView(QObject *parent = nullptr);
    ~VORASettingView() override;

    bool isNotifyUpdate() const;
    void setIsNotifyUpdate(bool v);
    bool isTurnPageByVolumeBtn() const;
    void setIsTurnPageByVolumeBtn(bool v);
    bool isDisplayTuCao() const;
    void setIsDisplayTuCao(bool v);
    bool isVerticalScreen() const;
    void setIsVerticalScreen(bool v);
    bool isAutoLuminance() const;
    void setIsAutoLuminance(bool v);

    double cacheSize() const { return m_cacheSize; } // MiB, -1 until measured
    QString cacheSizeText() const;
    bool isBusy() const { return m_busy; }
    QString version() const;
    bool isLogin() const;
    QString userName() const;

    // Measures fileSizeOfDir of the page and comic caches on a worker thread.
    Q_INVOKABLE void refreshCacheSize();
    // Empties both caches on a worker thread, then measures again.
    Q_INVOKABLE void clearCache();
    Q_INVOKABLE void refreshUser();

signals:
    void preferencesChanged();
    void cacheChanged();
    void userChanged();
    void cacheCleared();

private:
    void setBusy(bool busy);
    double m_cacheSize = -1;
    bool m_busy = false;
};
