#include "catalogue/VORAComicHomePageView.h"

#include "account/VORAAccountFiller.h"
#include "catalogue/CatalogueLog.h"
#include "catalogue/VORAChapterPurchase.h"
#include "catalogue/VORAChapterView.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORASystemConfig.h"
#include "core/VORAUtility.h"
#include "net/VORAAutoLoginService.h"
#include "net/VORABuyChapterService.h"
#include "net/VORAGetComicBasicInfoService.h"
#include "platform/NotificationCenter.h"
#include "store/VORABookShelfManager.h"
#include "store/VORAComicCache.h"
#include "store/VORADatabaseManager.h"

#include <QJsonObject>
#include <QSet>

#include <utility>

namespace {
const QString kFirstPage = QStringLiteral("kFirstPage");
const QString tipTitle = QStringLiteral("提示");
const QString reminderTitle = QStringLiteral("温馨提醒");

QString themeNames(const QString &themeIds)
{
    static const QHash<QString, QString> names = {
        {QStringLiteral("1"), QStringLiteral("搞笑")},  {QStringLiteral("2"), QStringLiteral("魔幻")},
        {QStringLiteral("3"), QStringLiteral("生活")},  {QStringLiteral("4"), QStringLiteral("恋爱")},
        {QStringLiteral("5"), QStringLiteral("动作")},  {QStringLiteral("6"), QStringLiteral("科幻")},
        {QStringLiteral("7"), QStringLiteral("战争")},  {QStringLiteral("8"), QStringLiteral("体育")},
        {QStringLiteral("9"), QStringLiteral("推理")},  {QStringLiteral("11"), QStringLiteral("恐怖")},
        {QStringLiteral("12"), QStringLiteral("其他")},
    };
    QStringList out;
    for (const QString &part : themeIds.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QString id = part.trimmed();
        out.append(names.value(id, id));
    }
    return out.join(QLatin1Char(' '));
}
} // namespace

// What the worker thread found on the device for one comic.
struct VORAComicHomePageView::LocalInfo
{
    std::optional<VORAComicInfoDTO> cached;
    QString historyChapterId;
    QString historyPageId;
    QStringList downloadedChapterIds;
};

VORAComicHomePageView::VORAComicHomePageView(QObject *parent)
    : QObject(parent)
    , m_service(new VORAGetComicBasicInfoService(this))
    , m_buyService(new VORABuyChapterService(this))
    , m_autoLoginService(new VORAAutoLoginService(this))
    , m_chapterView(new VORAChapterView(this))
{
    m_io.setMaxThreadCount(1);
    m_io.setExpiryTimeout(2000);
    NotificationCenter::defaultCenter().addObserver(
        this, QString::fromLatin1(VORANotificationNames::buySuccessPost), [this](const Notification &n) {
            if (n.sender == this)
                return; // this page's own purchase reloads on its own
            const QString comicId = n.userInfo.value(QStringLiteral("comicId")).toString();
            QMetaObject::invokeMethod(this, [this, comicId]() { updateComic(comicId); });
        });
}

VORAComicHomePageView::~VORAComicHomePageView()
{
    ++m_generation;
    m_io.waitForDone();
    VORAUtility::hideLoadingViewWithParentView(this);
}

// --- Rules ---

QString VORAComicHomePageView::markForChapter(qint64 isVip, const VORAChapterInfoDTO &chapter, const QDateTime &now)
{
    if (isVip == 1 || isVip == 2) {
        if (chapter.type != 2)
            return {};
        return chapter.is_view == 1 ? QStringLiteral("comicbuyed") : QStringLiteral("buyread");
    }
    if (isVip == 3)
        return VORAReadGate::isSealed(chapter.pass_time, now) ? QStringLiteral("delayread") : QString();
    return {};
}

QString VORAComicHomePageView::serialText(qint32 serialStatus)
{
    static const QStringList labels = {QStringLiteral("连载中"), QStringLiteral("已完结"), QStringLiteral("暂停更新")};
    return serialStatus >= 0 && serialStatus < labels.size() ? labels.at(serialStatus) : labels.first();
}

