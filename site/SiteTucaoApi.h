#pragma once

#include "SiteContext.h"
#include "SiteRouter.h"

// Page comments: fetch by page with id paging, add, move or resize, delete
// (only the author may change or delete a tucao).
class SiteTucaoApi
{
public:
    static constexpr int kMaxContent = 140;

    explicit SiteTucaoApi(SiteContext &context) : m_ctx(context) {}
    void registerRoutes(SiteRouter &router);

private:
    SiteHttpResponse list(const SiteHttpRequest &r);
    SiteHttpResponse add(const SiteHttpRequest &r);
    SiteHttpResponse edit(const SiteHttpRequest &r);
    SiteHttpResponse remove(const SiteHttpRequest &r);
    // Reads the rectangle of a request against the page size; empty on success.
    static QString readRect(const SiteHttpRequest &r, const char *wName, const char *hName, int pageWidth,
                            int pageHeight, int out[4]);

    SiteContext &m_ctx;
};
