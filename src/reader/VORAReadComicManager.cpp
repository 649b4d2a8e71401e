#include "reader/VORAReadComicManager.h"

#include "catalogue/VORAChapterPurchase.h"
#include "catalogue/VORAReadGate.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORAArchiveNames.h"
#include "core/VORANotificationNames.h"
#include "core/VORAUtility.h"
#include "net/VORABuyChapterService.h"
#include "net/VORAComicBuy_ChapterService.h"
#include "net/VORAGetChapterInfoService.h"
#include "net/VORAGetComicBasicInfoService.h"
#include "platform/NotificationCenter.h"
#include "reader/ReaderLog.h"
#include "reader/VORAPageDownloadManager.h"
#include "reader/VORAReadComicManagerDelegate.h"
#include "reader/VORAReadHomeViewControllerHooks.h"
#include "store/VORADatabaseManager.h"
#include "store/VORAPersistenceManager.h"

#include <QCborMap>
#include <QSet>
#include <QThreadPool>

namespace {
// The gate's sign-in route: the reader screen shows the sign-in view.
std::function<void()> signInRoute(VORAReadHomeViewControllerHooks *controller)
{
    return [controller]() {
        if (controller)
            controller->createUserView();
    };
}
} // namespace

VORAReadComicManager::VORAReadComicManager(const QString &comicId, const QString &chapterId, const QString &pageId,
                                           QObject *parent)
    : QObject(parent)
    , m_comicId(comicId)
    , m_chapterId(chapterId)
    , m_pageId(pageId)
    , m_chapterService(new VORAGetChapterInfoService(this))
    , m_comicService(new VORAGetComicBasicInfoService(this))
    , m_comicBuyService(new VORAComicBuy_ChapterService(this))
    , m_buyChapterService(new VORABuyChapterService(this))
{
    // A sign-in that the gate asked for brings the page list again.
    NotificationCenter::defaultCenter().addObserver(
        this, QString::fromLatin1(VORANotificationNames::userViewPostInfo), [this](const Notification &) {
            // Only a session the gate sent to sign in is waiting for it; a
            // chapter already read (or a downloaded one) has its pages.
            if (m_isOnlineComic && m_waitingForSignIn) {
                m_waitingForSignIn = false;
                loadOnlineChapterInfo();
            }
        });
}

VORAReadComicManager::~VORAReadComicManager()
{
    NotificationCenter::defaultCenter().removeObserver(this);
    m_buyChapterService->cancelRequest();
    m_comicBuyService->cancelRequest();
    m_comicService->cancelRequest();
    m_chapterService->cancelRequest();
    VORAUtility::hideLoadingViewWithParentView(this);
    releaseLoaders(m_pageCache);
    m_pageCache.clear();
    m_pageList.clear();
    m_comicChapter_Array.clear();
    m_comicId.clear();
    m_chapterId.clear();
    m_pageId.clear();
}

QDateTime VORAReadComicManager::now() const
{
    return m_clock ? m_clock() : QDateTime::currentDateTimeUtc();
}

// --- Opening ---

void VORAReadComicManager::load()
{
    m_isOnlineComic = !isFinishedDownload(m_chapterId);
    if (m_isOnlineComic) {
        m_comicService->cancelRequest();
        m_comicService->comicId = m_comicId;
        m_comicService->asynchronousRequestWithDelegate(this);
        return;
    }
    loadDownloadedChapter();
}

bool VORAReadComicManager::isFinishedDownload(const QString &chapterId)
{
    if (chapterId.isEmpty())
        return false;
    VORADatabaseManager *db = VORAPersistenceManager::getPersistenceManager()->databaseManager();
    const std::optional<VORADownloadChapterInfoDTO> downloaded = db->getDownloadChapterWithChapterId(chapterId);
    // A chapter still downloading is read online.
    return downloaded && downloaded->isFinishDownload;
}

void VORAReadComicManager::loadDownloadedChapter()
{
    // A finished download needs neither the network nor the gate.
    m_comicInfoDTO = VORAPersistenceManager::loadComicInfoWithFile(
        VORAPersistenceManager::comicInfoFileWithComicId(m_comicId));
    m_chapterIndex = resolveChapterIndex();
    m_pageList = VORAPersistenceManager::loadChapterInfoWithFile(
        VORAPersistenceManager::chapterInfoFileWithComicId(m_comicId, m_chapterId));
    resolvePageIndex();
    if (!m_delegate)
        return;
    if (!m_comicInfoDTO) {
        qCWarning(lcReader) << "downloaded comic" << m_comicId << "has no readable comicInfo.txt";
        const NetError error;
        m_delegate->comicInfoLoadDidFinishedWithError(this, &error);
        return;
    }
    m_delegate->comicInfoLoadDidFinishedWithError(this, nullptr);
}