QDateTime VORAComicHomePageView::now() const
{
    return m_clock ? m_clock() : QDateTime::currentDateTimeUtc();
}

void VORAComicHomePageView::setNowForTesting(std::function<QDateTime()> clock)
{
    m_clock = std::move(clock);
    m_chapterView->setNow(now());
}

// --- Head ---

QVariantMap VORAComicHomePageView::headInfo() const
{
    if (!m_comicInfoDTO)
        return {};
    const VORAComicInfoDTO &c = *m_comicInfoDTO;
    const QString themes = themeNames(c.theme);
    return {
        {QStringLiteral("name"), c.name},
        {QStringLiteral("coverUrl"), c.coverUrl},
        {QStringLiteral("authorName"), c.authorName},
        {QStringLiteral("serialText"), serialText(c.serialStatus)},
        {QStringLiteral("themeText"), themes},
        {QStringLiteral("serialAndTheme"), serialText(c.serialStatus) + QLatin1Char('/') + themes},
        {QStringLiteral("clickTotal"), QString::asprintf("%ld", long(c.clickTotal))},
        {QStringLiteral("tucaoTotal"), QString::asprintf("%ld", long(c.tucaoTotal))},
        {QStringLiteral("ticketTotal"), QString::asprintf("%ld", long(c.ticketTotal))},
        {QStringLiteral("commentTotal"), QString::asprintf("%ld", long(c.commentTotal))},
        {QStringLiteral("description"), c.comicDescription},
        {QStringLiteral("lastUpdateChapterName"), c.lastUpdateChapterName},
        {QStringLiteral("lastUpdateTime"),
         c.lastUpdateTime.isValid() ? c.lastUpdateTime.toLocalTime().toString(QStringLiteral("yyyy-MM-dd")) : QString()},
        {QStringLiteral("isVip"), c.is_vip},
        {QStringLiteral("chapterCount"), int(c.chapterList.size())},
    };
}

QString VORAComicHomePageView::readButtonImage() const
{
    return hasReadHistory() ? QStringLiteral("comichomecontinueread.png") : QStringLiteral("startread.png");
}

QString VORAComicHomePageView::readButtonPressedImage() const
{
    return hasReadHistory() ? QStringLiteral("comichomecontinuereadpressed.png") : QStringLiteral("startreadpressed.png");
}

QString VORAComicHomePageView::bookshelfButtonImage() const
{
    return m_inBookshelf ? QStringLiteral("alreadyaddbookshelf.png") : QStringLiteral("addbookshelf.png");
}

QString VORAComicHomePageView::bookshelfButtonPressedImage() const
{
    return m_inBookshelf ? QStringLiteral("alreadyaddbookshelfpressed.png") : QStringLiteral("addbookshelfpressed.png");
}

void VORAComicHomePageView::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged();
}

// --- Opening ---

void VORAComicHomePageView::setComicId(const QString &comicId)
{
    ++m_generation;
    m_service->cancelRequest();
    m_comicId = comicId;
    m_comicInfoDTO.reset();
    m_historyChapterId.clear();
    m_historyPageId.clear();
    m_downloadedChapterIds.clear();
    m_cacheChapter.reset();
    m_comicChapter_Array.clear();
    m_purchaseReloadPending = false;
    m_chapterView->updateDate({}, 0, now());
    emit comicIdChanged();
    emit comicInfoChanged();
    emit readHistoryChanged();
    initBookshelfAndReadHistory();
    beginRequestData();
}

