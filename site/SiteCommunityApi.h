#pragma once

#include "SiteContext.h"
#include "SiteRouter.h"

// Comments with replies, ratings and monthly tickets.
class SiteCommunityApi
{
public:
    static constexpr int kCommentPageSize = 20;
    static constexpr int kReplyPageSize = 30;
    static constexpr int kMaxCommentLength = 500;

    explicit SiteCommunityApi(SiteContext &context) : m_ctx(context) {}
    void registerRoutes(SiteRouter &router);

private:
    SiteHttpResponse commentList(const SiteHttpRequest &r);
    SiteHttpResponse replyList(const SiteHttpRequest &r);
    SiteHttpResponse addComment(const SiteHttpRequest &r);
    SiteHttpResponse addReply(const SiteHttpRequest &r);
    SiteHttpResponse grade(const SiteHttpRequest &r);
    SiteHttpResponse ticket(const SiteHttpRequest &r);

    QJsonObject commentJson(const SiteDatabase::Row &row, const SiteHttpRequest &r);
    const SiteCatalogue::Comic *threadComic(const SiteHttpRequest &r, QString *refusal);

    SiteContext &m_ctx;
};
