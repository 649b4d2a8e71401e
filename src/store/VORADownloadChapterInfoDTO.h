#pragma once

#include <QMetaType>
#include <QString>

// A plain copy of one `DownloadChapter` record. `pageCompleteIds` and
// `tucaoCompleteIds` are page identifiers joined by "," in the order the files
// finished; a new chapter has the empty text.
struct VORADownloadChapterInfoDTO
{
    QString chapterId;
    QString chapterName;
    QString comicId;
    qint64 chapterIndex = 0;
    qint64 imageCount = 0;
    qint64 imageSize = 0;
    QString pageCompleteIds;
    QString tucaoCompleteIds;
    bool isFinishDownload = false;

    bool operator==(const VORADownloadChapterInfoDTO &) const = default;

    // 0 for the empty text, else the number of ","-separated items.
    qint64 pageCompleteCount() const;
    qint64 tucaoCompleteCount() const;
    // (pages + comment files on disk) × 100 ÷ (imageCount × 2), integer
    // division; 0 when imageCount is 0. 100 means complete.
    qint64 downloadPercent() const;
    // Orders by chapterIndex, ascending: -1, 0 or 1.
    static int downloadChapterIndexCompare(const VORADownloadChapterInfoDTO &a,
                                           const VORADownloadChapterInfoDTO &b);
};

Q_DECLARE_METATYPE(VORADownloadChapterInfoDTO)
