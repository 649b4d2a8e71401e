#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPair>
#include <QUrl>
#include <QUrlQuery>

// Plain HTTP against the reference site for the site's tests: one request at a
// time, waited for on a local event loop (the site answers from its own thread).
class SiteTestClient
{
public:
    struct Reply
    {
        int status = 0;
        QNetworkReply::NetworkError error = QNetworkReply::NoError;
        QByteArray body;
        QList<QPair<QByteArray, QByteArray>> headers;
        QJsonObject json;      // the body when it is a JSON object
        bool isObject = false;
        QByteArray header(const QByteArray &name) const;
    };

    explicit SiteTestClient(const QUrl &base) : m_base(base) {}

    void setKey(const QString &key) { m_key = key; }
    QString key() const { return m_key; }
    QNetworkAccessManager &manager() { return m_nam; }

    // The common parameters the client always sends, plus "key" when set.
    QUrlQuery common() const;
    Reply get(const QString &path, const QList<QPair<QString, QString>> &params = {});
    Reply post(const QString &path, const QList<QPair<QString, QString>> &form);
    Reply getRaw(const QUrl &url, const QList<QPair<QByteArray, QByteArray>> &headers = {});
    Reply run(QNetworkReply *reply);
    QUrl url(const QString &path, const QList<QPair<QString, QString>> &params = {}) const;

    // Signs in with a demo account and keeps the key; returns the "user" object.
    QJsonObject signIn(const QString &username, const QString &password);

    // Text as the client uploads it in a form field: UTF-8, then Base64.
    static QString b64(const QString &text) { return QString::fromLatin1(text.toUtf8().toBase64()); }
    // The "data" object of a "v3/app/" answer.
    static QJsonObject v3Data(const Reply &reply) { return reply.json.value(QStringLiteral("data")).toObject(); }

private:
    QUrl m_base;
    QString m_key;
    QNetworkAccessManager m_nam;
};
