#pragma once

#include <QJsonValue>
#include <QString>

// Wire codes of the listing filters and decoders of listing fields. A value
// outside a table gives the empty string.
class VORAQ42IpadWebServiceUtility
{
public:
    VORAQ42IpadWebServiceUtility() = delete;

    static QString parameterWithComicTheme(qint64 theme); // 1,2,4,...,256 -> "1".."11"; 512 -> "12"; 513 -> "8"
    static QString parameterWithComicType(qint64 type);   // 1,2,4,8 -> "1".."4"
    static QString parameterWithComicSerial(qint64 serial); // 0 -> "0", 1 -> "1"
    static QString parameterWithComicSort(qint64 sort);   // 0..7 -> "0","1","20","4","5","7","9","23"

    static int comicSerialWithString(const QJsonValue &value);   // "0" -> 0, "1" -> 1, else 0
    static int comicAccreditWithString(const QJsonValue &value); // "0","1","2" -> 0,1,2, else 0
    static int SlideTypeWithString(const QJsonValue &value);     // "0" -> 0, anything else 1

    // "click_total" as plain digits (numbers rounded to whole, no grouping);
    // a missing, null or non-numeric value gives no text.
    static QString formatClickTotal(const QJsonValue &value);
};
