#include "SiteAccountApi.h"

#include "SiteLog.h"

#include <QCryptographicHash>
#include <QRandomGenerator>
#include <QRegularExpression>

void SiteAccountApi::registerRoutes(SiteRouter &router)
{
    router.add(QStringLiteral("v3/app/ios/pad/member/autologin"), [this](const SiteHttpRequest &r) { return autoLogin(r); });
    router.add(QStringLiteral("ios/pad/login.php"), [this](const SiteHttpRequest &r) { return login(r); });
    router.add(QStringLiteral("v3/app/ios/pad/member/getmessage"), [this](const SiteHttpRequest &r) { return verifyCode(r); });
    router.add(QStringLiteral("v3/app/ios/pad/member/mobilereg"),
               [this](const SiteHttpRequest &r) { return registerUser(r, true); });
    router.add(QStringLiteral("v3/app/ios/pad/member/reg"), [this](const SiteHttpRequest &r) { return registerUser(r, false); });
    router.add(QStringLiteral("v3/app/ios/pad/member/openLogin"), [this](const SiteHttpRequest &r) { return openLogin(r); });
    router.add(QStringLiteral("ios/pad/login_qq.php"), [this](const SiteHttpRequest &r) { return qqLogin(r); });
    router.add(QStringLiteral("v3/app/ios/pad/member/hrwlogin"), [this](const SiteHttpRequest &r) { return passportLogin(r); });
    router.add(QStringLiteral("demo/partner/authorize"), [this](const SiteHttpRequest &r) { return partnerAuthorize(r); });
    router.add(QStringLiteral("v3/app/ios/pad/member/resetpwd"), [this](const SiteHttpRequest &r) { return resetPassword(r); });
}

QJsonObject SiteAccountApi::signInPayload(qint64 userId, const SiteHttpRequest &r)
{
    const auto user = m_ctx.user(userId);
    return QJsonObject{{"key", m_ctx.issueKey(userId)}, {"user", m_ctx.userJson(*user, r)}};
}

SiteHttpResponse SiteAccountApi::autoLogin(const SiteHttpRequest &r)
{
    const QString key = r.param(QStringLiteral("key"));
    if (key.isEmpty())
        return SiteContext::v3Refusal(QStringLiteral("缺少参数 key"));
    const auto user = m_ctx.userByKey(key);
    if (!user)
        return SiteContext::v3Refusal(QStringLiteral("登录已失效，请重新登录"));
    return SiteContext::v3(QJsonObject{{"key", key}, {"user", m_ctx.userJson(*user, r)}}, QStringLiteral("自动登录成功"));
}

SiteHttpResponse SiteAccountApi::login(const SiteHttpRequest &r)
{
    const QString username = r.param(QStringLiteral("username"));
    const QString password = r.param(QStringLiteral("password"));
    if (username.isEmpty() || password.isEmpty())
        return SiteContext::phpRefusal(QStringLiteral("请输入用户名和密码"));
    // The name, or the mobile an account registered with.
    auto rows = m_ctx.db.select("SELECT user_id, password FROM users WHERE username=?", {username});
    if (rows.isEmpty())
        rows = m_ctx.db.select("SELECT user_id, password FROM users WHERE mobile=?", {username});
    if (rows.isEmpty() || rows.first().at(1).isNull() || rows.first().at(1).toString() != password)
        return SiteContext::phpRefusal(QStringLiteral("用户名或密码错误"));
    return SiteContext::php(signInPayload(rows.first().at(0).toLongLong(), r), 1, QStringLiteral("登录成功"));
}

SiteHttpResponse SiteAccountApi::verifyCode(const SiteHttpRequest &r)
{
    static const QRegularExpression mobileRe(QStringLiteral("^1[0-9]{10}$"));
    const QString mobile = r.param(QStringLiteral("mobile"));
    if (!mobileRe.match(mobile).hasMatch())
        return SiteContext::v3Refusal(QStringLiteral("请输入正确的手机号码"));
    // "type=resetpwd" asks a code for a registered mobile (the password reset);
    // otherwise the code is for a registration.
    const bool registered = m_ctx.db.value("SELECT 1 FROM users WHERE mobile=?", {mobile}).isValid();
    const bool forReset = r.param(QStringLiteral("type")) == QLatin1String("resetpwd");
    if (registered && !forReset)
        return SiteContext::v3Refusal(QStringLiteral("该手机号码已经注册"));
    if (!registered && forReset)
        return SiteContext::v3Refusal(QStringLiteral("该手机号码尚未注册"));
    const QString code = QStringLiteral("%1").arg(QRandomGenerator::global()->bounded(1000000), 6, 10, QLatin1Char('0'));
    m_ctx.db.run("INSERT OR REPLACE INTO codes(mobile, code, time) VALUES(?,?,?)", {mobile, code, SiteContext::now()});
    // The demo has no text-message gateway: the code goes to the site's log.
    qCInfo(lcSite).noquote() << "verification code for" << mobile << "is" << code;
    return SiteContext::v3(QJsonValue(), QStringLiteral("验证码已发送，请注意查收"));
}