void VORAReadComicManager::loadOnlineChapterInfo()
{
    m_chapterService->cancelRequest();
    m_chapterService->chapterId = m_chapterId;
    m_chapterService->asynchronousRequestWithDelegate(this);
}

int VORAReadComicManager::resolveChapterIndex() const
{
    if (m_chapterId.isEmpty() || !m_comicInfoDTO)
        return 0;
    for (const VORAChapterInfoDTO &chapter : m_comicInfoDTO->chapterList) {
        if (chapter.chapterId == m_chapterId)
            return chapter.index;
    }
    return 0;
}

void VORAReadComicManager::resolvePageIndex()
{
    if (m_pageId == kFirstPage) {
        m_pageIndex = 0;
    } else if (m_pageId == kLastPage) {
        m_pageIndex = int(m_pageList.size()) - 1;
    } else {
        for (const VORAPageInfoDTO &page : std::as_const(m_pageList)) {
            if (page.pageId == m_pageId) {
                m_pageIndex = page.index;
                break;
            }
        }
    }
}

void VORAReadComicManager::comicInfoAnswered(const NetError *error)
{
    if (error) {
        qCWarning(lcReader) << "comic" << m_comicId << "information failed:" << error->localizedDescription;
        if (m_delegate)
            m_delegate->comicInfoLoadDidFinishedWithError(this, error);
        return;
    }
    m_comicInfoDTO = m_comicService->comicInfo();
    m_chapterIndex = resolveChapterIndex();
    if (m_comicInfoDTO && m_chapterIndex >= 0 && m_chapterIndex < m_comicInfoDTO->chapterList.size()) {
        const VORAChapterInfoDTO chapter = m_comicInfoDTO->chapterList.at(m_chapterIndex);
        // No chapter named: the first one is read.
        if (m_chapterId.isEmpty())
            m_chapterId = chapter.chapterId;
        const VORAComicInfoDTO comic = *m_comicInfoDTO;
        VORAReadGate::Outcome outcome = VORAReadGate::Outcome::Readable;
        if (!VORAReadGate::apply(chapter, comic, now(), signInRoute(m_readHomeViewController), this,
                                 &m_buyComicOrBuyVipType, &outcome)) {
            // The gate has shown its dialog or the sign-in view, or (from the
            // store) nothing at all: the reader stops waiting either way.
            m_waitingForSignIn = outcome == VORAReadGate::Outcome::SignIn;
            emit readRefused(outcome);
            return;
        }
    }
    if (!m_comicInfoDTO) {
        if (m_delegate) {
            const NetError empty;
            m_delegate->comicInfoLoadDidFinishedWithError(this, &empty);
        }
        return;
    }
    loadOnlineChapterInfo();
}

void VORAReadComicManager::chapterInfoAnswered(const NetError *error)
{
    if (error) {
        qCWarning(lcReader) << "chapter" << m_chapterId << "page list failed:" << error->localizedDescription;
        if (m_delegate)
            m_delegate->comicInfoLoadDidFinishedWithError(this, error);
        return;
    }
    const std::optional<QList<VORAPageInfoDTO>> pages = m_chapterService->pageList();
    if (!pages) {
        qCWarning(lcReader) << "chapter" << m_chapterId << "answer is not a JSON object";
        if (m_delegate) {
            const NetError empty;
            m_delegate->comicInfoLoadDidFinishedWithError(this, &empty);
        }
        return;
    }
    m_pageList = *pages;
    resolvePageIndex();
    if (m_delegate)
        m_delegate->comicInfoLoadDidFinishedWithError(this, nullptr);
}

bool VORAReadComicManager::isReadOrNotRead(const VORAChapterInfoDTO &chapter, const VORAComicInfoDTO &comic)
{
    return VORAReadGate::apply(chapter, comic, now(), signInRoute(m_readHomeViewController), this,
                               &m_buyComicOrBuyVipType);
}

// --- Prefetch set ---