void VORAComicHomePageView::initBookshelfAndReadHistory()
{
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    const bool inShelf = VORABookShelfManager::sharedManager() && VORABookShelfManager::sharedManager()->getBookshelfWithComicId(m_comicId).has_value();
    if (inShelf != m_inBookshelf) {
        m_inBookshelf = inShelf;
        emit bookshelfChanged();
    }

    VORAAppStatus *status = global->appStatus();
    status->setAppHelpFirstPageCount(status->appHelpFirstPageCount() + 1);
    global->saveAppStatus();

    // The cache file and the store are read off the main thread.
    const quint64 generation = m_generation;
    const QString comicId = m_comicId;
    // The destructor waits for the pool, so `this` outlives the job; a queued
    // call to an object deleted meanwhile is dropped by Qt.
    m_io.start([this, generation, comicId]() {
        LocalInfo info;
        info.cached = VORAComicCache::shareComicCacheObj()->getComicWithComicId(comicId);
        {
            VORADatabaseManager db;
            if (const ReadHistoryPtr history = db.getReadHistoryWithComic(comicId)) {
                info.historyChapterId = history->chapterId();
                info.historyPageId = history->pageId();
            }
            for (const VORADownloadChapterInfoDTO &chapter : db.getDownloadChapterWithComicId(comicId)) {
                if (chapter.isFinishDownload)
                    info.downloadedChapterIds.append(chapter.chapterId);
            }
        }
        QMetaObject::invokeMethod(this, [this, generation, info]() { applyLocalInfo(generation, info); },
                                  Qt::QueuedConnection);
    });
}

void VORAComicHomePageView::applyLocalInfo(quint64 generation, const LocalInfo &info)
{
    if (generation != m_generation)
        return; // another comic was opened meanwhile
    m_historyChapterId = info.historyChapterId;
    m_historyPageId = info.historyPageId;
    m_downloadedChapterIds = info.downloadedChapterIds;
    emit readHistoryChanged();
    if (!m_comicInfoDTO && info.cached) {
        // Shown while the request runs; the answer replaces it.
        applyComicInfo(*info.cached, false);
    }
    emit localInfoLoaded();
}

void VORAComicHomePageView::beginRequestData()
{
    if (m_comicId.isEmpty())
        return;
    setState(Waiting);
    m_service->cancelRequest();
    m_service->comicId = m_comicId;
    m_service->asynchronousRequestWithDelegate(this);
}

void VORAComicHomePageView::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error)
{
    if (service == m_buyService) {
        handleBuyAnswer(error);
        return;
    }
    if (service == m_autoLoginService) {
        if (!error && m_autoLoginService->data) {
            VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
            if (global->user()->isLogin()) {
                VORAAccountFiller::applyAutoLoginAnswer(*global->user(), *m_autoLoginService->data);
                global->saveUser();
                NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::userViewPostInfo));
            }
        }
        return;
    }
    if (service != m_service)
        return;
    if (error) {
        qCWarning(lcCatalogue) << "comic" << m_comicId << "request failed:" << error->localizedDescription;
        setState(Failed);
        m_autoLoginService->cancelRequest();
        m_autoLoginService->buildVersion = VORASystemConfig::buildVersion();
        m_autoLoginService->asynchronousRequestWithDelegate(this);
        m_purchaseReloadPending = false;
        emit requestFailed();
        return;
    }
    if (!m_service->data) {
        // Not an answer object: the wait view stays until a retry.
        qCWarning(lcCatalogue) << "comic" << m_comicId << "answer is not a JSON object";
        emit answered();
        return;
    }
    if (!m_service->data->value(QStringLiteral("comic")).isObject()) {
        qCWarning(lcCatalogue) << "comic" << m_comicId << "refused:" << VORAUtility::jsonString(m_service->data->value(QStringLiteral("message")));
        setState(Failed);
        emit requestFailed();
        return;
    }
    const VORAComicInfoDTO comic = VORAComicInfoDTO::parseData(*m_service->data, m_comicId);
    applyComicInfo(comic, true);
    setState(Shown);
    emit answered();

    if (m_purchaseReloadPending) {
        m_purchaseReloadPending = false;
        if (m_buyType == 1) {
            VORAChapterPurchase::showBoughtAlert(this);
        } else {
            VORAUtility::requestAtlerMessage(QStringLiteral("购买成功"), tipTitle, nullptr);
        }
        m_buyType = -1;
    }
}

