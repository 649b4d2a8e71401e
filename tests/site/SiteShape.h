#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QTest>

// Checks an answer object against a list of "key:type" entries, types being
// s text, d identifier (decimal digits as text), i integer number,
// b "0"/"1"/"2"-style code text, o object, a array, u absolute URL under base,
// N number or null. Returns the first mismatch, or an empty string.
inline QString checkShape(const QJsonObject &o, const QString &shape, const QString &base = QString())
{
    for (const QString &entry : shape.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QString key = entry.section(QLatin1Char(':'), 0, 0);
        const QString type = entry.section(QLatin1Char(':'), 1);
        if (!o.contains(key))
            return QStringLiteral("missing \"%1\"").arg(key);
        const QJsonValue v = o.value(key);
        bool ok = false;
        if (type == QLatin1String("s"))
            ok = v.isString();
        else if (type == QLatin1String("d")) {
            const QString t = v.toString();
            ok = v.isString() && !t.isEmpty() && t.size() < 19;
            for (QChar c : t)
                ok = ok && c.isDigit();
        } else if (type == QLatin1String("i"))
            ok = v.isDouble() && v.toDouble() == double(qint64(v.toDouble()));
        else if (type == QLatin1String("N"))
            ok = v.isDouble() || v.isNull();
        else if (type == QLatin1String("b"))
            ok = v.isString() && v.toString().size() == 1 && v.toString().at(0).isDigit();
        else if (type == QLatin1String("o"))
            ok = v.isObject();
        else if (type == QLatin1String("a"))
            ok = v.isArray();
        else if (type == QLatin1String("u"))
            ok = v.isString() && v.toString().startsWith(base) && !base.isEmpty();
        if (!ok)
            return QStringLiteral("\"%1\" should be of type %2, is %3").arg(key, type, QString::fromUtf8(QJsonDocument(QJsonObject{{key, v}}).toJson(QJsonDocument::Compact)));
    }
    return {};
}

// Fails the running test with the first mismatch of checkShape().
#define QVERIFY_SHAPE(...) \
    do { \
        const QString shapeMismatch = checkShape(__VA_ARGS__); \
        QVERIFY2(shapeMismatch.isEmpty(), qPrintable(shapeMismatch)); \
    } while (false)
