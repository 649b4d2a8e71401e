#pragma once

#include <QByteArray>

class SiteGzip
{
public:
    // A complete gzip member (RFC 1952) holding data; empty on failure.
    static QByteArray compress(const QByteArray &data);
    // Whether an Accept-Encoding header value admits gzip.
    static bool accepted(const QByteArray &acceptEncoding);
};
