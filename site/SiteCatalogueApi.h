#pragma once

#include "SiteContext.h"
#include "SiteRouter.h"

// Browsing: the list service (feed, categories, slides), search and hot
// keywords, comic detail with chapters, the shelf update check and shelf
// synchronisation, the version checks and the push token.
class SiteCatalogueApi
{
public:
    explicit SiteCatalogueApi(SiteContext &context) : m_ctx(context) {}
    void registerRoutes(SiteRouter &router);

private:
    SiteHttpResponse list(const SiteHttpRequest &r);
    SiteHttpResponse search(const SiteHttpRequest &r);
    SiteHttpResponse hotKeywords(const SiteHttpRequest &r);
    SiteHttpResponse comic(const SiteHttpRequest &r);
    SiteHttpResponse checkUpdate(const SiteHttpRequest &r);
    SiteHttpResponse favourites(const SiteHttpRequest &r);
    SiteHttpResponse newVersion(const SiteHttpRequest &r);
    SiteHttpResponse oldVersion(const SiteHttpRequest &r);
    SiteHttpResponse pushToken(const SiteHttpRequest &r);

    QJsonObject listItem(const SiteCatalogue::Comic &comic, const SiteHttpRequest &r, bool searchForm = false);
    QJsonObject shelfItem(const SiteCatalogue::Comic &comic, qint64 userId, qint64 addTime, const SiteHttpRequest &r);

    SiteContext &m_ctx;
};