SiteHttpResponse SiteAccountApi::registerUser(const SiteHttpRequest &r, bool byMobile)
{
    static const QRegularExpression nameRe(QStringLiteral("^[\\w\\x{4e00}-\\x{9fa5}]{3,20}$"));
    const QString mobile = r.param(QStringLiteral("mobile"));
    QString username = r.param(QStringLiteral("username"));
    const QString password = r.param(QStringLiteral("password"));
    if (password.size() < 6 || password.size() > 32)
        return SiteContext::v3Refusal(QStringLiteral("密码长度应为6到32位"));
    if (byMobile) {
        const QString code = r.param(QStringLiteral("code"));
        if (mobile.isEmpty() || code.isEmpty())
            return SiteContext::v3Refusal(QStringLiteral("请输入手机号码和验证码"));
        if (!codeMatches(mobile, code))
            return SiteContext::v3Refusal(QStringLiteral("验证码错误或已过期"));
        if (username.isEmpty())
            username = QStringLiteral("手机用户%1").arg(mobile.right(4));
    }
    if (!nameRe.match(username).hasMatch())
        return SiteContext::v3Refusal(QStringLiteral("用户名应为3到20个字母、数字、下划线或汉字"));
    if (m_ctx.db.value("SELECT 1 FROM users WHERE username=?", {username}).isValid())
        return SiteContext::v3Refusal(QStringLiteral("该用户名已被注册"));
    if (!m_ctx.db.run("INSERT INTO users(username, password, nickname, group_user, level, coin, ticket, site, mobile,"
                      " created) VALUES(?,?,?,'0',1,0,1,'quorin',?,?)",
                      {username, password, username, byMobile ? QVariant(mobile) : QVariant(), SiteContext::now()}))
        return SiteContext::v3Refusal(QStringLiteral("注册失败，请稍后再试"));
    const qint64 id = m_ctx.db.lastInsertId();
    if (byMobile)
        m_ctx.db.run("DELETE FROM codes WHERE mobile=?", {mobile});
    return SiteContext::v3(signInPayload(id, r), QStringLiteral("注册成功"));
}

bool SiteAccountApi::codeMatches(const QString &mobile, const QString &code)
{
    const auto rows = m_ctx.db.select("SELECT code, time FROM codes WHERE mobile=?", {mobile});
    return !rows.isEmpty() && rows.first().at(0).toString() == code
        && SiteContext::now() - rows.first().at(1).toLongLong() <= 600;
}

qint64 SiteAccountApi::openAccount(const QString &site, const QString &openId, const QString &nickname)
{
    const QVariant existing = m_ctx.db.value("SELECT user_id FROM users WHERE open_site=? AND open_id=?", {site, openId});
    if (existing.isValid())
        return existing.toLongLong();
    const QString nick = nickname.isEmpty() ? QStringLiteral("%1用户").arg(site) : nickname.left(40);
    const QString username = QStringLiteral("%1_%2").arg(site.left(16), openId.left(40));
    if (!m_ctx.db.run("INSERT INTO users(username, password, nickname, group_user, level, coin, ticket, site, open_site,"
                      " open_id, created) VALUES(?,NULL,?,'0',1,0,1,?,?,?,?)",
                      {username, nick, site, site, openId, SiteContext::now()}))
        return 0;
    return m_ctx.db.lastInsertId();
}

SiteHttpResponse SiteAccountApi::openLogin(const SiteHttpRequest &r)
{
    const QString openId = r.param(QStringLiteral("open_id"));
    const QString token = r.param(QStringLiteral("access_token"));
    const QString site = r.param(QStringLiteral("site_mark"));
    if (openId.isEmpty() || token.isEmpty() || site.isEmpty())
        return SiteContext::v3Refusal(QStringLiteral("缺少参数 open_id、access_token 或 site_mark"));
    const qint64 id = openAccount(site, openId, r.param(QStringLiteral("open_name")));
    if (!id)
        return SiteContext::v3Refusal(QStringLiteral("登录失败，请稍后再试"));
    return SiteContext::v3(signInPayload(id, r), QStringLiteral("登录成功"));
}

