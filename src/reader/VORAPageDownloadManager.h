#pragma once

#include "net/VORAPageInfoDTO.h"
#include "net/VORATucao.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

#include <atomic>
#include <functional>
#include <optional>

class QThread;
class VORAReadComicManager;

// The loader of one page of the prefetch set. Each startLoadPage() runs
// loadPage() on a new thread of its own: the page image comes from the
// downloaded chapter's file (localFile), else from the page cache
// (Caches/appCache/page/<pageId>.png), else from one download of the page's url
// that is then written to the cache; an online page also fetches its tucao
// (up to 3 attempts). The result is handed to the main thread through
// loadPageDidFinished() / loadPageDidFail(), which tell the delegate unless the
// loader was cancelled meanwhile.
//
// A page id that is not a safe file name is never turned into a path: such a
// page is not looked up in the cache and not written to it.
//
// The object lives on the main thread; imageData() and tucao() are read there
// only after the finish callback. isCancel is the one field both threads touch.
class VORAPageDownloadManager : public QObject
{
    Q_OBJECT
public:
    static inline const QString tucaoLastId = QStringLiteral("100000000");
    static constexpr int tucaoPageSize = 200;
    static constexpr int tucaoAttempts = 3;

    // initWithComicId: localFile is absent for online reading; for a downloaded
    // chapter it is the page's file (an empty path counts as a missing file).
    // The page cache directory is made, when missing, by the load's thread.
    VORAPageDownloadManager(const QString &comicId, const QString &chapterId, const VORAPageInfoDTO &page,
                            const std::optional<QString> &localFile, VORAReadComicManager *delegate,
                            QObject *parent = nullptr);
    // A running load is left to finish on its own thread; see releaseWhenDone().
    ~VORAPageDownloadManager() override;

    QString comicId() const { return m_comicId; }
    QString chapterId() const { return m_chapterId; }
    const VORAPageInfoDTO &pageInfoDTO() const { return m_pageInfoDTO; }
    QString pageId() const { return m_pageInfoDTO.pageId; }
    const std::optional<QString> &localFile() const { return m_localFile; }
    VORAReadComicManager *delegate() const { return m_delegate; }
    void setDelegate(VORAReadComicManager *delegate) { m_delegate = delegate; }

    const QByteArray &imageData() const { return m_imageData; }
    const std::optional<QList<VORATucao>> &tucao() const { return m_tucao; }
    bool isLoading() const { return m_isLoading.load(); }
    bool isLoadFinish() const { return m_isLoadFinish; }
    bool isCancel() const { return m_isCancel.load(); }

    void startLoadPage();
    // The running thread is not stopped: it ends its current step and drops its
    // result.
    void cancelLoadPage();
    // Deletes the loader once no load thread runs any more (at once when none
    // does). The session hands loaders it no longer wants over this way.
    void releaseWhenDone();

    // Test seam: when set, runs on the loader's thread after a page image was
    // downloaded and before it is written to the page cache (online loads
    // only). Tests use it to cancel a loader at exactly that point.
    // One plain blocking download of a page image's whole body (worker
    // threads only). An error, an HTTP status outside 2xx (its body is no
    // page image) and an empty body all give nothing.
    static std::optional<QByteArray> downloadImage(const QString &url);
    static void setBeforeCacheWriteHookForTesting(std::function<void(VORAPageDownloadManager *)> hook);

signals:
    // After loadPageDidFinished / loadPageDidFail, whether or not the delegate
    // was told.
    void loadEnded();

private:
    Q_INVOKABLE void loadPageDidFinished();
    Q_INVOKABLE void loadPageDidFail();
    void loadPage();
    void report(bool success);
    std::optional<QList<VORATucao>> fetchTucao() const;
    void threadEnded(QThread *thread);

    QString m_comicId;
    QString m_chapterId;
    VORAPageInfoDTO m_pageInfoDTO;
    std::optional<QString> m_localFile;
    QPointer<VORAReadComicManager> m_delegate;
    QByteArray m_imageData;
    std::optional<QList<VORATucao>> m_tucao;
    std::atomic_bool m_isLoading{false};
    bool m_isLoadFinish = false;
    std::atomic_bool m_isCancel{false};
    QThread *m_loadThread = nullptr;
    int m_runningThreads = 0;
    bool m_releaseRequested = false;
};
