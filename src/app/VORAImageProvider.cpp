#include "VORAImageProvider.h"

#include "VORAImageResponse.h"
#include "core/VORAUtility.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>

VORAImageProvider::VORAImageProvider()
{
    m_pool.setMaxThreadCount(maxThreads);
    // The engine may hand this provider to Qt's pixmap reader, which lives until
    // exit(): jobs still writing images then would race the unloading of the
    // image plugins. Let them end when the event loop does.
    if (QCoreApplication *app = QCoreApplication::instance()) {
        QObject::connect(app, &QCoreApplication::aboutToQuit, this, [this] {
            m_pool.clear();
            m_pool.waitForDone();
        });
    }
}

VORAImageProvider::~VORAImageProvider()
{
    m_pool.clear();
    m_pool.waitForDone();
}

QQuickImageResponse *VORAImageProvider::requestImageResponse(const QString &id, const QSize &requestedSize)
{
    auto *response = new VORAImageResponse;
    auto *job = new VORAImageJob(id, requestedSize);
    job->setAutoDelete(true);
    QObject::connect(job, &VORAImageJob::done, response, &VORAImageResponse::handleDone, Qt::QueuedConnection);
    m_pool.start(job);
    return response;
}

int VORAImageProvider::pendingCount()
{
    return VORAImageJob::aliveCount();
}

QString VORAImageProvider::cacheFileForUrl(const QString &url)
{
    const QByteArray hash = QCryptographicHash::hash(url.toUtf8(), QCryptographicHash::Sha1).toHex();
    return QDir::cleanPath(VORAUtility::comicCacheDirectory()) + QLatin1String("/cover_") +
           QString::fromLatin1(hash);
}
