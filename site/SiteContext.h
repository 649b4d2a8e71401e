#pragma once

#include "SiteCatalogue.h"
#include "SiteDatabase.h"
#include "SiteHttpRequest.h"
#include "SiteHttpResponse.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// What every service handler shares: the catalogue, the state database, the
// signed-in user of a request, URL building and the two answer generations.
class SiteContext
{
public:
    struct User
    {
        qint64 id = 0;
        QString username;
        QString nickname;
        QString groupUser; // "0" ordinary member, "1" paying member
        QString site;
        QString sex;
        int level = 0;
        int vipLevel = 0;
        int coin = 0;
        int ticket = 0;
        bool isVip() const { return groupUser == QLatin1String("1"); }
    };

    SiteContext(SiteCatalogue &catalogue, SiteDatabase &db, const QString &fallbackBase);

    SiteCatalogue &catalogue;
    SiteDatabase &db;

    static qint64 now();
    QString base(const SiteHttpRequest &request) const;
    void setFallbackBase(const QString &base) { m_fallbackBase = base; }

    bool initSchema();
    // Fills the demo accounts and the demo tucao, comments and keywords into a new database.
    void seedIfNeeded();
    // Creates the schema when needed and returns the catalogue's anchor time, -1 when
    // the database cannot be used.
    static qint64 storedAnchor(SiteDatabase &db);

    std::optional<User> user(qint64 id);
    std::optional<User> userByKey(const QString &key);
    // The user whose key the request carries as "key"; none when absent or unknown.
    std::optional<User> currentUser(const SiteHttpRequest &request);
    QString issueKey(qint64 userId);
    QJsonObject userJson(const User &user, const SiteHttpRequest &request) const;
    void addCoins(qint64 userId, int amount, const QString &reason);
    // Marks an unpaid order paid and credits its coins or membership at once;
    // false when the order is unknown or was paid before.
    bool payOrder(const QString &orderId);

    // URLs of this server.
    QString coverUrl(const SiteHttpRequest &r, qint64 comicId, bool original = false) const;
    QString pageUrl(const SiteHttpRequest &r, const SiteCatalogue::Page &page, bool webp) const;
    QString faceUrl(const SiteHttpRequest &r, qint64 userId) const;
    QString slideUrl(const SiteHttpRequest &r, int number) const;

    // The ".php" generation: top-level keys.
    static SiteHttpResponse php(QJsonObject payload, int code = 1, const QString &message = QString());
    static SiteHttpResponse phpRefusal(const QString &message, int code = 0);
    // The "v3/app/" generation: {"code":1,"data":{"stateCode","message","returnData"}}.
    static SiteHttpResponse v3(const QJsonValue &returnData, const QString &message = QString());
    static SiteHttpResponse v3Refusal(const QString &message, int stateCode = 0);

    // Strict readers for request values: decimal digits only, within range.
    static bool readId(const QString &text, qint64 *out);
    static bool readInt(const QString &text, int *out, int min, int max);

    // Comic figures that combine the demo base with the users' state.
    qint64 tucaoTotal(qint64 comicId);
    qint64 commentTotal(qint64 threadId);
    qint64 ticketTotal(const SiteCatalogue::Comic &comic);
    void gradeFigures(const SiteCatalogue::Comic &comic, qint64 *count, double *score);
    qint64 favourites(const SiteCatalogue::Comic &comic);
    bool hasBought(qint64 userId, qint64 chapterId);
    // Whether the seven-day seal still holds for a chapter at this time.
    static bool sealed(qint64 passTime, qint64 now);

private:
    void seedTucao();
    void seedComments();
    void seedWallet();
    QString m_fallbackBase;
};
