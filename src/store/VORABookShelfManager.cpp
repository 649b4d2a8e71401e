#include "VORABookShelfManager.h"

#include "StoreLogging.h"
#include "VORADatabaseManager.h"
#include "VORAPersistenceManager.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORAUtility.h"
#include "net/VORABookShelfInfoSynchronizationService.h"
#include "net/VORACheckComicUpdateService.h"
#include "platform/NotificationCenter.h"

#include <QThread>

namespace {

VORABookShelf entryFromRecord(const Bookshelf &record)
{
    VORABookShelf entry;
    entry.comicId = record.comicId();
    entry.comicName = record.comicName();
    entry.coverUrl = record.coverUrl();
    entry.nameFirstletter = record.nameFirstLetter();
    entry.latestUpdateChapterId = record.latestUpdateChapterId();
    entry.latestUpdateChapterName = record.latestUpdateChapterName();
    entry.latestReadChapterId = record.latestReadChapterId();
    entry.latestReadChapterName = record.latestReadChapterName();
    entry.updateTime = record.updateTime();
    entry.adddateTime = record.adddateTime();
    entry.isNotRead = record.isNotRead();
    entry.isHasUpdate = record.isHasUpdate();
    return entry;
}

QString text(const QJsonObject &item, const char *key)
{
    return VORAUtility::jsonString(item.value(QLatin1String(key)));
}

qint64 seconds(const QDateTime &time)
{
    return time.isValid() ? time.toSecsSinceEpoch() : 0;
}

} // namespace

VORABookShelfManager::VORABookShelfManager(VORAAppGlobalData *globalData, QObject *parent)
    : QObject(parent)
    , m_globalData(globalData)
    , m_db(VORAPersistenceManager::getPersistenceManager()->databaseManager())
{
    for (const auto &record : m_db->getAllBookshelf())
        m_shelf.append(entryFromRecord(*record));
}

VORABookShelfManager::~VORABookShelfManager() = default;

void VORABookShelfManager::installIntoGlobalData()
{
    VORAAppGlobalData::setBookShelfManagerFactory(
        [](VORAAppGlobalData *holder) -> QObject * { return new VORABookShelfManager(holder); });
}

VORAAppGlobalData *VORABookShelfManager::globalData() const
{
    return m_globalData ? m_globalData : VORAAppGlobalData::shareAppGlobalData();
}

std::optional<VORABookShelf> VORABookShelfManager::getBookshelfWithComicId(const QString &comicId) const
{
    for (const auto &entry : m_shelf) {
        if (entry.comicId == comicId)
            return entry;
    }
    return std::nullopt;
}

VORABookShelfManager *VORABookShelfManager::sharedManager()
{
    return qobject_cast<VORABookShelfManager *>(VORAAppGlobalData::shareAppGlobalData()->bookShelfManager());
}

int VORABookShelfManager::latestCount() const
{
    return int(std::count_if(m_shelf.cbegin(), m_shelf.cend(), [](const auto &e) { return e.isHasUpdate; }));
}

void VORABookShelfManager::addBookshelf(const VORABookShelf &entry)
{
    addBookshelfList({entry});
}

void VORABookShelfManager::addBookshelfList(const QList<VORABookShelf> &entries)
{
    m_shelf.append(entries);
    m_db->addBookshelfWithBookshelfList(entries);
    calculateLatestCount();
}

void VORABookShelfManager::updateBookshelf(const VORABookShelf &entry)
{
    updateBookshelfList({entry});
}

void VORABookShelfManager::updateBookshelfList(const QList<VORABookShelf> &entries)
{
    for (const auto &given : entries) {
        for (auto &entry : m_shelf) {
            if (entry.comicId == given.comicId) {
                entry = given;
                break;
            }
        }
    }
    m_db->updateBookshelfWithBookshelfList(entries);
    calculateLatestCount();
}

void VORABookShelfManager::deleteBookshelf(const VORABookShelf &entry)
{
    for (qsizetype i = 0; i < m_shelf.size(); ++i) {
        if (m_shelf.at(i).comicId != entry.comicId)
            continue;
        const bool hadUpdate = m_shelf.at(i).isHasUpdate;
        m_db->deleteBookshelf(entry.comicId);
        m_shelf.removeAt(i);
        if (hadUpdate)
            calculateLatestCount();
        return;
    }
}