void VORAComicHomePageView::applyComicInfo(const VORAComicInfoDTO &comic, bool fromServer)
{
    m_comicInfoDTO = comic;
    if (fromServer) {
        VORAComicInfoDTO copy = comic;
        m_io.start([copy]() { VORAComicCache::shareComicCacheObj()->cacheComic(copy); });

        // The shelf entry follows the fresh information.
        if (VORABookShelfManager *manager = VORABookShelfManager::sharedManager()) {
            if (std::optional<VORABookShelf> entry = manager->getBookshelfWithComicId(m_comicId)) {
                VORABookShelf updated = *entry;
                updated.comicName = comic.name;
                updated.coverUrl = comic.coverUrl;
                updated.nameFirstletter = comic.nameFirstLetter;
                updated.latestUpdateChapterId = comic.lastUpdateChapterId;
                updated.latestUpdateChapterName = comic.lastUpdateChapterName;
                if (!(updated == *entry))
                    manager->updateBookshelf(updated);
            }
        }
    }
    const QSet<QString> downloaded(m_downloadedChapterIds.cbegin(), m_downloadedChapterIds.cend());
    QList<VORAChapterView::Row> rows;
    rows.reserve(comic.chapterList.size());
    for (const VORAChapterInfoDTO &chapter : comic.chapterList)
        rows.append({chapter, downloaded.contains(chapter.chapterId)});
    m_chapterView->updateDate(rows, comic.is_vip, now());
    refreshHeadInf();
}

void VORAComicHomePageView::refreshHeadInf()
{
    emit comicInfoChanged();
}

void VORAComicHomePageView::updateComic(const QString &comicId)
{
    // A chapter bought in the reader: its state and the gate follow the site.
    if (comicId.isEmpty() || comicId != m_comicId)
        return;
    qCInfo(lcCatalogue) << "comic" << m_comicId << "bought elsewhere: asking again";
    beginRequestData();
}

// --- Reading ---

const VORAChapterInfoDTO *VORAComicHomePageView::chapterWithId(const QString &chapterId) const
{
    if (!m_comicInfoDTO)
        return nullptr;
    const VORAChapterInfoDTO *found = nullptr;
    for (const VORAChapterInfoDTO &c : m_comicInfoDTO->chapterList) {
        if (c.chapterId == chapterId)
            found = &c; // the last one when several match
    }
    return found;
}

void VORAComicHomePageView::readCurrentChapterAtRow(int row)
{
    const VORAChapterView::Row *r = m_chapterView->rowAt(row);
    if (!r)
        return;
    const VORAChapterInfoDTO chapter = r->chapter;
    readCurrentChapter(chapter);
}

VORAReadGate::Outcome VORAComicHomePageView::readCurrentChapter(const VORAChapterInfoDTO &chapter)
{
    m_cacheChapter = chapter;
    m_comicChapter_Array.clear();
    VORAReadGate::Outcome outcome = VORAReadGate::Outcome::Readable;
    const bool readable = VORAReadGate::apply(
        chapter, m_comicInfoDTO.value_or(VORAComicInfoDTO()), now(), [this]() { emit signInRequested(); }, this,
        &m_buyComicOrBuyVipType, &outcome);
    if (readable)
        openReader(chapter.chapterId, kFirstPage);
    else if (outcome == VORAReadGate::Outcome::CoinAlert)
        m_comicChapter_Array.append(chapter.chapterId);
    return outcome;
}

