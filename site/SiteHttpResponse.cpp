#include "SiteHttpResponse.h"

#include <QJsonDocument>

SiteHttpResponse SiteHttpResponse::json(const QJsonObject &object, int status)
{
    SiteHttpResponse r;
    r.status = status;
    r.body = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return r;
}

SiteHttpResponse SiteHttpResponse::bytes(const QByteArray &body, const QByteArray &contentType, int status)
{
    SiteHttpResponse r;
    r.status = status;
    r.body = body;
    r.contentType = contentType;
    return r;
}

QByteArray SiteHttpResponse::reasonPhrase(int status)
{
    switch (status) {
    case 200: return "OK";
    case 302: return "Found";
    case 400: return "Bad Request";
    case 401: return "Unauthorized";
    case 403: return "Forbidden";
    case 404: return "Not Found";
    case 405: return "Method Not Allowed";
    case 408: return "Request Timeout";
    case 413: return "Payload Too Large";
    case 429: return "Too Many Requests";
    case 431: return "Request Header Fields Too Large";
    case 500: return "Internal Server Error";
    case 501: return "Not Implemented";
    case 502: return "Bad Gateway";
    case 503: return "Service Unavailable";
    case 504: return "Gateway Timeout";
    default: return status < 400 ? "OK" : "Error";
    }
}