void VORABookShelfManager::calculateLatestCount()
{
    NotificationCenter::defaultCenter().post(QLatin1String(VORANotificationNames::bookshelfLatestCountChange), this);
}

// --- Update check ---

void VORABookShelfManager::syncBookshelfFromServer()
{
    if (QThread::currentThread() != thread()) {
        QMetaObject::invokeMethod(this, &VORABookShelfManager::syncBookshelfFromServer, Qt::QueuedConnection);
        return;
    }
    if (m_checking.exchange(true))
        return;
    QStringList ids;
    QList<QDateTime> times;
    for (const auto &entry : std::as_const(m_shelf)) {
        ids.append(entry.comicId);
        times.append(entry.updateTime);
    }
    QPointer<VORABookShelfManager> self(this);
    QThread *worker = QThread::create([self, ids, times] {
        VORACheckComicUpdateService service;
        service.comicIdArray = ids;
        service.updateTimeArray = times;
        service.synchronousRequest();
        std::optional<QJsonArray> items;
        if (!service.error() && service.data) {
            const QJsonValue list = service.data->value(QStringLiteral("data"));
            if (list.isArray())
                items = list.toArray();
        }
        if (!items)
            qCInfo(lcStore) << "bookshelf update check failed; will try again at the next start";
        // `self` is only dereferenced on its own thread, in the queued call.
        QMetaObject::invokeMethod(
            self.data(),
            [self, items] {
                if (!self)
                    return;
                self->m_checking = false;
                if (items)
                    self->updateBookshelfToDBFromServer(*items);
                else
                    emit self->updateCheckFinished(false);
            },
            Qt::QueuedConnection);
    });
    connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    worker->start();
}

void VORABookShelfManager::updateBookshelfToDBFromServer(const QJsonArray &items)
{
    QList<VORABookShelf> applied;
    for (const QJsonValue &value : items) {
        const QJsonObject item = VORAUtility::jsonObject(value);
        const QString comicId = text(item, "comic_id");
        auto found = getBookshelfWithComicId(comicId);
        if (!found || comicId.isEmpty())
            continue;
        VORABookShelf entry = *found;
        entry.comicName = text(item, "name");
        entry.coverUrl = text(item, "cover");
        entry.updateTime = VORAUtility::dateFromSeconds(VORAUtility::jsonInteger(item.value(QStringLiteral("last_update_time"))));
        entry.latestUpdateChapterId = text(item, "last_update_chapter_id");
        entry.latestUpdateChapterName = text(item, "last_update_chapter_name");
        entry.isHasUpdate = true;
        applied.append(entry);
    }
    if (!applied.isEmpty())
        updateBookshelfList(applied);
    VORAAppGlobalData *holder = globalData();
    holder->appStatus()->setBookshelfUpdateTime(QDateTime::currentDateTimeUtc());
    holder->saveAppStatus();
    emit updateCheckFinished(true);
}

// --- Synchronisation with the site shelf ---

QString VORABookShelfManager::networkDownMessage()
{
    return QStringLiteral("网络死掉了，请揉捏客户端或刷新重试");
}

QString VORABookShelfManager::alertTitle()
{
    return QStringLiteral("温馨提醒");
}

QString VORABookShelfManager::confirmationMessage(bool signedIn)
{
    return signedIn ? QStringLiteral("同步书架将把Quorin网站上您的书架中收藏的漫画加入本地书架，您确定要同步吗？")
                    : QStringLiteral("同步书架将把Quorin网站上您的书架中收藏的漫画加入本地书架，本功能需要登录后才能使用，您确定登录吗？");
}

QString VORABookShelfManager::comicIdsDateForShelf(const QList<VORABookShelf> &shelf)
{
    QString records;
    for (const auto &entry : shelf)
        records += QStringLiteral("%1|add|%2||").arg(entry.comicId).arg(seconds(entry.adddateTime));
    return records;
}

QString VORABookShelfManager::comicIdsDateForDelete(const VORABookShelf &entry)
{
    return QStringLiteral("%1|delete|%2||").arg(entry.comicId).arg(seconds(entry.adddateTime));
}

