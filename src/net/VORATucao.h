#pragma once

#include <QCborMap>
#include <QDateTime>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>

// A tucao as fetched: a comment pinned on a rectangle of a page image, in
// pixels of the image (origin top left, y downwards).
struct VORATucao
{
    QString tucaoId;    // "tucao_id"
    QString content;    // "content"
    QString userId;     // "user_id": the author
    QString nickName;   // "nickname"
    qint32 x = 0;       // "x"
    qint32 y = 0;       // "y"
    qint32 width = 0;   // "width"
    qint32 height = 0;  // "height"
    qint32 color = 0;   // "color"
    qint32 back = 0;    // "back"
    QDateTime updateTime; // "ceate_time" (sic), seconds since 1970 (UTC)

    bool operator==(const VORATucao &) const = default;

    static VORATucao fromJson(const QJsonObject &item);
    // The "list" of a fetch answer (an object); anything else gives no tucao.
    static QList<VORATucao> listFromJson(const QJsonValue &jsonTucao);

    // The form kept in a downloaded page's tucao file. Archive keys are the
    // field names ("tucaoId", "content", "userId", "nickName", "x", "y",
    // "width", "height", "color", "back", "updateTime").
    QCborMap toArchive() const;
    static VORATucao fromArchive(const QCborMap &map);
};
