#pragma once

#include <QAtomicInt>
#include <QObject>
#include <QQuickAsyncImageProvider>
#include <QThreadPool>

// "image://quorin/…": the covers, slides and the app's own pictures, loaded
// and decoded on a pool of worker threads, never on the main thread.
//
//   image://quorin/art/<name>         a picture of VORAArtwork
//   image://quorin/net/<escaped url>  a remote picture (http/https), kept in the
//                                     disk cache under the comic cache directory
//
// A failed load gives an error response; the QML keeps its placeholder.
class VORAImageProvider : public QQuickAsyncImageProvider
{
public:
    static constexpr int maxThreads = 4;
    static constexpr int downloadTimeoutMs = 20000;

    VORAImageProvider();
    ~VORAImageProvider() override;

    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &requestedSize) override;

    // Loads still running (all providers of the process).
    static int pendingCount();
    // The disk cache file of a remote address.
    static QString cacheFileForUrl(const QString &url);

private:
    QThreadPool m_pool;
};