QList<VORABookShelf> VORABookShelfManager::entriesFromSynchronizationAnswer(const QJsonObject &answer)
{
    QList<VORABookShelf> entries;
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (const QJsonValue &value : VORAUtility::jsonArray(answer.value(QStringLiteral("data")))) {
        const QJsonObject item = VORAUtility::jsonObject(value);
        VORABookShelf entry;
        entry.comicId = text(item, "comic_id");
        entry.comicName = text(item, "name");
        entry.coverUrl = text(item, "cover");
        entry.nameFirstletter = text(item, "first_letter");
        entry.updateTime = VORAUtility::dateFromSeconds(VORAUtility::jsonInteger(item.value(QStringLiteral("last_update_time"))));
        entry.adddateTime = now;
        entry.latestUpdateChapterId = text(item, "last_update_chapter_id");
        entry.latestUpdateChapterName = text(item, "last_update_chapter_name");
        const QJsonValue readId = item.value(QStringLiteral("last_read_chapter_id"));
        entry.latestReadChapterId = readId.isDouble() ? QString::number(VORAUtility::jsonInteger(readId))
                                                      : VORAUtility::jsonString(readId);
        entry.latestReadChapterName = text(item, "last_read_chapter_name");
        const qint64 sort = VORAUtility::jsonInteger(item.value(QStringLiteral("sort")));
        entry.isNotRead = sort == 1;
        entry.isHasUpdate = sort == 2;
        if (!entry.comicId.isEmpty())
            entries.append(entry);
    }
    return entries;
}

int VORABookShelfManager::mergeSiteShelf(const QList<VORABookShelf> &entries)
{
    QList<VORABookShelf> added;
    for (const auto &entry : entries) {
        const bool known = getBookshelfWithComicId(entry.comicId).has_value()
            || std::any_of(added.cbegin(), added.cend(), [&](const auto &a) { return a.comicId == entry.comicId; });
        if (!known)
            added.append(entry);
    }
    if (!added.isEmpty())
        addBookshelfList(added);
    return int(added.size());
}

void VORABookShelfManager::synchronizeBookshelfWithSite()
{
    if (m_userSync)
        return;
    if (!VORAUtility::isExistenceNetwork()) {
        emit synchronizationFinished(false, networkDownMessage(), 0);
        return;
    }
    sendSynchronization(comicIdsDateForShelf(m_shelf), true);
}

void VORABookShelfManager::removeBookshelfAndTellSite(const VORABookShelf &entry)
{
    const auto stored = getBookshelfWithComicId(entry.comicId);
    deleteBookshelf(entry);
    sendSynchronization(comicIdsDateForDelete(stored.value_or(entry)), false);
}

void VORABookShelfManager::sendSynchronization(const QString &comicIdsDate, bool userInitiated)
{
    auto *service = new VORABookShelfInfoSynchronizationService(this);
    service->comicIdsDate = comicIdsDate;
    if (userInitiated)
        m_userSync = service;
    else
        m_removals.append(service);
    service->asynchronousRequestWithDelegate(this);
}

void VORABookShelfManager::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error)
{
    auto *sync = dynamic_cast<VORABookShelfInfoSynchronizationService *>(service);
    const bool userInitiated = sync && sync == m_userSync;
    if (!sync || (!userInitiated && !m_removals.contains(sync)))
        return;
    if (userInitiated)
        m_userSync = nullptr;
    else
        m_removals.removeAll(sync);
    sync->deleteLater();

    if (error) {
        if (userInitiated) {
            emit synchronizationFinished(false,
                                         VORAUtility::isExistenceNetwork()
                                             ? QStringLiteral("请求服务器失败，网络信号不是太好哟~")
                                             : networkDownMessage(),
                                         0);
        } else {
            emit removalExchangeFinished(false);
        }
        return;
    }
    const QJsonObject answer = sync->data.value_or(QJsonObject());
    if (VORAUtility::jsonInteger(answer.value(QStringLiteral("code"))) != 1) {
        if (userInitiated)
            emit synchronizationFinished(false, QStringLiteral("同步失败，请检查网络设置"), 0);
        else
            emit removalExchangeFinished(false);
        return;
    }
    const int added = mergeSiteShelf(entriesFromSynchronizationAnswer(answer));
    if (userInitiated) {
        emit synchronizationFinished(true,
                                     added > 0 ? QStringLiteral("已从quorin网站同步%1本漫画到本地").arg(added)
                                               : QStringLiteral("Quorin网站没有可以同步的收藏漫画"),
                                     added);
    } else {
        emit removalExchangeFinished(true);
    }
}
