#include "VORASettingView.h"

#include "AppLog.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORASystemConfig.h"
#include "core/VORAUserConfig.h"
#include "core/VORAUtility.h"
#include "platform/NotificationCenter.h"

#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QThreadPool>
#include <QCoreApplication>

namespace {

double measure()
{
    return VORAUtility::fileSizeOfDir(VORAUtility::pageCacheDirectory()) +
           VORAUtility::fileSizeOfDir(VORAUtility::comicCacheDirectory());
}

// Removes the files directly in the directory (the caches are flat); the
// directory itself stays so that writers need not create it again.
void emptyDirectory(const QString &path)
{
    QDir dir(path);
    const QFileInfoList entries = dir.entryInfoList(QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &fi : entries) {
        if (!QFile::remove(fi.absoluteFilePath()))
            qCWarning(lcApp) << "could not remove cached file" << fi.absoluteFilePath();
    }
}

} // namespace

VORASettingView::VORASettingView(QObject *parent)
    : QObject(parent)
{
    NotificationCenter::defaultCenter().addObserver(this, QString::fromLatin1(VORANotificationNames::userViewPostInfo),
                                                    [this](const Notification &) { refreshUser(); });
    refreshCacheSize();
}

VORASettingView::~VORASettingView()
{
    NotificationCenter::defaultCenter().removeObserver(this);
}

bool VORASettingView::isNotifyUpdate() const { return VORAUserConfig::shareUserConfigInstance()->isNotifyUpdate(); }
bool VORASettingView::isTurnPageByVolumeBtn() const { return VORAUserConfig::shareUserConfigInstance()->isTurnPageByVolumeBtn(); }
bool VORASettingView::isDisplayTuCao() const { return VORAUserConfig::shareUserConfigInstance()->isDisplayTuCao(); }
bool VORASettingView::isVerticalScreen() const { return VORAUserConfig::shareUserConfigInstance()->isVerticalScreen(); }
bool VORASettingView::isAutoLuminance() const { return VORAUserConfig::shareUserConfigInstance()->isAutoLuminance(); }

void VORASettingView::setIsNotifyUpdate(bool v)
{
    if (v == isNotifyUpdate())
        return;
    VORAUserConfig::shareUserConfigInstance()->setIsNotifyUpdate(v);
    emit preferencesChanged();
    // The bookshelf badge depends on this preference.
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::bookshelfLatestCountChange));
}

void VORASettingView::setIsTurnPageByVolumeBtn(bool v)
{
    VORAUserConfig::shareUserConfigInstance()->setIsTurnPageByVolumeBtn(v);
    emit preferencesChanged();
}

void VORASettingView::setIsDisplayTuCao(bool v)
{
    VORAUserConfig::shareUserConfigInstance()->setIsDisplayTuCao(v);
    emit preferencesChanged();
}

void VORASettingView::setIsVerticalScreen(bool v)
{
    VORAUserConfig::shareUserConfigInstance()->setIsVerticalScreen(v);
    emit preferencesChanged();
}

void VORASettingView::setIsAutoLuminance(bool v)
{
    VORAUserConfig::shareUserConfigInstance()->setIsAutoLuminance(v);
    emit preferencesChanged();
}

QString VORASettingView::cacheSizeText() const
{
    if (m_cacheSize < 0)
        return QStringLiteral("计算中…");
    return QStringLiteral("%1 MB").arg(m_cacheSize, 0, 'f', 2);
}

QString VORASettingView::version() const
{
    return VORASystemConfig::appVersion();
}

bool VORASettingView::isLogin() const
{
    return VORAAppGlobalData::shareAppGlobalData()->user()->isLogin();
}

QString VORASettingView::userName() const
{
    const VORAUser *user = VORAAppGlobalData::shareAppGlobalData()->user();
    return user->nickName().isEmpty() ? user->userName() : user->nickName();
}

void VORASettingView::refreshUser()
{
    emit userChanged();
}

void VORASettingView::setBusy(bool busy)
{
    m_busy = busy;
    emit cacheChanged();
}

void VORASettingView::refreshCacheSize()
{
    QPointer<VORASettingView> self(this);
    QThreadPool::globalInstance()->start([self] {
        const double size = measure();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, size] {
                if (!self)
                    return;
                self->m_cacheSize = size;
                emit self->cacheChanged();
            },
            Qt::QueuedConnection);
    });
}

void VORASettingView::clearCache()
{
    if (m_busy)
        return;
    setBusy(true);
    QPointer<VORASettingView> self(this);
    QThreadPool::globalInstance()->start([self] {
        emptyDirectory(VORAUtility::pageCacheDirectory());
        emptyDirectory(VORAUtility::comicCacheDirectory());
        const double size = measure();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, size] {
                if (!self)
                    return;
                self->m_cacheSize = size;
                self->setBusy(false);
                emit self->cacheCleared();
            },
            Qt::QueuedConnection);
    });
}
