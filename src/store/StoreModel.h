#pragma once

#include "StoreEntityKind.h"

#include <QList>
#include <QString>

class SqliteDatabase;

// The store's model: the six entities with their attributes, the named fetch
// templates, and the schema migrations. Everything here is fixed at build time.
class StoreModel
{
public:
    enum class AttributeType { Text, Integer, Boolean, Date };

    struct Attribute {
        QString name;
        AttributeType type;
    };

    struct Entity {
        StoreEntityKind kind;
        QString name; // also the table name
        QList<Attribute> attributes;
        int indexOf(const QString &attribute) const;
    };

    // A named fetch template. `matchAttribute` empty: all records. `listVariable`
    // true: the attribute is matched by membership in ID_LIST, else equality with ID.
    struct FetchTemplate {
        QString name;
        StoreEntityKind kind;
        QString matchAttribute;
        bool listVariable = false;
        QString orderAttribute; // empty: the database's order
        bool newestFirst = false;
        QString sql;            // SELECT id, <attributes...> FROM ... with :ID / :ID_LIST
    };

    static const Entity &entity(StoreEntityKind kind);
    static const QList<Entity> &entities();
    // nullptr for an unknown name.
    static const FetchTemplate *fetchTemplate(const QString &name);
    static const QList<FetchTemplate> &fetchTemplates();

    // The schema version this code writes (PRAGMA user_version).
    static int schemaVersion();

    enum class MigrationResult { Migrated, NewerThanKnown, Failed };
    // Brings the open database from its user_version up to schemaVersion(),
    // one transaction per version step; a failed step is rolled back and the
    // file keeps the version it had before that step.
    static MigrationResult migrate(SqliteDatabase &db, QString *error);

    static QString insertSql(StoreEntityKind kind);
    static QString updateSql(StoreEntityKind kind);
    static QString deleteSql(StoreEntityKind kind);
    static QString selectByRowIdSql(StoreEntityKind kind);
};
