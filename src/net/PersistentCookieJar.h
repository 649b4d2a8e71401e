#pragma once

#include <QList>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QString>

// The cookie jar of every network access manager of the engine.
//
// Each thread's manager owns one of these jars, but all of them read and write
// one process-wide cookie store guarded by a mutex, so a cookie set on an
// answer received on the main thread goes out with the next request of a
// worker thread and the other way round. The store is kept in the app home
// ("Library/Cookies/Cookies.txt", owner-only) and written after every change;
// it is loaded on first use and again whenever the app home changes. Session
// cookies are kept too (the site's session survives a restart of the app);
// expired cookies are dropped on load and on save.
class PersistentCookieJar : public QNetworkCookieJar
{
public:
    explicit PersistentCookieJar(QObject *parent = nullptr);

    QList<QNetworkCookie> cookiesForUrl(const QUrl &url) const override;
    bool setCookiesFromUrl(const QList<QNetworkCookie> &cookieList, const QUrl &url) override;
    bool insertCookie(const QNetworkCookie &cookie) override;
    bool updateCookie(const QNetworkCookie &cookie) override;
    bool deleteCookie(const QNetworkCookie &cookie) override;

    // The file of the store for the current app home.
    static QString storagePath();
    // Every cookie of the store (loading it first if needed).
    static QList<QNetworkCookie> storedCookies();
    // Forgets the store held in memory, as a new process would start: the next
    // use reads the file again.
    static void reloadFromDisk();
    // Empties the store and its file.
    static void clearAll();
};