void VORAReadComicManager::getPageWithIndex(int index)
{
    const int count = int(m_pageList.size());
    if (index < 0 || index >= count)
        return;

    // The page itself, then its neighbours in reading direction. Page 0 is
    // never taken in as a neighbour, only when it is asked for.
    QList<int> wanted{index};
    auto ahead = [&]() {
        for (int k = index + 1; k <= index + 2; ++k) {
            if (k < count)
                wanted.append(k);
        }
    };
    auto behind = [&]() {
        for (int k = index - 1; k >= index - 2; --k) {
            if (k >= 1)
                wanted.append(k);
        }
    };
    if (m_pageIndex <= index) {
        ahead();
        behind();
    } else {
        behind();
        ahead();
    }

    const std::optional<QString> onlineFile;
    QList<VORAPageDownloadManager *> next;
    next.reserve(wanted.size());
    for (int k : std::as_const(wanted)) {
        const VORAPageInfoDTO &page = m_pageList.at(k);
        VORAPageDownloadManager *kept = nullptr;
        for (VORAPageDownloadManager *loader : std::as_const(m_pageCache)) {
            if (loader->pageId() == page.pageId) {
                kept = loader;
                break;
            }
        }
        if (!kept) {
            const std::optional<QString> localFile =
                m_isOnlineComic ? onlineFile
                                : std::optional<QString>(VORAPersistenceManager::pageFileWithComicId(
                                      m_comicId, m_chapterId, page.pageId));
            kept = new VORAPageDownloadManager(m_comicId, m_chapterId, page, localFile, this, this);
        }
        next.append(kept);
    }

    QList<VORAPageDownloadManager *> dropped;
    for (VORAPageDownloadManager *loader : std::as_const(m_pageCache)) {
        if (!next.contains(loader) && !dropped.contains(loader))
            dropped.append(loader);
    }
    for (VORAPageDownloadManager *loader : std::as_const(dropped))
        loader->cancelLoadPage();
    releaseLoaders(dropped);

    m_pageCache = next;
    m_pageIndex = index;

    for (VORAPageDownloadManager *loader : std::as_const(m_pageCache)) {
        if (!loader->isLoading() && !loader->isLoadFinish())
            loader->startLoadPage();
    }
    for (VORAPageDownloadManager *loader : std::as_const(m_pageCache)) {
        if (loader->isLoadFinish() && m_delegate) {
            const QByteArray &bytes = loader->imageData();
            m_delegate->pageLoadDidFinishedWithPage(this, bytes.isEmpty() ? std::nullopt : std::optional<QByteArray>(bytes),
                                                    loader->tucao(), loader->pageInfoDTO().index);
        }
    }
}

void VORAReadComicManager::releaseLoaders(const QList<VORAPageDownloadManager *> &loaders)
{
    QSet<VORAPageDownloadManager *> seen;
    for (VORAPageDownloadManager *loader : loaders) {
        if (seen.contains(loader))
            continue;
        seen.insert(loader);
        loader->setDelegate(nullptr);
        // Not deleted with the session: a running load ends on its own thread
        // first, without holding up the main thread.
        loader->setParent(nullptr);
        loader->releaseWhenDone();
    }
}

void VORAReadComicManager::pageDownloadDidFinished(VORAPageDownloadManager *loader, const NetError *error)
{
    if (!m_delegate || !loader)
        return;
    const int index = loader->pageInfoDTO().index;
    if (error)
        m_delegate->pageLoadDidFinishedWithPage(this, std::nullopt, std::nullopt, index);
    else
        m_delegate->pageLoadDidFinishedWithPage(this, loader->imageData(), loader->tucao(), index);
}

// --- Purchases ---

void VORAReadComicManager::beginBuyComicRequestData()
{
    VORAUtility::showLoadingViewWithParentView(this, QStringLiteral("购买中..."));
    m_comicBuyService->cancelRequest();
    m_comicBuyService->comicId = m_comicId;
    m_comicBuyService->chapterIdArray = QStringList{m_chapterId};
    m_comicBuyService->asynchronousRequestWithDelegate(this);
}

void VORAReadComicManager::buyChapters(const QStringList &chapterIds)
{
    VORAChapterPurchase::sendBuyRequest(m_buyChapterService, m_comicId, chapterIds, this);
}

