#include "reader/VORAChapterManager.h"

#include "catalogue/VORAChapterPurchase.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORAUtility.h"
#include "net/VORABuyChapterService.h"
#include "platform/NotificationCenter.h"
#include "reader/ReaderLog.h"
#include "reader/VORAChapterListModel.h"
#include "reader/VORAReadHomeViewControllerHooks.h"

#include <QPointer>

#include <algorithm>

VORAChapterManager::VORAChapterManager(const QString &chapterId, const QString &comicId, QObject *parent)
    : VORAReaderSidePanel(parent)
    , m_model(new VORAChapterListModel(this))
    , m_buyService(new VORABuyChapterService(this))
    , m_comicId(comicId)
    , m_chapterId(chapterId)
    , m_currentChapterId(chapterId)
    , m_countText(countTextFor(0))
{
    // Notifications may be posted on any thread; the panel acts on its own.
    NotificationCenter &center = NotificationCenter::defaultCenter();
    center.addObserver(this, QString::fromLatin1(VORANotificationNames::userViewPostInfo), [this](const Notification &) {
        QMetaObject::invokeMethod(this, [this]() {
            if (m_userRootViewShown)
                jumpChapter();
        });
    });
    center.addObserver(this, QString::fromLatin1(VORANotificationNames::buyVIPorCoinSuccess), [this](const Notification &) {
        QMetaObject::invokeMethod(this, [this]() {
            if (m_userRootViewShown)
                cancleButtonSuccess();
        });
    });
}

VORAChapterManager::~VORAChapterManager()
{
    NotificationCenter::defaultCenter().removeObserver(this);
    m_buyService->cancelRequest();
    VORAUtility::hideLoadingViewWithParentView(this);
}

QString VORAChapterManager::countTextFor(qsizetype n)
{
    return QString::asprintf("当前共有%lu章", static_cast<unsigned long>(n));
}

QDateTime VORAChapterManager::now() const
{
    return m_clock ? m_clock() : QDateTime::currentDateTimeUtc();
}

void VORAChapterManager::setComicInfoDTO(const VORAComicInfoDTO &comic)
{
    m_comicInfoDTO = comic;
    m_chapterList = comic.chapterList;
    if (m_comicId.isEmpty())
        m_comicId = comic.comicId;
    UpdateChapterInfo(m_currentChapterId);
}

void VORAChapterManager::UpdateChapterInfo(const QString &chapterId)
{
    m_currentChapterId = chapterId;
    m_countText = countTextFor(m_chapterList.size());
    reloadTable();
    emit chapterListChanged();
}

void VORAChapterManager::reloadTable()
{
    m_model->setChapters(m_chapterList, m_comicInfoDTO ? m_comicInfoDTO->is_vip : 0, now(), m_currentChapterId);
}

void VORAChapterManager::chapterSort()
{
    const bool before = m_ascending;
    m_ascending = !m_ascending;
    m_sortButtonImage = before ? QStringLiteral("comichomepagesort_up.png") : QStringLiteral("comichomepagesort.png");
    const bool up = !m_ascending;
    std::stable_sort(m_chapterList.begin(), m_chapterList.end(),
                     [up](const VORAChapterInfoDTO &a, const VORAChapterInfoDTO &b) {
                         return up ? a.index < b.index : a.index > b.index;
                     });
    reloadTable();
    emit sortChanged();
}

void VORAChapterManager::selectChapterAtRow(int row)
{
    if (const VORAChapterInfoDTO *chapter = m_model->chapterAt(row)) {
        const VORAChapterInfoDTO copy = *chapter;
        selectChapter(copy);
    }
}

VORAReadGate::Outcome VORAChapterManager::selectChapter(const VORAChapterInfoDTO &chapter)
{
    if (isClosing())
        return VORAReadGate::Outcome::Nothing;
    m_chapterId = chapter.chapterId;
    m_comicChapter_Array.clear();
    const VORAComicInfoDTO comic = m_comicInfoDTO.value_or(VORAComicInfoDTO());
    const QDateTime at = now();
    const VORAReadGate::Outcome outcome = VORAReadGate::decide(chapter, comic, at);
    if (outcome == VORAReadGate::Outcome::SignIn)
        setUserViewShown(true); // the gate shows the sign-in view through the controller
    VORAReadHomeViewControllerHooks *controller = m_readHomeController;
    const auto showSignIn = [controller]() {
        if (controller)
            controller->createUserView();
    };
    if (VORAReadGate::apply(chapter, comic, at, showSignIn, this, &m_buyComicOrBuyVipType))
        jumpChapter();
    return outcome;
}

