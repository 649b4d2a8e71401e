#pragma once

#include <QImage>
#include <QQuickImageResponse>
#include <QRunnable>
#include <QSize>
#include <QString>

// One image request of VORAImageProvider. The work runs as a QRunnable on the
// provider's pool and hands the image back through a queued signal, so a
// response the engine has already dropped receives nothing.
//
// The engine deletes a response only after its finished(), and the response
// keeps the provider alive until then: a response finishes exactly once, with
// its picture, with an error, or when the engine cancels it (its job may have
// been dropped from the pool and never answer).
class VORAImageResponse : public QQuickImageResponse
{
    Q_OBJECT
public:
    VORAImageResponse();
    QQuickTextureFactory *textureFactory() const override;
    QString errorString() const override { return m_error; }

public slots:
    void handleDone(const QImage &image, const QString &error);
    void cancel() override;

private:
    QImage m_image;
    QString m_error;
    bool m_finished = false;
};

// The job behind a response: reads the disk cache or downloads, then decodes.
class VORAImageJob : public QObject, public QRunnable
{
    Q_OBJECT
public:
    VORAImageJob(const QString &id, const QSize &requestedSize);
    ~VORAImageJob() override;
    void run() override;

    // Jobs made and not yet deleted (run or dropped), in the whole process.
    static int aliveCount();
    // Loads one id as the provider describes (blocking; worker threads only).
    static QImage load(const QString &id, const QSize &requestedSize, QString *error);

signals:
    void done(const QImage &image, const QString &error);

private:
    QString m_id;
    QSize m_requestedSize;
};
