#include "core/VORAAppGlobalData.h"
#include "core/CoreLog.h"
#include "core/VORAArchiveNames.h"
#include "core/VORAUtility.h"

#include "platform/KeyedArchive.h"

#include <QMetaObject>
#include <QMutex>
#include <QMutexLocker>
#include <QThread>

namespace {

QMutex &factoryMutex()
{
    static QMutex mutex;
    return mutex;
}

VORAAppGlobalData::BookShelfManagerFactory &factoryStorage()
{
    static VORAAppGlobalData::BookShelfManagerFactory factory;
    return factory;
}

QString userDataFile(const char *name)
{
    return VORAUtility::getUserDataDirectory() + QString::fromUtf8(name);
}

} // namespace

VORAAppGlobalData *VORAAppGlobalData::shareAppGlobalData()
{
    // Function-local static: initialised once, concurrent first callers wait.
    static VORAAppGlobalData *instance = new VORAAppGlobalData;
    return instance;
}

void VORAAppGlobalData::setBookShelfManagerFactory(BookShelfManagerFactory factory)
{
    QMutexLocker lock(&factoryMutex());
    factoryStorage() = std::move(factory);
}

VORAAppGlobalData::VORAAppGlobalData()
{
    // 1. The status, or a fresh one. Saved by the start-up after counting the launch.
    if (std::optional<VORAAppStatus> status = loadAppStatus()) {
        m_appStatus = *status;
    } else {
        m_appStatus = VORAAppStatus();
        m_appStatus.setAppOpenCount(0);
        m_appStatus.setAppHelpBookshelfCount(0);
        m_appStatus.setAppHelpFirstPageCount(0);
        m_appStatus.setFromAppStore(1);
        m_appStatus.setAutoUpdate(0);
        m_appStatus.setBookshelfUpdateTime(QDateTime::currentDateTimeUtc());
        m_appStatus.setDeviceId(VORAUtility::generateUUID());
    }

    // 2. The user, or a signed-out one.
    if (std::optional<VORAUser> user = loadUser())
        m_user = *user;
    else
        m_user = VORAUser();

    m_user.reportKeyTo(&m_requestIdentity);
    m_appStatus.reportDeviceIdTo(&m_requestIdentity);

    // 3. The bookshelf manager (lives in the store library).
    BookShelfManagerFactory factory;
    {
        QMutexLocker lock(&factoryMutex());
        factory = factoryStorage();
    }
    if (factory)
        m_bookShelfManager = factory(this);
    else
        qCInfo(lcCore) << "no bookshelf manager factory installed";

    // 4. The daily bookshelf check.
    if (m_bookShelfManager
        && isBookshelfSyncDue(m_appStatus.bookshelfUpdateTime(), QDateTime::currentDateTimeUtc())
        && VORAUtility::isExistenceNetwork()) {
        if (!QMetaObject::invokeMethod(m_bookShelfManager, "syncBookshelfFromServer"))
            qCWarning(lcCore) << "the bookshelf manager has no syncBookshelfFromServer";
    }
}

bool VORAAppGlobalData::isBookshelfSyncDue(const QDateTime &lastSync, const QDateTime &now)
{
    if (!lastSync.isValid())
        return true;
    return lastSync.secsTo(now) > bookshelfSyncInterval;
}

VORAAppGlobalData::~VORAAppGlobalData()
{
    if (!m_bookShelfManager)
        return;
    if (m_bookShelfManager->thread() == QThread::currentThread())
        delete m_bookShelfManager;
    else
        m_bookShelfManager->deleteLater();
}

bool VORAAppGlobalData::saveUser()
{
    return KeyedArchive::save(userDataFile(VORAArchiveNames::userFile),
                              QString::fromUtf8(VORAArchiveNames::userKey),
                              m_user.encodeWithCoder(), /*ownerOnly=*/true);
}

void VORAAppGlobalData::setUserViewJump(int jumpType, int topupType)
{
    m_user.setUserViewJumpType(jumpType);
    m_user.setUserViewJumpIsTopupType(topupType);
    saveUser();
}

std::optional<VORAUser> VORAAppGlobalData::loadUser() const
{
    const QCborValue v = KeyedArchive::load(userDataFile(VORAArchiveNames::userFile),
                                            QString::fromUtf8(VORAArchiveNames::userKey));
    if (!v.isMap())
        return std::nullopt;
    return VORAUser::initWithCoder(v.toMap());
}

bool VORAAppGlobalData::saveAppStatus()
{
    return KeyedArchive::save(userDataFile(VORAArchiveNames::appStatusFile),
                              QString::fromUtf8(VORAArchiveNames::appStatusKey),
                              m_appStatus.encodeWithCoder());
}

std::optional<VORAAppStatus> VORAAppGlobalData::loadAppStatus() const
{
    const QCborValue v = KeyedArchive::load(userDataFile(VORAArchiveNames::appStatusFile),
                                            QString::fromUtf8(VORAArchiveNames::appStatusKey));
    if (!v.isMap())
        return std::nullopt;
    return VORAAppStatus::initWithCoder(v.toMap());
}
