#include "SiteHttpRequest.h"

#include <QUrl>

namespace {
// application/x-www-form-urlencoded: "+" is a space, then percent-decoding.
QString decodeFormComponent(QByteArray part)
{
    part.replace('+', ' ');
    return QString::fromUtf8(QByteArray::fromPercentEncoding(part));
}

void addPairs(const QByteArray &text, QHash<QString, QString> &out)
{
    const QList<QByteArray> pairs = text.split('&');
    for (const QByteArray &pair : pairs) {
        if (pair.isEmpty())
            continue;
        const int eq = pair.indexOf('=');
        const QString name = decodeFormComponent(eq < 0 ? pair : pair.left(eq));
        const QString value = eq < 0 ? QString() : decodeFormComponent(pair.mid(eq + 1));
        if (!name.isEmpty())
            out.insert(name, value);
    }
}
}

QByteArray SiteHttpRequest::header(const QByteArray &name) const
{
    for (const auto &h : headers) {
        if (h.first.compare(name, Qt::CaseInsensitive) == 0)
            return h.second;
    }
    return {};
}

QString SiteHttpRequest::cookie(const QByteArray &name) const
{
    for (const auto &h : headers) {
        if (h.first.compare("Cookie", Qt::CaseInsensitive) != 0)
            continue;
        for (QByteArray part : h.second.split(';')) {
            part = part.trimmed();
            const int eq = part.indexOf('=');
            if (eq > 0 && part.left(eq) == name)
                return QString::fromUtf8(part.mid(eq + 1));
        }
    }
    return {};
}

void SiteHttpRequest::parseParams()
{
    params.clear();
    addPairs(query, params);
    const QByteArray type = header("Content-Type").toLower();
    if (!body.isEmpty() && (type.isEmpty() || type.startsWith("application/x-www-form-urlencoded")))
        addPairs(body, params);
}
