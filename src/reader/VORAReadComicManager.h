#pragma once

#include "catalogue/VORAReadGate.h"
#include "net/VORAComicInfoDTO.h"
#include "net/VORAHttpBaseWebServiceDelegate.h"
#include "net/VORAPageInfoDTO.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

struct NetError;
class VORABuyChapterService;
class VORAComicBuy_ChapterService;
class VORAGetChapterInfoService;
class VORAGetComicBasicInfoService;
class VORAPageDownloadManager;
class VORAReadComicManagerDelegate;
class VORAReadHomeViewControllerHooks;

// One opened chapter of one comic: its comic information and page list (from
// the site, or from a finished download's files), the chapter and page it
// starts on ("kFirstPage", "kLastPage" or a page id), the read gate with its
// dialogs (VORAChapterPurchase's tags) and purchases, and the prefetch set of at most
// five page loaders. Moving to another chapter makes a new session.
//
// Main thread only; the page loaders run on threads of their own and report
// back here.
class VORAReadComicManager : public QObject, public VORAHttpBaseWebServiceDelegate
{
    Q_OBJECT
public:
    static inline const QString kFirstPage = QStringLiteral("kFirstPage");
    static inline const QString kLastPage = QStringLiteral("kLastPage");
    static constexpr int maxPrefetch = 5;

    // initWithComicId: chapterId may be empty (the first chapter is meant).
    VORAReadComicManager(const QString &comicId, const QString &chapterId, const QString &pageId,
                         QObject *parent = nullptr);
    ~VORAReadComicManager() override;

    void setDelegate(VORAReadComicManagerDelegate *delegate) { m_delegate = delegate; }
    VORAReadComicManagerDelegate *delegate() const { return m_delegate; }
    void setReadHomeViewController(VORAReadHomeViewControllerHooks *controller) { m_readHomeViewController = controller; }
    VORAReadHomeViewControllerHooks *readHomeViewController() const { return m_readHomeViewController; }

    // Starts the session; the answer comes through the delegate (at once, before
    // load() returns, for a downloaded chapter).
    void load();
    // Page list again (after a sign-in started by the gate).
    void loadOnlineChapterInfo();
    // Makes index the current page and rebuilds the prefetch set.
    void getPageWithIndex(int index);
    void beginBuyComicRequestData();
    // Answer of a dialog raised by this session (index 0 = first button).
    Q_INVOKABLE void alertView(int tag, int buttonIndex);

    // True when the chapter is downloaded to the end: it is read from its
    // files, without the network and without the gate.
    static bool isFinishedDownload(const QString &chapterId);

    // The read gate: true when the chapter may be read; otherwise it has sent
    // the user to sign in or raised its dialog (or, from the store, nothing).
    bool isReadOrNotRead(const VORAChapterInfoDTO &chapter, const VORAComicInfoDTO &comic);

    QString comicId() const { return m_comicId; }
    QString chapterId() const { return m_chapterId; }
    QString pageId() const { return m_pageId; }
    const std::optional<VORAComicInfoDTO> &comicInfoDTO() const { return m_comicInfoDTO; }
    const QList<VORAPageInfoDTO> &pageList() const { return m_pageList; }
    int chapterIndex() const { return m_chapterIndex; }
    int pageIndex() const { return m_pageIndex; }
    bool isOnlineComic() const { return m_isOnlineComic; }
    int buyType() const { return m_buyType; }
    int buyComicOrBuyVipType() const { return m_buyComicOrBuyVipType; }
    QStringList comicChapterArray() const { return m_comicChapter_Array; }
    // The prefetch set, in wanted order.
    const QList<VORAPageDownloadManager *> &pageCache() const { return m_pageCache; }

    // The time the seal rule compares with; the clock unless a test sets one.
    QDateTime now() const;
    void setNowForTesting(std::function<QDateTime()> clock) { m_clock = std::move(clock); }

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;
    // Callback of a page loader (main thread).
    void pageDownloadDidFinished(VORAPageDownloadManager *loader, const NetError *error);

signals:
    // The gate did not let the chapter through; the delegate hears nothing
    // more unless a sign-in (outcome SignIn) or a purchase follows.
    void readRefused(VORAReadGate::Outcome outcome);

private:
    // Implementation details are the session's own.
    void loadDownloadedChapter();
    int resolveChapterIndex() const;
    void resolvePageIndex();
    void comicInfoAnswered(const NetError *error);
    void chapterInfoAnswered(const NetError *error);
    void buyChapterAnswered(const NetError *error);
    void comicBuyAnswered(const NetError *error);
    void buyChapters(const QStringList &chapterIds);
    void subtractCoins(qint64 cost);
    static void releaseLoaders(const QList<VORAPageDownloadManager *> &loaders);

    QString m_comicId;
    QString m_chapterId;
    QString m_pageId;
    std::optional<VORAComicInfoDTO> m_comicInfoDTO;
    QList<VORAPageInfoDTO> m_pageList;
    QList<VORAPageDownloadManager *> m_pageCache;
    int m_chapterIndex = 0;
    int m_pageIndex = 0;
    bool m_isOnlineComic = true;
    int m_buyType = 0;
    QStringList m_comicChapter_Array;
    int m_buyComicOrBuyVipType = 0;
    bool m_waitingForSignIn = false;
    VORAReadComicManagerDelegate *m_delegate = nullptr;
    VORAReadHomeViewControllerHooks *m_readHomeViewController = nullptr;
    VORAGetChapterInfoService *m_chapterService = nullptr;
    VORAGetComicBasicInfoService *m_comicService = nullptr;
    VORAComicBuy_ChapterService *m_comicBuyService = nullptr;
    VORABuyChapterService *m_buyChapterService = nullptr;
    std::function<QDateTime()> m_clock;
};
