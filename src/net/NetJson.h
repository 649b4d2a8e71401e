#pragma once

// Tolerant readers of answer values, private to the web service layer until the
// shared ones of VORAUtility are in place.

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <limits>

namespace NetJson {

// A string only when present, not null and not a number; else "".
inline QString string(const QJsonValue &v)
{
    return v.isString() ? v.toString() : QString();
}

// An integer from a number, a boolean or the leading digits of a text; else 0.
inline qint64 integer(const QJsonValue &v)
{
    if (v.isDouble()) {
        const double d = v.toDouble();
        if (d >= 9.2e18) return std::numeric_limits<qint64>::max();
        if (d <= -9.2e18) return std::numeric_limits<qint64>::min();
        return static_cast<qint64>(d);
    }
    if (v.isBool()) return v.toBool() ? 1 : 0;
    if (v.isString()) {
        const QString s = v.toString().trimmed();
        qsizetype end = 0;
        if (end < s.size() && (s[end] == u'-' || s[end] == u'+')) ++end;
        while (end < s.size() && s[end].isDigit() && s[end].unicode() < 128) ++end;
        bool ok = false;
        const qint64 n = s.left(end).toLongLong(&ok);
        return ok ? n : 0;
    }
    return 0;
}

inline qint32 integer32(const QJsonValue &v) { return static_cast<qint32>(integer(v)); }

inline QJsonObject object(const QJsonValue &v) { return v.toObject(); }
inline QJsonArray array(const QJsonValue &v) { return v.toArray(); }

inline QDateTime seconds(const QJsonValue &v)
{
    return QDateTime::fromSecsSinceEpoch(integer(v), Qt::UTC);
}

} // namespace NetJson
