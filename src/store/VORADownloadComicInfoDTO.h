#pragma once

#include <QMetaType>
#include <QString>

// A plain copy of one `DownloadComic` record.
struct VORADownloadComicInfoDTO
{
    QString comicId;
    QString comicName;
    QString coverUrl;
    QString authorName;
    QString theme;
    qint32 comicSerial = 0;
    qint64 downloadChapterCount = 0;
    qint64 downloadPageCount = 0;
    qint64 downloadPageSize = 0;
    qint64 downloadingChapterCount = 0;
    qint64 downloadingPageCount = 0;
    qint64 downloadingPageSize = 0;
    qint64 downloadingCompletePageCount = 0;
    qint64 downloadingCompleteTucaoCount = 0;

    bool operator==(const VORADownloadComicInfoDTO &) const = default;
};

Q_DECLARE_METATYPE(VORADownloadComicInfoDTO)
