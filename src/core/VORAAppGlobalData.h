#pragma once

#include "core/VORAAppStatus.h"
#include "core/VORAUser.h"

#include <QObject>

#include <functional>
#include <optional>

// The process-wide holder of the user, the application status and the
// bookshelf manager.
//
// Creation: (1) load the status, or make a fresh one (fromAppStore 1, now as
// bookshelfUpdateTime, a new deviceId; not saved here); (2) load the user, or a
// signed-out one; (3) create the bookshelf manager through the factory that the
// store installs; (4) when more than 86400 s have passed since
// bookshelfUpdateTime and the network exists, invoke the manager's
// syncBookshelfFromServer (the manager runs it on its own worker thread).
class VORAAppGlobalData
{
public:
    using BookShelfManagerFactory = std::function<QObject *(VORAAppGlobalData *)>;

    // The one instance, created on first call (safe against concurrent first
    // calls) and never destroyed.
    static VORAAppGlobalData *shareAppGlobalData();

    // Installed by the store before the first shareAppGlobalData(). The factory
    // receives the holder being built and must not call shareAppGlobalData().
    static void setBookShelfManagerFactory(BookShelfManagerFactory factory);

    // Runs the creation steps. Public so tests can simulate another start in the
    // same process; the application uses shareAppGlobalData().
    VORAAppGlobalData();
    ~VORAAppGlobalData();
    VORAAppGlobalData(const VORAAppGlobalData &) = delete;
    VORAAppGlobalData &operator=(const VORAAppGlobalData &) = delete;

    VORAUser *user() { return &m_user; }
    VORAAppStatus *appStatus() { return &m_appStatus; }
    QObject *bookShelfManager() const { return m_bookShelfManager; }
    // The key and device id for requests, from any thread (a locked copy of
    // user()->key() and appStatus()->deviceId(), updated on every change).
    VORARequestIdentity::Snapshot requestIdentity() const { return m_requestIdentity.snapshot(); }

    // Files under VORAUtility::getUserDataDirectory(); "User.txt" is mode 0600.
    bool saveUser();
    // Where the user panel goes after its next sign-in, saved at once:
    // `jumpType` 0 stays on the panel, 1 closes it back to the screen that
    // asked; `topupType` 0 opens the membership top-up, 1 the coins, 2 none.
    // A screen sending the reader to sign in says this first: a user who never
    // opened the panel holds the record's initial 0 (the membership top-up).
    void setUserViewJump(int jumpType, int topupType);
    std::optional<VORAUser> loadUser() const;
    bool saveAppStatus();
    std::optional<VORAAppStatus> loadAppStatus() const;

    static constexpr qint64 bookshelfSyncInterval = 86400;
    // Step 4's time rule: true when more than 86400 whole seconds lie between
    // the last synchronisation and now (an invalid time never synced).
    static bool isBookshelfSyncDue(const QDateTime &lastSync, const QDateTime &now);

private:
    VORARequestIdentity m_requestIdentity; // before the records that report to it
    VORAUser m_user;
    VORAAppStatus m_appStatus;
    QObject *m_bookShelfManager = nullptr;
};
