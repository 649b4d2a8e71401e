#pragma once

#include "SiteContext.h"
#include "SiteRouter.h"

// Sign-in, automatic sign-in, registration with a text-message code, partner,
// QQ and passport sign-ins. Two demo-only routes stand in for what the site
// and the partners would give elsewhere: "demo/partner/authorize" plays the
// partners' sign-in kits, "v3/app/ios/pad/member/resetpwd" resets a password
// with a text-message code.
class SiteAccountApi
{
public:
    explicit SiteAccountApi(SiteContext &context) : m_ctx(context) {}
    void registerRoutes(SiteRouter &router);

private:
    SiteHttpResponse autoLogin(const SiteHttpRequest &r);
    SiteHttpResponse login(const SiteHttpRequest &r);
    SiteHttpResponse verifyCode(const SiteHttpRequest &r);
    SiteHttpResponse registerUser(const SiteHttpRequest &r, bool byMobile);
    SiteHttpResponse openLogin(const SiteHttpRequest &r);
    SiteHttpResponse qqLogin(const SiteHttpRequest &r);
    SiteHttpResponse passportLogin(const SiteHttpRequest &r);
    SiteHttpResponse partnerAuthorize(const SiteHttpRequest &r);
    SiteHttpResponse resetPassword(const SiteHttpRequest &r);
    // Whether the code sent to the mobile matches and is at most 10 minutes old.
    bool codeMatches(const QString &mobile, const QString &code);
    // Finds or creates the account of a partner identity; 0 on failure.
    qint64 openAccount(const QString &site, const QString &openId, const QString &nickname);
    QJsonObject signInPayload(qint64 userId, const SiteHttpRequest &r);

    SiteContext &m_ctx;
};
