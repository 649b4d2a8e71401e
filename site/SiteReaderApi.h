#pragma once

#include "SiteContext.h"
#include "SiteRouter.h"

// Reading: a chapter's page list (behind the purchase and seal rules), the
// read-page log, and the two chapter purchase services.
class SiteReaderApi
{
public:
    explicit SiteReaderApi(SiteContext &context) : m_ctx(context) {}
    void registerRoutes(SiteRouter &router);

private:
    SiteHttpResponse chapter(const SiteHttpRequest &r);
    SiteHttpResponse readLog(const SiteHttpRequest &r);
    SiteHttpResponse buyV3(const SiteHttpRequest &r);
    SiteHttpResponse buyPhp(const SiteHttpRequest &r);
    // Buys the listed chapters of a comic for the user; returns a refusal message,
    // or an empty string on success with the cost and the remaining coins.
    QString buy(const SiteContext::User &user, const QString &comicText, const QString &chapterText, int *cost,
                int *coinsLeft, QStringList *bought);

    SiteContext &m_ctx;
};