void VORAReadComicManager::alertView(int tag, int buttonIndex)
{
    VORAReadHomeViewControllerHooks *controller = m_readHomeViewController;
    switch (tag) {
    case VORAChapterPurchase::sealAlertTag:
        if (buttonIndex == 1) {
            qCInfo(lcReader) << "弹出成为vip";
            if (controller) {
                controller->createUserView();
                controller->pushPayVC(1);
            }
        } else if (controller) {
            controller->backCurrentChapterIndex();
        }
        break;
    case VORAChapterPurchase::notEnoughCoinsTag:
    case VORAChapterPurchase::notEnoughForComicTag:
        if (buttonIndex == 1 && controller) {
            controller->createUserView();
            controller->pushPayVC(2);
        }
        break;
    case VORAChapterPurchase::coinAlertTag:
        if (buttonIndex == 1) {
            m_buyType = 1;
            m_comicChapter_Array.append(m_chapterId);
            buyChapters(m_comicChapter_Array);
        } else if (buttonIndex == 2) {
            const QList<VORAChapterInfoDTO> chapters = m_comicInfoDTO ? m_comicInfoDTO->chapterList
                                                                      : QList<VORAChapterInfoDTO>();
            VORAChapterPurchase::showWholeComicAlert(VORAChapterPurchase::wholeComicTotal(chapters),
                                                     VORAAppGlobalData::shareAppGlobalData()->user()->userCoin(), this);
        }
        break;
    case VORAChapterPurchase::buyComicAlertTag:
        if (buttonIndex == 1) {
            m_buyType = 0;
            buyChapters(m_comicInfoDTO ? VORAChapterPurchase::unboughtPaidChapterIds(m_comicInfoDTO->chapterList)
                                       : QStringList());
        }
        break;
    case VORAChapterPurchase::boughtAlertTag:
        if (buttonIndex == 1 && controller)
            controller->skipeToChapterWithChapterId(m_chapterId);
        break;
    default:
        break;
    }
}

void VORAReadComicManager::buyChapterAnswered(const NetError *error)
{
    VORAUtility::hideLoadingViewWithParentView(this);
    const QStringList bought = m_buyChapterService->chapterArray;
    m_comicChapter_Array.clear();
    if (error)
        qCWarning(lcReader) << "purchase failed:" << error->localizedDescription;
    if (VORAChapterPurchase::readBuyAnswer(*m_buyChapterService, error) != VORAChapterPurchase::Answer::Bought)
        return;

    VORAChapterPurchase::postBuySuccess(this, m_comicId, bought);

    // The coins the site took: the price of every chapter asked for.
    subtractCoins(m_comicInfoDTO ? VORAChapterPurchase::costOf(m_comicInfoDTO->chapterList, bought) : 0);

    // Fresh chapter states: the gate runs again on them.
    m_comicService->cancelRequest();
    m_comicService->comicId = m_comicId;
    m_comicService->asynchronousRequestWithDelegate(this);
}

void VORAReadComicManager::subtractCoins(qint64 cost)
{
    // The user record belongs to the main thread: the subtraction happens here
    // and only the file is written on a worker, from a copy.
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    VORAUser *user = global->user();
    user->setUserCoin(user->userCoin() - cost);
    const QCborMap saved = user->encodeWithCoder();
    QThreadPool::globalInstance()->start([saved]() {
        VORAPersistenceManager::saveObject(saved, QString::fromLatin1(VORAArchiveNames::userKey),
                                           VORAPersistenceManager::userFile());
    });
}

void VORAReadComicManager::comicBuyAnswered(const NetError *error)
{
    VORAUtility::hideLoadingViewWithParentView(this);
    if (error) {
        VORAUtility::requestAtlerMessage(QStringLiteral("error:%1").arg(error->localizedDescription),
                                         QStringLiteral("购买出错"), nullptr);
        return;
    }
    if (m_comicBuyService->code == 1) {
        VORAUtility::noticeWithStatusBarWithString(m_comicBuyService->message);
        if (m_readHomeViewController)
            m_readHomeViewController->skipeToChapterWithChapterId(m_chapterId);
    } else {
        VORAUtility::requestAtlerMessage(m_comicBuyService->message, QStringLiteral("温馨提醒"), nullptr);
    }
}

void VORAReadComicManager::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error)
{
    if (service == m_comicService)
        comicInfoAnswered(error);
    else if (service == m_chapterService)
        chapterInfoAnswered(error);
    else if (service == m_buyChapterService)
        buyChapterAnswered(error);
    else if (service == m_comicBuyService)
        comicBuyAnswered(error);
}
