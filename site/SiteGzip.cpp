#include "SiteGzip.h"

#include <QList>

#include <zlib.h>

QByteArray SiteGzip::compress(const QByteArray &data)
{
    z_stream zs{};
    if (deflateInit2(&zs, 6, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        return {};
    QByteArray out;
    out.resize(int(deflateBound(&zs, uLong(data.size()))) + 32);
    zs.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data.constData()));
    zs.avail_in = uInt(data.size());
    zs.next_out = reinterpret_cast<Bytef *>(out.data());
    zs.avail_out = uInt(out.size());
    const int rc = deflate(&zs, Z_FINISH);
    const qsizetype written = qsizetype(zs.total_out);
    deflateEnd(&zs);
    if (rc != Z_STREAM_END)
        return {};
    out.truncate(written);
    return out;
}

bool SiteGzip::accepted(const QByteArray &acceptEncoding)
{
    for (QByteArray part : acceptEncoding.toLower().split(',')) {
        part = part.trimmed();
        const QList<QByteArray> bits = part.split(';');
        const QByteArray coding = bits.value(0).trimmed();
        if (coding != "gzip" && coding != "*")
            continue;
        bool refused = false;
        for (int i = 1; i < bits.size(); ++i) {
            const QByteArray p = bits.at(i).trimmed();
            if (p.startsWith("q=")) {
                bool ok = false;
                const double q = p.mid(2).toDouble(&ok);
                refused = ok && q <= 0.0;
            }
        }
        if (!refused)
            return true;
    }
    return false;
}
