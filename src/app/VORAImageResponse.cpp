#include "VORAImageResponse.h"

#include "AppLog.h"
#include "VORAArtwork.h"
#include "VORAImageProvider.h"

#include <QAtomicInt>
#include <QBuffer>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSaveFile>
#include <QTimer>
#include <QUrl>

namespace {
QAtomicInt g_jobs;
}

VORAImageResponse::VORAImageResponse() = default;

QQuickTextureFactory *VORAImageResponse::textureFactory() const
{
    return QQuickTextureFactory::textureFactoryForImage(m_image);
}

void VORAImageResponse::handleDone(const QImage &image, const QString &error)
{
    if (m_finished)
        return;
    m_finished = true;
    m_image = image;
    m_error = image.isNull() ? (error.isEmpty() ? QStringLiteral("no image") : error) : QString();
    emit finished();
}

void VORAImageResponse::cancel()
{
    handleDone(QImage(), QStringLiteral("cancelled"));
}

VORAImageJob::VORAImageJob(const QString &id, const QSize &requestedSize)
    : m_id(id)
    , m_requestedSize(requestedSize)
{
    g_jobs.ref();
}

// Also when the pool drops the job before it ran.
VORAImageJob::~VORAImageJob()
{
    g_jobs.deref();
}

int VORAImageJob::aliveCount()
{
    return g_jobs.loadAcquire();
}

void VORAImageJob::run()
{
    QString error;
    const QImage image = load(m_id, m_requestedSize, &error);
    emit done(image, error);
}

namespace {

QImage decode(const QByteArray &bytes, const QSize &requestedSize, QString *error)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    // Whole halves and quarters are the cheap scaled decodes; otherwise decode
    // full size and let the scene graph scale.
    const QSize full = reader.size();
    if (requestedSize.isValid() && full.isValid()) {
        for (int div : {4, 2}) {
            if (full.width() / div >= requestedSize.width() && full.height() / div >= requestedSize.height()) {
                reader.setScaledSize(full / div);
                break;
            }
        }
    }
    QImage image = reader.read();
    if (image.isNull())
        *error = reader.errorString();
    return image;
}

QByteArray download(const QUrl &url, QString *error)
{
    QNetworkAccessManager nam;
    QNetworkRequest request(url);
    request.setTransferTimeout(VORAImageProvider::downloadTimeoutMs);
    QNetworkReply *reply = nam.get(request);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    QByteArray bytes;
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (reply->error() != QNetworkReply::NoError)
        *error = reply->errorString();
    else if (status != 200)
        *error = QStringLiteral("HTTP status %1").arg(status);
    else
        bytes = reply->readAll();
    delete reply;
    return bytes;
}

} // namespace

QImage VORAImageJob::load(const QString &id, const QSize &requestedSize, QString *error)
{
    if (id.startsWith(QLatin1String("art/"))) {
        const QString name = id.mid(4);
        QImage img = VORAArtwork::image(name);
        if (img.isNull())
            *error = QStringLiteral("unknown picture %1").arg(name);
        return img;
    }
    if (!id.startsWith(QLatin1String("net/"))) {
        *error = QStringLiteral("unknown image id %1").arg(id);
        return {};
    }
    const QString text = QUrl::fromPercentEncoding(id.mid(4).toUtf8());
    const QUrl url(text);
    if (!url.isValid() || (url.scheme() != QLatin1String("http") && url.scheme() != QLatin1String("https"))) {
        *error = QStringLiteral("not an http address: %1").arg(text);
        return {};
    }
    const QString cacheFile = VORAImageProvider::cacheFileForUrl(url.toString());
    QFile cached(cacheFile);
    if (cached.open(QIODevice::ReadOnly)) {
        const QByteArray bytes = cached.readAll();
        cached.close();
        QString decodeError;
        QImage img = decode(bytes, requestedSize, &decodeError);
        if (!img.isNull())
            return img;
        // A damaged cache file: drop it and fetch again.
        qCInfo(lcApp) << "dropping damaged cached picture" << cacheFile << decodeError;
        QFile::remove(cacheFile);
    }
    const QByteArray bytes = download(url, error);
    if (bytes.isEmpty()) {
        if (error->isEmpty())
            *error = QStringLiteral("empty answer");
        return {};
    }
    QImage img = decode(bytes, requestedSize, error);
    if (img.isNull())
        return img; // not a picture: nothing goes into the cache
    QDir().mkpath(QFileInfo(cacheFile).absolutePath());
    QSaveFile out(cacheFile);
    if (out.open(QIODevice::WriteOnly)) {
        out.write(bytes);
        if (!out.commit())
            qCWarning(lcApp) << "could not write" << cacheFile;
    }
    return img;
}
