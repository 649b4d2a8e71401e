#pragma once

#include <QCborValue>
#include <QString>

// Keyed archive files: one CBOR map {key: object} per file.
//
// save() writes atomically (the old file stays intact when the write fails) and
// creates missing parent directories. With ownerOnly the file is readable and
// writable by the owner only (mode 0600) from the moment it is created; use it
// for every file holding the user's session key.
//
// load() returns an undefined QCborValue when the file is missing, unreadable,
// larger than maxFileSize, truncated, not CBOR, not a map or lacks the key.
class KeyedArchive
{
public:
    static constexpr qint64 maxFileSize = 16 * 1024 * 1024;

    static bool save(const QString &path, const QString &key, const QCborValue &object,
                     bool ownerOnly = false);
    static QCborValue load(const QString &path, const QString &key);
};
