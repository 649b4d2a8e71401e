#pragma once

#include <QImage>
#include <QQuickImageResponse>
#include <QRunnable>
#include <QSize>
#include <QString>

// One image request of VORAImageProvider. The work runs as a QRunnable on the
// provider's pool and hands the image back through a queued signal, so a
// response the engine has already dropped receives nothing.
class VORAImageResponse : public QQuickImageResponse
{
    Q_OBJECT
public:
    VORAImageResponse();
    QQuickTextureFactory *textureFactory() const override;
    QString errorString() const override { return m_error; }

public slots:
    void handleDone(const QImage &image, const QString &error);

private:
    QImage m_image;
    QString m_error;
};

// The job behind a response: reads the disk cache or downloads, then decodes.
class VORAImageJob : public QObject, public QRunnable
{
    Q_OBJECT
public:
    VORAImageJob(const QString &id, const QSize &requestedSize);
    void run() override;

    // Loads one id as the provider describes (blocking; worker threads only).
    static QImage load(const QString &id, const QSize &requestedSize, QString *error);

signals:
    void done(const QImage &image, const QString &error);

private:
    QString m_id;
    QSize m_requestedSize;
};
