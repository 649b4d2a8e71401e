// Loading a shelf of 500 comics and saving 1,000 reading-position updates
// through the store, next to the same work done by the sqlite3 command-line
// tool on a copy of the same file. Prints one JSON line.

#include "store/VORADatabaseManager.h"
#include "store/VORAPersistenceManager.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>

namespace {

constexpr int kShelf = 500;
constexpr int kLoads = 20;
constexpr int kUpdates = 1000;

double runSqlite(const QString &program, const QString &file, const QByteArray &script, bool *ok)
{
    QProcess process;
    QElapsedTimer timer;
    timer.start();
    process.start(program, {file});
    process.write(script);
    process.closeWriteChannel();
    *ok = process.waitForFinished(300000) && process.exitCode() == 0;
    const double ms = double(timer.nsecsElapsed()) / 1e6;
    if (!*ok)
        std::fprintf(stderr, "sqlite3 failed: %s\n", process.readAllStandardError().constData());
    return ms;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir home;
    qputenv("QUORIN_HOME", home.path().toUtf8());

    QList<VORABookShelf> shelf;
    for (int i = 0; i < kShelf; ++i) {
        VORABookShelf e;
        e.comicId = QString::number(10000 + i);
        e.comicName = QStringLiteral("漫画第%1部").arg(i);
        e.coverUrl = QStringLiteral("http://img.example/cover/%1.jpg").arg(i);
        e.nameFirstletter = QString(QLatin1Char('A' + i % 26));
        e.latestUpdateChapterId = QString::number(500000 + i);
        e.latestUpdateChapterName = QStringLiteral("第%1话").arg(i);
        e.updateTime = QDateTime::fromSecsSinceEpoch(1'600'000'000 + i * 3600, Qt::UTC);
        e.adddateTime = e.updateTime;
        shelf.append(e);
    }
    VORAComicInfoDTO comic;
    comic.comicId = QStringLiteral("10000");
    VORAChapterInfoDTO chapter;
    chapter.chapterId = QStringLiteral("500000");
    VORAPageInfoDTO page;
    {
        VORADatabaseManager db;
        db.addBookshelfWithBookshelfList(shelf);
        db.addReadHistoryWithComic(comic, chapter, page);
    }

    // Ours: a fresh instance (connection) and a full fetch, kLoads times.
    QElapsedTimer timer;
    timer.start();
    qsizetype loaded = 0;
    for (int i = 0; i < kLoads; ++i) {
        VORADatabaseManager db;
        loaded += db.getAllBookshelf().size();
    }
    const double loadMs = double(timer.nsecsElapsed()) / 1e6 / kLoads;

    // Ours: 1,000 page turns, each one committed transaction.
    VORADatabaseManager db;
    const ReadHistoryPtr position = db.getReadHistoryWithComic(comic.comicId);
    timer.restart();
    for (int i = 0; i < kUpdates; ++i) {
        page.pageId = QString::number(9000000 + i);
        page.index = i;
        db.updateReadHistory(position, chapter, page);
    }
    const double saveMs = double(timer.nsecsElapsed()) / 1e6;

    // The peer: the sqlite3 tool on a copy of the same file.
    const QString sqlite3 = QStandardPaths::findExecutable(QStringLiteral("sqlite3"));
    const QString copy = home.filePath(QStringLiteral("peer.sqlite"));
    {
        VORADatabaseManager checkpoint; // keep the WAL small before copying
    }
    QFile::copy(VORAPersistenceManager::dbFile(), copy);
    if (QFile::exists(VORAPersistenceManager::dbFile() + "-wal"))
        QFile::copy(VORAPersistenceManager::dbFile() + "-wal", copy + "-wal");
    QByteArray loadScript = "PRAGMA journal_mode=WAL;\n.output /dev/null\n";
    for (int i = 0; i < kLoads; ++i)
        loadScript += "SELECT id, comicId, comicName, coverUrl, nameFirstLetter, isHasUpdate, isNotRead, updateTime, "
                      "adddateTime, latestUpdateChapterId, latestUpdateChapterName, latestReadChapterId, "
                      "latestReadChapterName FROM Bookshelf ORDER BY updateTime DESC, id DESC;\n";
    QByteArray saveScript = "PRAGMA journal_mode=WAL;\nPRAGMA synchronous=NORMAL;\n.output /dev/null\n";
    for (int i = 0; i < kUpdates; ++i)
        saveScript += QStringLiteral("UPDATE ReadHistory SET chapterId = '500000', pageId = '%1' WHERE id = 1;\n")
                          .arg(9000000 + i)
                          .toUtf8();
    bool loadOk = false;
    bool saveOk = false;
    double peerLoadMs = 0;
    double peerSaveMs = 0;
    if (!sqlite3.isEmpty()) {
        peerLoadMs = runSqlite(sqlite3, copy, loadScript, &loadOk) / kLoads;
        peerSaveMs = runSqlite(sqlite3, copy, saveScript, &saveOk);
    }

    QJsonObject out{
        {"bench", "store"},
        {"shelf_comics", kShelf},
        {"loaded_per_run", double(loaded) / kLoads},
        {"load_shelf_ms", loadMs},
        {"sqlite3_load_shelf_ms", loadOk ? QJsonValue(peerLoadMs) : QJsonValue()},
        {"load_ratio", loadOk && peerLoadMs > 0 ? QJsonValue(loadMs / peerLoadMs) : QJsonValue()},
        {"progress_updates", kUpdates},
        {"save_updates_ms", saveMs},
        {"sqlite3_save_updates_ms", saveOk ? QJsonValue(peerSaveMs) : QJsonValue()},
        {"save_ratio", saveOk && peerSaveMs > 0 ? QJsonValue(saveMs / peerSaveMs) : QJsonValue()},
        {"note", "sqlite3 figures include one process start per batch"},
    };
    std::printf("%s\n", QJsonDocument(out).toJson(QJsonDocument::Compact).constData());
    return loadOk && saveOk ? 0 : 1;
}
