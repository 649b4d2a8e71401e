#include "VORAFeedScreenshot.h"

#include "AppLog.h"
#include "VORAImageProvider.h"
#include "VORARootViewController.h"
#include "catalogue/VORANetWorkNoLinking.h"
#include "catalogue/VORARecommentView.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QQuickWindow>

VORAFeedScreenshot::VORAFeedScreenshot(QQuickWindow *window, VORARootViewController *root, const QString &filePath,
                                       QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_root(root)
    , m_filePath(filePath)
{
    m_timer.setInterval(pollIntervalMs);
    connect(&m_timer, &QTimer::timeout, this, &VORAFeedScreenshot::poll);
}

void VORAFeedScreenshot::start()
{
    m_settled = 0;
    m_waited = 0;
    m_timer.start();
}

bool VORAFeedScreenshot::isSettled() const
{
    if (!m_root || !m_root->recommentView())
        return false;
    const VORARecommentView *feed = m_root->recommentView();
    const bool filled = !feed->recommentArray().isEmpty() || feed->noNetwork()->isVisible();
    return filled && VORAImageProvider::pendingCount() == 0;
}

void VORAFeedScreenshot::poll()
{
    m_waited += pollIntervalMs;
    m_settled = isSettled() ? m_settled + 1 : 0;
    if (m_settled < settledPolls && m_waited < timeoutMs)
        return;
    if (m_settled < settledPolls)
        qCWarning(lcApp) << "taking the screenshot before the feed settled";
    m_timer.stop();
    grab();
}

void VORAFeedScreenshot::grab()
{
    bool ok = false;
    if (m_window) {
        const QImage image = m_window->grabWindow();
        QDir().mkpath(QFileInfo(m_filePath).absolutePath());
        ok = !image.isNull() && image.save(m_filePath, "PNG");
    }
    if (!ok)
        qCWarning(lcApp) << "could not save the screenshot to" << m_filePath;
    emit saved(QFileInfo(m_filePath).absoluteFilePath(), ok);
}