SiteHttpResponse SiteAccountApi::qqLogin(const SiteHttpRequest &r)
{
    const QString openId = r.param(QStringLiteral("open_id"));
    const QString token = r.param(QStringLiteral("access_token"));
    if (openId.isEmpty() || token.isEmpty())
        return SiteContext::phpRefusal(QStringLiteral("缺少参数 open_id 或 access_token"));
    const qint64 id = openAccount(QStringLiteral("qq"), openId, r.param(QStringLiteral("nickname")));
    if (!id)
        return SiteContext::phpRefusal(QStringLiteral("登录失败，请稍后再试"));
    return SiteContext::php(signInPayload(id, r), 1, QStringLiteral("登录成功"));
}

SiteHttpResponse SiteAccountApi::passportLogin(const SiteHttpRequest &r)
{
    const QString session = r.param(QStringLiteral("session_id"));
    if (session.isEmpty())
        return SiteContext::v3Refusal(QStringLiteral("缺少参数 session_id"));
    // A session the demo partner issued names its account; any other session
    // id stands for an account of its own.
    const auto issued = m_ctx.db.select("SELECT open_id, nickname FROM partner_sessions WHERE session_id=?", {session});
    const qint64 id = issued.isEmpty()
        ? openAccount(QStringLiteral("harrow"), session, QString())
        : openAccount(QStringLiteral("harrow"), issued.first().at(0).toString(), issued.first().at(1).toString());
    if (!id)
        return SiteContext::v3Refusal(QStringLiteral("登录失败，请稍后再试"));
    return SiteContext::v3(signInPayload(id, r), QStringLiteral("登录成功"));
}

SiteHttpResponse SiteAccountApi::partnerAuthorize(const SiteHttpRequest &r)
{
    static const QRegularExpression partnerRe(QStringLiteral("^[a-z0-9_]{1,16}$"));
    const QString partner = r.param(QStringLiteral("partner"));
    const QString account = r.param(QStringLiteral("account")).trimmed();
    if (!partnerRe.match(partner).hasMatch() || account.isEmpty() || account.size() > 40)
        return SiteContext::phpRefusal(QStringLiteral("合作方授权失败"));
    // The same demo account of a partner always has the same open id, so that it
    // signs in to the same site account; tokens and sessions are new each time.
    const QByteArray digest = QCryptographicHash::hash((partner + QLatin1Char('/') + account).toUtf8(),
                                                       QCryptographicHash::Sha1);
    const QString openId = QStringLiteral("demo%1").arg(QString::fromLatin1(digest.toHex().left(24)));
    const auto token = []() {
        return QStringLiteral("%1%2").arg(QRandomGenerator::global()->generate64(), 16, 16, QLatin1Char('0'))
            .arg(QRandomGenerator::global()->generate64(), 16, 16, QLatin1Char('0'));
    };
    const QString session = token();
    m_ctx.db.run("INSERT OR REPLACE INTO partner_sessions(session_id, open_id, nickname, created) VALUES(?,?,?,?)",
                 {session, openId, account, SiteContext::now()});
    return SiteContext::php(QJsonObject{{"open_id", openId}, {"access_token", token()}, {"nickname", account},
                                        {"session_id", session}},
                            1, QStringLiteral("授权成功"));
}

SiteHttpResponse SiteAccountApi::resetPassword(const SiteHttpRequest &r)
{
    const QString mobile = r.param(QStringLiteral("mobile"));
    const QString code = r.param(QStringLiteral("code"));
    const QString password = r.param(QStringLiteral("password"));
    if (mobile.isEmpty() || code.isEmpty())
        return SiteContext::v3Refusal(QStringLiteral("请输入手机号码和验证码"));
    if (password.size() < 6 || password.size() > 32)
        return SiteContext::v3Refusal(QStringLiteral("密码长度应为6到32位"));
    if (!codeMatches(mobile, code))
        return SiteContext::v3Refusal(QStringLiteral("验证码错误或已过期"));
    if (!m_ctx.db.run("UPDATE users SET password=? WHERE mobile=?", {password, mobile}))
        return SiteContext::v3Refusal(QStringLiteral("密码重置失败，请稍后再试"));
    m_ctx.db.run("DELETE FROM codes WHERE mobile=?", {mobile});
    return SiteContext::v3(QJsonValue(), QStringLiteral("密码已重置"));
}