void VORAComicHomePageView::readComicBtnClick()
{
    if (!m_comicInfoDTO || m_comicInfoDTO->chapterList.isEmpty())
        return;
    const VORAChapterInfoDTO *chapter = nullptr;
    QString pageId = kFirstPage;
    if (hasReadHistory()) {
        chapter = chapterWithId(m_historyChapterId);
        if (chapter && !m_historyPageId.isEmpty())
            pageId = m_historyPageId;
    }
    if (!chapter) {
        chapter = &m_comicInfoDTO->chapterList.first();
        pageId = kFirstPage;
    }
    const VORAChapterInfoDTO target = *chapter;
    m_cacheChapter = target;
    m_comicChapter_Array.clear();
    switch (VORAReadGate::decide(target, *m_comicInfoDTO, now())) {
    case VORAReadGate::Outcome::Readable:
        break;
    case VORAReadGate::Outcome::SignIn:
        sendToSignIn();
        return;
    default: {
        // No purchase from this button: a message in place of the gate's dialog.
        const bool fromAppStore = VORAAppGlobalData::shareAppGlobalData()->appStatus()->fromAppStore() == 1;
        QString message;
        if (m_comicInfoDTO->is_vip == 3) {
            message = fromAppStore ? QStringLiteral("本章节是VIP章节，苹果支付功能正在研发中……")
                                   : QStringLiteral("本章节是VIP章节，VIP用户可以立即阅读。请前去网站充值，苹果支付功能正在研发中……");
        } else {
            message = fromAppStore ? QStringLiteral("本章节是付费章节，苹果支付功能正在研发中……")
                                   : QStringLiteral("：阅读本章节需要消费36quorin币，您当前的quorin币余额为0quorin币。请前去网站充值，苹果支付功能正在研发中……");
        }
        VORAUtility::requestAtlerMessage(message, reminderTitle, nullptr);
        return;
    }
    }
    openReader(target.chapterId, pageId);
    if (m_historyChapterId != target.chapterId) {
        // The button now offers to continue.
        m_historyChapterId = target.chapterId;
        m_historyPageId = pageId;
        emit readHistoryChanged();
    }
}

void VORAComicHomePageView::sendToSignIn()
{
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    global->setUserViewJump(1, 2);
    m_addBookshelfAfterSignIn = false;
    emit signInRequested();
}

void VORAComicHomePageView::resumeAfterSignIn()
{
    if (!std::exchange(m_addBookshelfAfterSignIn, false) || !VORAAppGlobalData::shareAppGlobalData()->user()->isLogin())
        return;
    initBookshelfAndReadHistory(); // the shelf may have come from the site meanwhile
    if (!m_inBookshelf)
        addBookShelfBtnClick();
}

void VORAComicHomePageView::openReader(const QString &chapterId, const QString &pageId)
{
    qCInfo(lcCatalogue) << "read comic" << m_comicId << "chapter" << chapterId << "page" << pageId;
    emit readRequested(m_comicId, chapterId, pageId);
}

// --- Bookshelf ---

void VORAComicHomePageView::addBookShelfBtnClick()
{
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    if (!global->user()->isLogin()) {
        sendToSignIn();
        m_addBookshelfAfterSignIn = true;
        return;
    }
    if (!m_comicInfoDTO)
        return;
    VORABookShelfManager *manager = VORABookShelfManager::sharedManager();
    if (!manager) {
        qCWarning(lcCatalogue) << "no bookshelf manager";
        return;
    }
    if (std::optional<VORABookShelf> entry = manager->getBookshelfWithComicId(m_comicId)) {
        manager->deleteBookshelf(*entry);
        m_inBookshelf = false;
    } else {
        const VORAComicInfoDTO &c = *m_comicInfoDTO;
        VORABookShelf added;
        added.comicId = m_comicId;
        added.comicName = c.name;
        added.coverUrl = c.coverUrl;
        added.nameFirstletter = c.nameFirstLetter;
        added.latestUpdateChapterId = c.lastUpdateChapterId;
        added.latestUpdateChapterName = c.lastUpdateChapterName;
        added.latestReadChapterId = m_historyChapterId;
        if (const VORAChapterInfoDTO *read = chapterWithId(m_historyChapterId))
            added.latestReadChapterName = read->name;
        added.updateTime = c.lastUpdateTime.isValid() ? c.lastUpdateTime : QDateTime::currentDateTimeUtc();
        added.adddateTime = QDateTime::currentDateTimeUtc();
        added.isNotRead = m_historyChapterId.isEmpty();
        manager->addBookshelf(added);
        m_inBookshelf = true;
    }
    emit bookshelfChanged();
}

