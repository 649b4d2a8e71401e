#pragma once

#include "net/VORAHttpBaseWebService.h"

#include <QString>

// The partners' sign-in kits (QQ, the microblog, the passport...) are not
// available on this platform. The reference site plays the partner instead:
// "demo/partner/authorize" with "partner" (e.g. "qq", "weibo", "harrow") and
// "account" (any demo account name at that partner) answers what a kit hands
// back after the user agreed: the partner's open id and access token, the
// display name, and a passport session id. The same account always has the
// same open id. A demo-only stand-in (docs/accounts.md).
class VORAPartnerKit : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // Request
    QString partner;
    QString account;

    // Answer (older interface: top-level keys)
    qint64 code = 0; // 1 = authorised
    QString message;
    QString openId;
    QString accessToken;
    QString nickname;
    QString sessionId;
};
