#include "SiteTestClient.h"

#include <QDateTime>
#include <QEventLoop>
#include <QJsonDocument>
#include <QNetworkRequest>
#include <QTimer>

QByteArray SiteTestClient::Reply::header(const QByteArray &name) const
{
    for (const auto &h : headers) {
        if (h.first.compare(name, Qt::CaseInsensitive) == 0)
            return h.second;
    }
    return {};
}

QUrlQuery SiteTestClient::common() const
{
    QUrlQuery q;
    if (!m_key.isEmpty())
        q.addQueryItem(QStringLiteral("key"), m_key);
    q.addQueryItem(QStringLiteral("version"), QStringLiteral("3.5.0"));
    q.addQueryItem(QStringLiteral("android_id"), QStringLiteral("TEST-DEVICE"));
    q.addQueryItem(QStringLiteral("time"), QString::number(QDateTime::currentSecsSinceEpoch()));
    return q;
}

QUrl SiteTestClient::url(const QString &path, const QList<QPair<QString, QString>> &params) const
{
    QUrl u = m_base.resolved(QUrl(path));
    QUrlQuery q = common();
    for (const auto &p : params) {
        // Values travel fully percent-escaped, as the client's escaping does.
        q.addQueryItem(QString::fromLatin1(QUrl::toPercentEncoding(p.first)), QString::fromLatin1(QUrl::toPercentEncoding(p.second)));
    }
    u.setQuery(q.query(QUrl::FullyEncoded), QUrl::StrictMode);
    return u;
}

SiteTestClient::Reply SiteTestClient::run(QNetworkReply *reply)
{
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, reply, &QNetworkReply::abort);
    guard.start(60000);
    if (!reply->isFinished())
        loop.exec();
    Reply r;
    r.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    r.error = reply->error();
    r.body = reply->readAll();
    r.headers = reply->rawHeaderPairs();
    const QJsonDocument doc = QJsonDocument::fromJson(r.body);
    r.isObject = doc.isObject();
    r.json = doc.object();
    reply->deleteLater();
    return r;
}

SiteTestClient::Reply SiteTestClient::get(const QString &path, const QList<QPair<QString, QString>> &params)
{
    return run(m_nam.get(QNetworkRequest(url(path, params))));
}

SiteTestClient::Reply SiteTestClient::post(const QString &path, const QList<QPair<QString, QString>> &form)
{
    QNetworkRequest request(url(path));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/x-www-form-urlencoded"));
    QByteArray body;
    for (const auto &p : form) {
        if (!body.isEmpty())
            body += '&';
        body += QUrl::toPercentEncoding(p.first) + '=' + QUrl::toPercentEncoding(p.second);
    }
    return run(m_nam.post(request, body));
}

SiteTestClient::Reply SiteTestClient::getRaw(const QUrl &u, const QList<QPair<QByteArray, QByteArray>> &headers)
{
    QNetworkRequest request(u);
    for (const auto &h : headers)
        request.setRawHeader(h.first, h.second);
    return run(m_nam.get(request));
}

QJsonObject SiteTestClient::signIn(const QString &username, const QString &password)
{
    const QString keep = m_key;
    m_key.clear();
    const Reply r = get(QStringLiteral("ios/pad/login.php"), {{"username", username}, {"password", password}});
    if (r.json.value(QStringLiteral("code")).toInt() != 1) {
        m_key = keep;
        return {};
    }
    m_key = r.json.value(QStringLiteral("key")).toString();
    return r.json.value(QStringLiteral("user")).toObject();
}