void VORAChapterManager::jumpChapter()
{
    setUserViewShown(false);
    QPointer<VORAChapterManager> self(this);
    if (m_readHomeController)
        m_readHomeController->skipeToChapterWithChapterId(m_chapterId);
    if (self)
        mengbanBtnClick();
}

void VORAChapterManager::cancleButton()
{
    setUserViewShown(false);
    mengbanBtnClick();
}

void VORAChapterManager::cancleButtonSuccess()
{
    setUserViewShown(false);
    mengbanBtnClick();
    if (m_readHomeController)
        m_readHomeController->skipeToChapterWithChapterId(m_chapterId);
}

void VORAChapterManager::setUserViewShown(bool shown)
{
    if (m_userRootViewShown == shown)
        return;
    m_userRootViewShown = shown;
    emit userViewShownChanged();
}

void VORAChapterManager::showUserView(int payKind)
{
    setUserViewShown(true);
    if (!m_readHomeController)
        return;
    QPointer<VORAChapterManager> self(this);
    m_readHomeController->createUserView();
    if (self && m_readHomeController)
        m_readHomeController->pushPayVC(payKind);
}

// --- Dialogs and purchases ---

void VORAChapterManager::alertView(int tag, int buttonIndex)
{
    switch (tag) {
    case VORAChapterPurchase::sealAlertTag:
        // "取消" leaves the panel as it is: the reader never left its chapter.
        if (buttonIndex == 1) {
            qCInfo(lcReader) << "弹出成为vip";
            showUserView(1);
        }
        break;
    case VORAChapterPurchase::notEnoughCoinsTag:
    case VORAChapterPurchase::notEnoughForComicTag:
        if (buttonIndex == 1)
            showUserView(2);
        break;
    case VORAChapterPurchase::coinAlertTag:
        if (buttonIndex == 1) {
            if (!m_comicChapter_Array.contains(m_chapterId))
                m_comicChapter_Array.append(m_chapterId);
            buyChapters(m_comicChapter_Array, 1);
        } else if (buttonIndex == 2) {
            VORAChapterPurchase::showWholeComicAlert(VORAChapterPurchase::wholeComicTotal(m_chapterList),
                                                     VORAAppGlobalData::shareAppGlobalData()->user()->userCoin(), this);
        }
        break;
    case VORAChapterPurchase::buyComicAlertTag:
        if (buttonIndex == 1)
            buyChapters(VORAChapterPurchase::unboughtPaidChapterIds(m_chapterList), 0);
        break;
    case VORAChapterPurchase::boughtAlertTag:
        if (buttonIndex == 1)
            jumpChapter();
        break;
    default:
        break;
    }
}

void VORAChapterManager::buyChapters(const QStringList &chapterIds, int buyType)
{
    if (chapterIds.isEmpty() || m_comicId.isEmpty())
        return;
    m_buyType = buyType;
    VORAChapterPurchase::sendBuyRequest(m_buyService, m_comicId, chapterIds, this);
}

void VORAChapterManager::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error)
{
    if (service == m_buyService)
        parseData(error);
}

void VORAChapterManager::parseData(const NetError *error)
{
    VORAUtility::hideLoadingViewWithParentView(this);
    const QStringList bought = m_buyService->chapterArray;
    m_comicChapter_Array.clear();
    const VORAChapterPurchase::Answer answer = VORAChapterPurchase::readBuyAnswer(*m_buyService, error);
    if (answer != VORAChapterPurchase::Answer::Bought) {
        qCWarning(lcReader) << "chapter purchase not made:" << int(answer) << (error ? error->localizedDescription : QString());
        emit purchaseFinished(false);
        return;
    }

    VORAChapterPurchase::postBuySuccess(this, m_comicId, bought);
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    global->user()->setUserCoin(global->user()->userCoin() - VORAChapterPurchase::costOf(m_chapterList, bought));
    global->saveUser();
    markBought(bought);

    VORAChapterPurchase::showBoughtAlert(this);
    m_buyType = -1;
    emit purchaseFinished(true);
}

void VORAChapterManager::markBought(const QStringList &chapterIds)
{
    // As the site lists a bought chapter: bought and readable.
    const auto mark = [&chapterIds](QList<VORAChapterInfoDTO> &list) {
        for (VORAChapterInfoDTO &c : list) {
            if (chapterIds.contains(c.chapterId)) {
                c.buyed = 1;
                c.is_view = 1;
            }
        }
    };
    mark(m_chapterList);
    if (m_comicInfoDTO)
        mark(m_comicInfoDTO->chapterList);
    reloadTable();
}
