#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

class QQuickWindow;
class VORARootViewController;

// Saves a PNG of the window once the feed's grid is filled and the pictures
// have settled (no image load running for a few polls), or after a time-out.
class VORAFeedScreenshot : public QObject
{
    Q_OBJECT
public:
    static constexpr int pollIntervalMs = 100;
    static constexpr int settledPolls = 4;
    static constexpr int timeoutMs = 30000;

    VORAFeedScreenshot(QQuickWindow *window, VORARootViewController *root, const QString &filePath,
                       QObject *parent = nullptr);
    void start();
    // True when the feed shows comics and no picture is loading.
    bool isSettled() const;

signals:
    void saved(const QString &filePath, bool ok);

private:
    void poll();
    void grab();
    QPointer<QQuickWindow> m_window;
    QPointer<VORARootViewController> m_root;
    QString m_filePath;
    QTimer m_timer;
    int m_settled = 0;
    int m_waited = 0;
};
