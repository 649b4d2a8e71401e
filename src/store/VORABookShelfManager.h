#pragma once

#include "VORABookShelf.h"

#include "net/VORAHttpBaseWebServiceDelegate.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

#include <atomic>
#include <optional>

class VORAAppGlobalData;
class VORADatabaseManager;
class VORABookShelfInfoSynchronizationService;

// The in-memory bookshelf (newest updateTime first at load), written through
// to the store on every change, and the two site exchanges that keep it
// current: the daily update check and the synchronisation with the reader's
// shelf on the site. Lives on the main thread.
class VORABookShelfManager : public QObject, public VORAHttpBaseWebServiceDelegate
{
    Q_OBJECT
public:
    // `globalData` is the holder that owns the manager (its status is saved
    // after an update check); null means VORAAppGlobalData::shareAppGlobalData().
    explicit VORABookShelfManager(VORAAppGlobalData *globalData = nullptr, QObject *parent = nullptr);
    ~VORABookShelfManager() override;

    // Makes VORAAppGlobalData create this manager. Call before the first
    // shareAppGlobalData().
    static void installIntoGlobalData();
    // The process's manager (the global data's), or null before installIntoGlobalData().
    static VORABookShelfManager *sharedManager();

    QList<VORABookShelf> getAllBookshelf() const { return m_shelf; }
    std::optional<VORABookShelf> getBookshelfWithComicId(const QString &comicId) const;
    int latestCount() const; // entries with isHasUpdate

    void addBookshelf(const VORABookShelf &entry);
    void addBookshelfList(const QList<VORABookShelf> &entries);
    void updateBookshelf(const VORABookShelf &entry);
    void updateBookshelfList(const QList<VORABookShelf> &entries);
    void deleteBookshelf(const VORABookShelf &entry);
    // Posts "BookshelfLatestCountChangeNotification" (sender: the manager).
    void calculateLatestCount();

    // --- Update check ---
    // Sends the shelf's comics and update times on a worker thread of its own;
    // the answer is applied on this object's thread. A check already running
    // makes this call do nothing.
    Q_INVOKABLE void syncBookshelfFromServer();
    // Applies the update check's items (main thread): marks and updates the
    // known comics, then moves bookshelfUpdateTime and saves the status.
    Q_INVOKABLE void updateBookshelfToDBFromServer(const QJsonArray &items);
    bool isCheckingUpdates() const { return m_checking.load(); }

    // --- Synchronisation with the site shelf ---
    static QString networkDownMessage();      // "网络死掉了，请揉捏客户端或刷新重试"
    static QString alertTitle();              // "温馨提醒"
    static QString confirmationMessage(bool signedIn);
    static QString comicIdsDateForShelf(const QList<VORABookShelf> &shelf);
    static QString comicIdsDateForDelete(const VORABookShelf &entry);
    // The entries of a synchronisation answer's "data" list (adddateTime = now).
    static QList<VORABookShelf> entriesFromSynchronizationAnswer(const QJsonObject &answer);
    // Adds the entries whose comic is not on the shelf; returns how many.
    int mergeSiteShelf(const QList<VORABookShelf> &entries);

    // The synchronise button (after confirmation, signed in): sends the whole
    // shelf as "add" records. Ends with synchronizationFinished. Without a
    // network, ends at once with the network-down message.
    void synchronizeBookshelfWithSite();
    // Removal from the shelf screen: deletes locally, then tells the site with
    // a "delete" record; the answer is merged without a message.
    void removeBookshelfAndTellSite(const VORABookShelf &entry);
    bool isSynchronizing() const { return m_userSync != nullptr; }

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;

signals:
    // After every update check: applied is false when the request failed or
    // the answer held no list (nothing moved).
    void updateCheckFinished(bool applied);
    // After a user-initiated synchronisation: the message to show (title
    // alertTitle()) and how many comics were added.
    void synchronizationFinished(bool success, const QString &message, int added);
    // After a removal exchange has been merged (or failed).
    void removalExchangeFinished(bool success);

private:
    void sendSynchronization(const QString &comicIdsDate, bool userInitiated);
    VORAAppGlobalData *globalData() const;

    VORAAppGlobalData *m_globalData = nullptr;
    VORADatabaseManager *m_db = nullptr;
    QList<VORABookShelf> m_shelf;
    std::atomic_bool m_checking{false};
    VORABookShelfInfoSynchronizationService *m_userSync = nullptr;
    QList<VORABookShelfInfoSynchronizationService *> m_removals;
};
