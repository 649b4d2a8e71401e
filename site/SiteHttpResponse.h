#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QPair>

struct SiteHttpResponse
{
    int status = 200;
    QByteArray contentType = "application/json; charset=utf-8";
    QByteArray body;
    QList<QPair<QByteArray, QByteArray>> headers;

    static SiteHttpResponse json(const QJsonObject &object, int status = 200);
    static SiteHttpResponse bytes(const QByteArray &body, const QByteArray &contentType, int status = 200);
    static QByteArray reasonPhrase(int status);
};
