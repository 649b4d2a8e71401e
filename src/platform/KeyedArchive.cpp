#include "platform/KeyedArchive.h"
#include "platform/PlatformLog.h"

#include <QCborMap>
#include <QCborParserError>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

bool KeyedArchive::save(const QString &path, const QString &key, const QCborValue &object,
                        bool ownerOnly)
{
    QCborMap root;
    root.insert(key, object);
    const QByteArray bytes = QCborValue(root).toCbor();

    const QFileInfo info(path);
    if (!QDir().mkpath(info.absolutePath())) {
        qCWarning(lcPlatform) << "cannot create the directory of" << path;
        return false;
    }

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qCWarning(lcPlatform) << "cannot write" << path << file.errorString();
        return false;
    }
    if (ownerOnly) {
#ifdef Q_OS_UNIX
        // Restrict the temporary file before any byte is written, so the key is
        // never readable by others, not even for a moment.
        if (::fchmod(file.handle(), S_IRUSR | S_IWUSR) != 0) {
            qCWarning(lcPlatform) << "cannot restrict the permissions of" << path;
            file.cancelWriting();
            return false;
        }
#else
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
#endif
    }
    if (file.write(bytes) != bytes.size()) {
        qCWarning(lcPlatform) << "short write to" << path << file.errorString();
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) {
        qCWarning(lcPlatform) << "cannot commit" << path << file.errorString();
        return false;
    }
    return true;
}

QCborValue KeyedArchive::load(const QString &path, const QString &key)
{
    QFile file(path);
    if (!file.exists())
        return QCborValue();
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(lcPlatform) << "cannot read" << path << file.errorString();
        return QCborValue();
    }
    if (file.size() > maxFileSize) {
        qCWarning(lcPlatform) << "archive too large, ignored:" << path << file.size();
        return QCborValue();
    }
    const QByteArray bytes = file.read(maxFileSize + 1);
    if (bytes.isEmpty() || bytes.size() > maxFileSize)
        return QCborValue();

    QCborParserError error;
    const QCborValue root = QCborValue::fromCbor(bytes, &error);
    if (error.error != QCborError::NoError) {
        qCWarning(lcPlatform) << "damaged archive" << path << error.errorString();
        return QCborValue();
    }
    if (!root.isMap()) {
        qCWarning(lcPlatform) << "archive is not a keyed map:" << path;
        return QCborValue();
    }
    const QCborMap map = root.toMap();
    if (!map.contains(key))
        return QCborValue();
    return map.value(key);
}