// --- Dialogs and purchases ---

void VORAComicHomePageView::alertView(int tag, int buttonIndex)
{
    switch (tag) {
    case VORAChapterPurchase::sealAlertTag:
        if (buttonIndex == 1)
            emit topUpRequested(1); // become a member
        break;
    case VORAChapterPurchase::notEnoughCoinsTag:
    case VORAChapterPurchase::notEnoughForComicTag:
        if (buttonIndex == 1)
            emit topUpRequested(2); // top up coins
        break;
    case VORAChapterPurchase::coinAlertTag:
        if (buttonIndex == 1) {
            QStringList ids = m_comicChapter_Array;
            if (ids.isEmpty() && m_cacheChapter)
                ids.append(m_cacheChapter->chapterId);
            buyChapters(ids, 1);
        } else if (buttonIndex == 2 && m_comicInfoDTO) {
            VORAChapterPurchase::showWholeComicAlert(VORAChapterPurchase::wholeComicTotal(m_comicInfoDTO->chapterList),
                                                     VORAAppGlobalData::shareAppGlobalData()->user()->userCoin(), this);
        }
        break;
    case VORAChapterPurchase::buyComicAlertTag:
        if (buttonIndex == 1 && m_comicInfoDTO)
            buyChapters(VORAChapterPurchase::unboughtPaidChapterIds(m_comicInfoDTO->chapterList), 0);
        break;
    case VORAChapterPurchase::boughtAlertTag:
        if (buttonIndex == 1 && !m_boughtChapterId.isEmpty())
            openReader(m_boughtChapterId, kFirstPage);
        break;
    default:
        break;
    }
}

void VORAComicHomePageView::buyChapters(const QStringList &chapterIds, int buyType)
{
    if (chapterIds.isEmpty() || m_comicId.isEmpty())
        return;
    m_buyType = buyType;
    VORAChapterPurchase::sendBuyRequest(m_buyService, m_comicId, chapterIds, this);
}

void VORAComicHomePageView::handleBuyAnswer(const NetError *error)
{
    VORAUtility::hideLoadingViewWithParentView(this);
    const QStringList bought = m_buyService->chapterArray;
    m_comicChapter_Array.clear();
    if (error)
        qCWarning(lcCatalogue) << "purchase failed:" << error->localizedDescription;
    const VORAChapterPurchase::Answer answer = VORAChapterPurchase::readBuyAnswer(*m_buyService, error);
    if (answer != VORAChapterPurchase::Answer::Bought) {
        if (answer == VORAChapterPurchase::Answer::NoSuccessCode)
            qCWarning(lcCatalogue) << "purchase answer without success code";
        emit purchaseFinished(false);
        return;
    }

    VORAChapterPurchase::postBuySuccess(this, m_comicId, bought);

    // The coins the site took: the price of every chapter asked for.
    const qint64 cost = m_comicInfoDTO ? VORAChapterPurchase::costOf(m_comicInfoDTO->chapterList, bought) : 0;
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    global->user()->setUserCoin(global->user()->userCoin() - cost);
    global->saveUser();

    m_boughtChapterId = bought.value(0);
    m_purchaseReloadPending = true;
    beginRequestData();
    emit purchaseFinished(true);
}

// --- Layout ---

void VORAComicHomePageView::comicHomePageToOrientation(bool landscape)
{
    if (m_landscape == landscape)
        return;
    m_landscape = landscape;
    emit orientationChanged();
}

void VORAComicHomePageView::close()
{
    ++m_generation;
    m_service->cancelRequest();
    emit removeComicHomePage();
}
