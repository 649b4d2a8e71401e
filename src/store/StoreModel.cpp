#include "StoreModel.h"

#include "SqliteDatabase.h"
#include "SqliteTransaction.h"

#include <QStringList>

namespace {

using Type = StoreModel::AttributeType;

QList<StoreModel::Entity> makeEntities()
{
    return {
        {StoreEntityKind::Bookshelf, QStringLiteral("Bookshelf"),
         {{QStringLiteral("comicId"), Type::Text},
          {QStringLiteral("comicName"), Type::Text},
          {QStringLiteral("coverUrl"), Type::Text},
          {QStringLiteral("nameFirstLetter"), Type::Text},
          {QStringLiteral("isHasUpdate"), Type::Boolean},
          {QStringLiteral("isNotRead"), Type::Boolean},
          {QStringLiteral("updateTime"), Type::Date},
          {QStringLiteral("adddateTime"), Type::Date},
          {QStringLiteral("latestUpdateChapterId"), Type::Text},
          {QStringLiteral("latestUpdateChapterName"), Type::Text},
          {QStringLiteral("latestReadChapterId"), Type::Text},
          {QStringLiteral("latestReadChapterName"), Type::Text}}},
        {StoreEntityKind::Bookmark, QStringLiteral("Bookmark"),
         {{QStringLiteral("comicId"), Type::Text},
          {QStringLiteral("comicName"), Type::Text},
          {QStringLiteral("comicCover"), Type::Text},
          {QStringLiteral("chapterId"), Type::Text},
          {QStringLiteral("chapterName"), Type::Text},
          {QStringLiteral("chapterIndex"), Type::Integer},
          {QStringLiteral("pageId"), Type::Text},
          {QStringLiteral("pageIndex"), Type::Integer},
          {QStringLiteral("addBookmarkTime"), Type::Date}}},
        {StoreEntityKind::RecentReadInfo, QStringLiteral("RecentReadInfo"),
         {{QStringLiteral("comicId"), Type::Text},
          {QStringLiteral("comicName"), Type::Text},
          {QStringLiteral("coverUrl"), Type::Text},
          {QStringLiteral("chapterId"), Type::Text},
          {QStringLiteral("chapterName"), Type::Text},
          {QStringLiteral("chapterIndex"), Type::Integer},
          {QStringLiteral("pageId"), Type::Text},
          {QStringLiteral("pageIndex"), Type::Integer},
          {QStringLiteral("readTime"), Type::Date}}},
        {StoreEntityKind::ReadHistory, QStringLiteral("ReadHistory"),
         {{QStringLiteral("comicId"), Type::Text},
          {QStringLiteral("chapterId"), Type::Text},
          {QStringLiteral("pageId"), Type::Text}}},
        {StoreEntityKind::DownloadComic, QStringLiteral("DownloadComic"),
         {{QStringLiteral("comicId"), Type::Text},
          {QStringLiteral("comicName"), Type::Text},
          {QStringLiteral("coverUrl"), Type::Text},
          {QStringLiteral("authorName"), Type::Text},
          {QStringLiteral("theme"), Type::Text},
          {QStringLiteral("comicSerial"), Type::Integer},
          {QStringLiteral("createComicDate"), Type::Date},
          {QStringLiteral("downloadChapterCount"), Type::Integer},
          {QStringLiteral("downloadPageCount"), Type::Integer},
          {QStringLiteral("downloadPageSize"), Type::Integer},
          {QStringLiteral("downloadingChapterCount"), Type::Integer},
          {QStringLiteral("downloadingPageCount"), Type::Integer},
          {QStringLiteral("downloadingPageSize"), Type::Integer},
          {QStringLiteral("downloadingCompletePageCount"), Type::Integer},
          {QStringLiteral("downloadingCompleteTucaoCount"), Type::Integer}}},
        {StoreEntityKind::DownloadChapter, QStringLiteral("DownloadChapter"),
         {{QStringLiteral("chapterId"), Type::Text},
          {QStringLiteral("chapterName"), Type::Text},
          {QStringLiteral("comicId"), Type::Text},
          {QStringLiteral("chapterIndex"), Type::Integer},
          {QStringLiteral("imageCount"), Type::Integer},
          {QStringLiteral("imageSize"), Type::Integer},
          {QStringLiteral("pageCompleteIds"), Type::Text},
          {QStringLiteral("tucaoCompleteIds"), Type::Text},
          {QStringLiteral("isFinishDownload"), Type::Boolean}}},
    };
}

QString columnList(const StoreModel::Entity &entity)
{
    QStringList columns{QStringLiteral("id")};
    for (const auto &attribute : entity.attributes)
        columns << attribute.name;
    return columns.join(QStringLiteral(", "));
}

StoreModel::FetchTemplate makeTemplate(const QString &name, StoreEntityKind kind,
                                       const QString &matchAttribute, bool listVariable,
                                       const QString &orderAttribute, bool newestFirst)
{
    const auto &entity = StoreModel::entity(kind);
    QString sql = QStringLiteral("SELECT %1 FROM %2").arg(columnList(entity), entity.name);
    if (!matchAttribute.isEmpty()) {
        sql += listVariable
            ? QStringLiteral(" WHERE %1 IN (SELECT value FROM json_each(:ID_LIST))").arg(matchAttribute)
            : QStringLiteral(" WHERE %1 = :ID").arg(matchAttribute);
    }
    // Ties (records written within the same millisecond) keep insertion order.
    if (!orderAttribute.isEmpty())
        sql += newestFirst ? QStringLiteral(" ORDER BY %1 DESC, id DESC").arg(orderAttribute)
                           : QStringLiteral(" ORDER BY %1 ASC, id ASC").arg(orderAttribute);
    else
        sql += QStringLiteral(" ORDER BY id");
    return {name, kind, matchAttribute, listVariable, orderAttribute, newestFirst, sql};
}

QList<StoreModel::FetchTemplate> makeTemplates()
{
    using K = StoreEntityKind;
    const QString comicId = QStringLiteral("comicId");
    const QString chapterId = QStringLiteral("chapterId");
    return {
        makeTemplate(QStringLiteral("GetReadHistoryByComicId"), K::ReadHistory, comicId, false, {}, false),
        makeTemplate(QStringLiteral("GetAllBookshelf"), K::Bookshelf, {}, false, QStringLiteral("updateTime"), true),
        makeTemplate(QStringLiteral("GetBookshelfByComicId"), K::Bookshelf, comicId, true, {}, false),
        makeTemplate(QStringLiteral("GetBookmark"), K::Bookmark, {}, false, QStringLiteral("addBookmarkTime"), true),
        makeTemplate(QStringLiteral("GetBookmarkByComicId"), K::Bookmark, comicId, false, QStringLiteral("addBookmarkTime"), true),
        makeTemplate(QStringLiteral("GetRecentReadInfo"), K::RecentReadInfo, {}, false, QStringLiteral("readTime"), true),
        makeTemplate(QStringLiteral("getRecentReadInfoByComicId"), K::RecentReadInfo, comicId, false, {}, false),
        makeTemplate(QStringLiteral("GetDownloadComicByComicId"), K::DownloadComic, comicId, false, {}, false),
        makeTemplate(QStringLiteral("GetAllDownloadComic"), K::DownloadComic, {}, false, QStringLiteral("createComicDate"), false),
        makeTemplate(QStringLiteral("GetDownloadChapterByChapterId"), K::DownloadChapter, chapterId, true, {}, false),
        makeTemplate(QStringLiteral("GetAllDownloadChapter"), K::DownloadChapter, {}, false, {}, false),
        makeTemplate(QStringLiteral("GetDownloadChapterByComicId"), K::DownloadChapter, comicId, false, {}, false),
    };
}

QString sqlType(Type type)
{
    switch (type) {
    case Type::Text:
        return QStringLiteral("TEXT NOT NULL DEFAULT ''");
    case Type::Integer:
    case Type::Boolean:
        return QStringLiteral("INTEGER NOT NULL DEFAULT 0");
    case Type::Date:
        return QStringLiteral("REAL");
    }
    return QString();
}

// Version 1: one table per entity, `id` as the row identifier.
bool migrateTo1(SqliteDatabase &db)
{
    for (const auto &entity : StoreModel::entities()) {
        QStringList columns{QStringLiteral("id INTEGER PRIMARY KEY")};
        for (const auto &attribute : entity.attributes)
            columns << attribute.name + QLatin1Char(' ') + sqlType(attribute.type);
        if (!db.exec(QStringLiteral("CREATE TABLE %1 (%2)").arg(entity.name, columns.join(QStringLiteral(", ")))))
            return false;
    }
    return true;
}

// Version 2: indexes for the lookups by identifier that every page turn and
// download file makes.
bool migrateTo2(SqliteDatabase &db)
{
    return db.exec(QStringLiteral(
        "CREATE INDEX Bookshelf_comicId ON Bookshelf(comicId);"
        "CREATE INDEX Bookmark_comicId ON Bookmark(comicId);"
        "CREATE INDEX RecentReadInfo_comicId ON RecentReadInfo(comicId);"
        "CREATE INDEX ReadHistory_comicId ON ReadHistory(comicId);"
        "CREATE INDEX DownloadComic_comicId ON DownloadComic(comicId);"
        "CREATE INDEX DownloadChapter_chapterId ON DownloadChapter(chapterId);"
        "CREATE INDEX DownloadChapter_comicId ON DownloadChapter(comicId);"));
}

using Migration = bool (*)(SqliteDatabase &);
// Entry i brings a file from version i to version i + 1. Append only.
const Migration kMigrations[] = {migrateTo1, migrateTo2};

} // namespace

