#pragma once

#include <QDateTime>
#include <QString>

// The tucao record the reader builds for adding and editing; the rectangle is
// first in view points, then converted to image pixels.
struct VORATucaoDTO
{
    QString tucaoId;
    QString content;
    QDateTime updateTime;
    QString userId;
    qint64 x = 0;
    qint64 y = 0;
    qint64 width = 0;
    qint64 height = 0;

    bool operator==(const VORATucaoDTO &) const = default;
};
