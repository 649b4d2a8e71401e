// Saves one download chapter per iteration and prints the count after each
// committed save, until killed. Used by tst_storecrash.

#include "store/VORADatabaseManager.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    VORADatabaseManager db;
    for (int i = 1;; ++i) {
        VORADownloadChapterInfoDTO chapter;
        chapter.chapterId = QString::number(i);
        chapter.comicId = QStringLiteral("crash");
        chapter.chapterIndex = i;
        chapter.imageCount = i;
        db.addDownlaodChapter(chapter);
        std::printf("%d\n", i);
        std::fflush(stdout);
    }
}