int StoreModel::Entity::indexOf(const QString &attribute) const
{
    for (int i = 0; i < attributes.size(); ++i) {
        if (attributes.at(i).name == attribute)
            return i;
    }
    return -1;
}

const QList<StoreModel::Entity> &StoreModel::entities()
{
    static const QList<Entity> all = makeEntities();
    return all;
}

const StoreModel::Entity &StoreModel::entity(StoreEntityKind kind)
{
    return entities().at(int(kind));
}

const QList<StoreModel::FetchTemplate> &StoreModel::fetchTemplates()
{
    static const QList<FetchTemplate> all = makeTemplates();
    return all;
}

const StoreModel::FetchTemplate *StoreModel::fetchTemplate(const QString &name)
{
    for (const auto &fetch : fetchTemplates()) {
        if (fetch.name == name)
            return &fetch;
    }
    return nullptr;
}

int StoreModel::schemaVersion()
{
    return int(std::size(kMigrations));
}

StoreModel::MigrationResult StoreModel::migrate(SqliteDatabase &db, QString *error)
{
    const int current = db.userVersion();
    if (current < 0) {
        if (error)
            *error = db.lastError();
        return MigrationResult::Failed;
    }
    if (current > schemaVersion()) {
        if (error)
            *error = QStringLiteral("schema version %1 is newer than %2").arg(current).arg(schemaVersion());
        return MigrationResult::NewerThanKnown;
    }
    for (int version = current; version < schemaVersion(); ++version) {
        SqliteTransaction transaction(db);
        if (!transaction.isActive() || !kMigrations[version](db) || !db.setUserVersion(version + 1)
            || !transaction.commit()) {
            if (error)
                *error = QStringLiteral("migration to version %1 failed: %2").arg(version + 1).arg(db.lastError());
            return MigrationResult::Failed;
        }
    }
    return MigrationResult::Migrated;
}

QString StoreModel::insertSql(StoreEntityKind kind)
{
    const auto &e = entity(kind);
    QStringList names;
    QStringList marks;
    for (const auto &attribute : e.attributes) {
        names << attribute.name;
        marks << QStringLiteral("?");
    }
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(e.name, names.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")));
}

QString StoreModel::updateSql(StoreEntityKind kind)
{
    const auto &e = entity(kind);
    QStringList sets;
    for (const auto &attribute : e.attributes)
        sets << attribute.name + QStringLiteral(" = ?");
    return QStringLiteral("UPDATE %1 SET %2 WHERE id = ?").arg(e.name, sets.join(QStringLiteral(", ")));
}

QString StoreModel::deleteSql(StoreEntityKind kind)
{
    return QStringLiteral("DELETE FROM %1 WHERE id = ?").arg(entity(kind).name);
}

QString StoreModel::selectByRowIdSql(StoreEntityKind kind)
{
    const auto &e = entity(kind);
    return QStringLiteral("SELECT %1 FROM %2 WHERE id = ?").arg(columnList(e), e.name);
}
