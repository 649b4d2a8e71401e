#pragma once

#include "SiteCatalogue.h"
#include "SiteHttpResponse.h"

#include <QCache>
#include <QHash>
#include <QList>
#include <QObject>
#include <QThreadPool>

#include <functional>

// Serves "images/…" paths: from memory, else from the cache directory, else
// drawn once on a worker thread, written to the cache directory and served.
// Lives on the server thread; concurrent requests for an image being drawn
// wait for the one drawing.
class SiteImageStore : public QObject
{
    Q_OBJECT
public:
    using Done = std::function<void(const SiteHttpResponse &)>;

    SiteImageStore(const SiteCatalogue &catalogue, const QString &cacheDir, QObject *parent = nullptr);
    ~SiteImageStore() override;

    // False when the path is not an image this site has; otherwise done is called
    // later on this object's thread.
    bool fetch(const QString &path, Done done);

private:
    struct Target
    {
        enum Kind { Page, Cover, Slide, Face } kind = Page;
        qint64 id = 0;
        bool original = false;
        QByteArray format;
        QString file; // relative to the cache directory
    };
    bool resolve(const QString &path, Target *target) const;
    QByteArray draw(const Target &target) const;
    void finish(const QString &path, const QByteArray &bytes, const QByteArray &contentType);
    static QByteArray contentType(const QByteArray &format);

    const SiteCatalogue &m_catalogue;
    QString m_cacheDir;
    QThreadPool m_pool;
    QCache<QString, QByteArray> m_memory;
    QHash<QString, QList<Done>> m_waiting;
};
