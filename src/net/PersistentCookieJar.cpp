#include "net/PersistentCookieJar.h"

#include "net/NetLog.h"
#include "platform/AppDirectories.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <QSaveFile>

namespace {

// The process-wide store. QNetworkCookieJar's own matching rules (domain, path,
// expiry, secure) do the work; the mutex makes them safe across threads.
class CookieStore : public QNetworkCookieJar
{
public:
    using QNetworkCookieJar::allCookies;
    using QNetworkCookieJar::setAllCookies;
};

struct SharedCookies
{
    QMutex mutex;
    CookieStore store;
    QString loadedPath; // empty: nothing loaded yet
};

SharedCookies &shared()
{
    // Never destroyed: managers of late-finishing threads may still ask.
    static SharedCookies *s = new SharedCookies;
    return *s;
}

// A file larger than this is not a cookie store of ours.
constexpr qint64 maxStoreSize = 4 * 1024 * 1024;

QList<QNetworkCookie> liveCookies(const QList<QNetworkCookie> &cookies)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    QList<QNetworkCookie> live;
    for (const QNetworkCookie &c : cookies) {
        if (!c.isSessionCookie() && c.expirationDate().toUTC() <= now)
            continue;
        live.append(c);
    }
    return live;
}

void loadLocked(SharedCookies &s, const QString &path)
{
    s.loadedPath = path;
    QList<QNetworkCookie> cookies;
    QFile file(path);
    if (file.exists()) {
        if (file.size() > maxStoreSize) {
            qCWarning(lcNet) << "cookie store too large, ignored:" << path;
        } else if (file.open(QIODevice::ReadOnly)) {
            const QList<QByteArray> lines = file.readAll().split('\n');
            for (const QByteArray &line : lines) {
                if (line.trimmed().isEmpty())
                    continue;
                // A damaged line yields no cookie and is skipped.
                const QList<QNetworkCookie> parsed = QNetworkCookie::parseCookies(line);
                for (const QNetworkCookie &c : parsed) {
                    if (!c.name().isEmpty() && !c.domain().isEmpty())
                        cookies.append(c);
                }
            }
        } else {
            qCWarning(lcNet) << "cookie store unreadable:" << path << file.errorString();
        }
    }
    s.store.setAllCookies(liveCookies(cookies));
}

void ensureLoadedLocked(SharedCookies &s)
{
    const QString path = PersistentCookieJar::storagePath();
    if (path != s.loadedPath)
        loadLocked(s, path);
}

void saveLocked(SharedCookies &s)
{
    const QString path = s.loadedPath;
    if (path.isEmpty())
        return;
    const QList<QNetworkCookie> cookies = liveCookies(s.store.allCookies());
    s.store.setAllCookies(cookies);
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qCWarning(lcNet) << "cookie store not writable:" << path << file.errorString();
        return;
    }
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    for (const QNetworkCookie &c : cookies) {
        file.write(c.toRawForm(QNetworkCookie::Full));
        file.write("\n");
    }
    if (!file.commit())
        qCWarning(lcNet) << "cookie store not saved:" << path << file.errorString();
}

} // namespace

PersistentCookieJar::PersistentCookieJar(QObject *parent)
    : QNetworkCookieJar(parent)
{
}

QString PersistentCookieJar::storagePath()
{
    return AppDirectories::home() + QStringLiteral("/Library/Cookies/Cookies.txt");
}

QList<QNetworkCookie> PersistentCookieJar::cookiesForUrl(const QUrl &url) const
{
    SharedCookies &s = shared();
    QMutexLocker lock(&s.mutex);
    ensureLoadedLocked(s);
    return s.store.cookiesForUrl(url);
}

bool PersistentCookieJar::setCookiesFromUrl(const QList<QNetworkCookie> &cookieList,
                                            const QUrl &url)
{
    SharedCookies &s = shared();
    QMutexLocker lock(&s.mutex);
    ensureLoadedLocked(s);
    const bool changed = s.store.setCookiesFromUrl(cookieList, url);
    if (changed)
        saveLocked(s);
    return changed;
}

bool PersistentCookieJar::insertCookie(const QNetworkCookie &cookie)
{
    SharedCookies &s = shared();
    QMutexLocker lock(&s.mutex);
    ensureLoadedLocked(s);
    const bool changed = s.store.insertCookie(cookie);
    if (changed)
        saveLocked(s);
    return changed;
}

bool PersistentCookieJar::updateCookie(const QNetworkCookie &cookie)
{
    SharedCookies &s = shared();
    QMutexLocker lock(&s.mutex);
    ensureLoadedLocked(s);
    const bool changed = s.store.updateCookie(cookie);
    if (changed)
        saveLocked(s);
    return changed;
}

bool PersistentCookieJar::deleteCookie(const QNetworkCookie &cookie)
{
    SharedCookies &s = shared();
    QMutexLocker lock(&s.mutex);
    ensureLoadedLocked(s);
    const bool changed = s.store.deleteCookie(cookie);
    if (changed)
        saveLocked(s);
    return changed;
}

QList<QNetworkCookie> PersistentCookieJar::storedCookies()
{
    SharedCookies &s = shared();
    QMutexLocker lock(&s.mutex);
    ensureLoadedLocked(s);
    return s.store.allCookies();
}

void PersistentCookieJar::reloadFromDisk()
{
    SharedCookies &s = shared();
    QMutexLocker lock(&s.mutex);
    s.loadedPath.clear();
    s.store.setAllCookies({});
}

void PersistentCookieJar::clearAll()
{
    SharedCookies &s = shared();
    QMutexLocker lock(&s.mutex);
    ensureLoadedLocked(s);
    s.store.setAllCookies({});
    saveLocked(s);
}
