#include "net/VORAQ42IpadWebServiceUtility.h"

#include <cmath>

QString VORAQ42IpadWebServiceUtility::parameterWithComicTheme(qint64 theme)
{
    switch (theme) {
    case 1: return QStringLiteral("1");
    case 2: return QStringLiteral("2");
    case 4: return QStringLiteral("3");
    case 8: return QStringLiteral("4");
    case 16: return QStringLiteral("5");
    case 32: return QStringLiteral("6");
    case 64: return QStringLiteral("7");
    case 128: return QStringLiteral("9");
    case 256: return QStringLiteral("11");
    case 512: return QStringLiteral("12");
    case 513: return QStringLiteral("8");
    default: return QString();
    }
}

QString VORAQ42IpadWebServiceUtility::parameterWithComicType(qint64 type)
{
    switch (type) {
    case 1: return QStringLiteral("1");
    case 2: return QStringLiteral("2");
    case 4: return QStringLiteral("3");
    case 8: return QStringLiteral("4");
    default: return QString();
    }
}

QString VORAQ42IpadWebServiceUtility::parameterWithComicSerial(qint64 serial)
{
    switch (serial) {
    case 0: return QStringLiteral("0");
    case 1: return QStringLiteral("1");
    default: return QString();
    }
}

QString VORAQ42IpadWebServiceUtility::parameterWithComicSort(qint64 sort)
{
    switch (sort) {
    case 0: return QStringLiteral("0");
    case 1: return QStringLiteral("1");
    case 2: return QStringLiteral("20");
    case 3: return QStringLiteral("4");
    case 4: return QStringLiteral("5");
    case 5: return QStringLiteral("7");
    case 6: return QStringLiteral("9");
    case 7: return QStringLiteral("23");
    default: return QString();
    }
}

int VORAQ42IpadWebServiceUtility::comicSerialWithString(const QJsonValue &value)
{
    return value.isString() && value.toString() == QLatin1String("1") ? 1 : 0;
}

int VORAQ42IpadWebServiceUtility::comicAccreditWithString(const QJsonValue &value)
{
    if (!value.isString())
        return 0;
    const QString s = value.toString();
    if (s == QLatin1String("1"))
        return 1;
    if (s == QLatin1String("2"))
        return 2;
    return 0;
}

int VORAQ42IpadWebServiceUtility::SlideTypeWithString(const QJsonValue &value)
{
    return value.isString() && value.toString() == QLatin1String("0") ? 0 : 1;
}

QString VORAQ42IpadWebServiceUtility::formatClickTotal(const QJsonValue &value)
{
    double number = 0;
    if (value.isDouble()) {
        number = value.toDouble();
    } else if (value.isString()) {
        bool ok = false;
        number = value.toString().trimmed().toDouble(&ok);
        if (!ok)
            return QString();
    } else {
        return QString();
    }
    if (!std::isfinite(number))
        return QString();
    return QString::number(std::nearbyint(number), 'f', 0);
}
