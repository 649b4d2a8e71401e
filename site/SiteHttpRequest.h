#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QPair>
#include <QString>

// One parsed HTTP request, with the query and the form body merged into params
// (form fields win over query fields of the same name).
struct SiteHttpRequest
{
    QByteArray method;
    QString path; // percent-decoded, without the leading "/"
    QByteArray query;
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;
    QHash<QString, QString> params;

    QByteArray header(const QByteArray &name) const;
    bool has(const QString &name) const { return params.contains(name); }
    QString param(const QString &name) const { return params.value(name); }
    QString cookie(const QByteArray &name) const;

    // Fills params from the query and, for form posts, from the body.
    void parseParams();
};
