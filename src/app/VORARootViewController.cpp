#include "VORARootViewController.h"

#include "AppLog.h"
#include "VORAGengXinView.h"
#include "VORASettingView.h"
#include "WelcomeViewController.h"
#include "account/VORAPayViewController.h"
#include "account/VORAWalletHistoryModel.h"
#include "account/VORAUserViewController.h"
#include "catalogue/VORAComicHomePageView.h"
#include "catalogue/VORARecommentView.h"
#include "catalogue/VORASearchView.h"
#include "catalogue/VORASortView.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORAUserConfig.h"
#include "core/VORAUtility.h"
#include "platform/NotificationCenter.h"
#include "reader/VORAReadHomePageViewController.h"
#include "store/VORABookMarkView.h"
#include "store/VORABookShelfManager.h"
#include "store/VORABoolshelf.h"
#include "store/VORARecendRead.h"

#include <QUrl>

VORARootViewController::VORARootViewController(bool landscape, QObject *parent)
    : QObject(parent)
    , m_bookMarkView(new VORABookMarkView(this))
    , m_recendReadView(new VORARecendRead(this))
    , m_gengXinView(new VORAGengXinView(this))
    , m_landscape(landscape)
{
    connect(m_bookMarkView, &ReadingPlaceScreen::readRequested, this, &VORARootViewController::openReader);
    connect(m_recendReadView, &ReadingPlaceScreen::readRequested, this, &VORARootViewController::openReader);
    connect(m_gengXinView, &VORAGengXinView::openComicRequested, this, &VORARootViewController::openComicDetail);
    auto &center = NotificationCenter::defaultCenter();
    center.addObserver(this, QString::fromLatin1(VORANotificationNames::downloadCountChange),
                       [this](const Notification &n) { downloadUpdate(n); });
    center.addObserver(this, QString::fromLatin1(VORANotificationNames::bookshelfLatestCountChange),
                       [this](const Notification &) { bookshelfUpdate(); });
    center.addObserver(this, QString::fromLatin1(VORANotificationNames::changeApplicationToOrientaion),
                       [this](const Notification &) { rootViewControllerToOrientation(); });

    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    const QString background = global->appStatus()->backgroundString();
    updateBackground(background.isEmpty() ? QStringLiteral("one") : background);

    center.post(QString::fromLatin1(VORANotificationNames::bookshelfLatestCountChange));

    if (global->appStatus()->appOpenCount() == 1) {
        m_welcomeView = new WelcomeViewController(m_landscape, this);
        connect(m_welcomeView, &WelcomeViewController::showHomePage, this, &VORARootViewController::showHomePage);
    }
}

VORARootViewController::~VORARootViewController()
{
    NotificationCenter::defaultCenter().removeObserver(this);
}

QVariantList VORARootViewController::buttons() const
{
    return {
        QVariantMap{{QStringLiteral("tag"), 100}, {QStringLiteral("title"), QStringLiteral("推荐")},
                    {QStringLiteral("icon"), QStringLiteral("btnrecommend.png")}},
        QVariantMap{{QStringLiteral("tag"), 101}, {QStringLiteral("title"), QStringLiteral("少年")},
                    {QStringLiteral("icon"), QStringLiteral("btnsort.png")}},
        QVariantMap{{QStringLiteral("tag"), 102}, {QStringLiteral("title"), QStringLiteral("少女")},
                    {QStringLiteral("icon"), QStringLiteral("btnsort.png")}},
        QVariantMap{{QStringLiteral("tag"), 103}, {QStringLiteral("title"), QStringLiteral("青年")},
                    {QStringLiteral("icon"), QStringLiteral("btnsort.png")}},
        QVariantMap{{QStringLiteral("tag"), 104}, {QStringLiteral("title"), QStringLiteral("儿童")},
                    {QStringLiteral("icon"), QStringLiteral("btnsort.png")}},
        QVariantMap{{QStringLiteral("tag"), 105}, {QStringLiteral("title"), QStringLiteral("书架")},
                    {QStringLiteral("icon"), QStringLiteral("btnbookshelf.png")}},
        QVariantMap{{QStringLiteral("tag"), 107}, {QStringLiteral("title"), QStringLiteral("搜索")},
                    {QStringLiteral("icon"), QStringLiteral("btnsearch.png")}},
        QVariantMap{{QStringLiteral("tag"), 109}, {QStringLiteral("title"), QStringLiteral("我的")},
                    {QStringLiteral("icon"), QStringLiteral("btnuser.png")}},
        QVariantMap{{QStringLiteral("tag"), 108}, {QStringLiteral("title"), QStringLiteral("设置")},
                    {QStringLiteral("icon"), QStringLiteral("btnsetting.png")}},
    };
}

bool VORARootViewController::hasScreen(int tag)
{
    return tag == 100 || (tag >= 101 && tag <= 105) || tag == 107 || tag == 108 || tag == 109 || tag == 111
        || tag == 112;
}


void VORARootViewController::switchView(int tag)
{
    if (tag == 109) {
        VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
        global->setUserViewJump(0, 2);
    } else if (tag == 108 || tag == 110) {
        // Settings and skins open over whatever detail overlay is showing.
        btnSwitchView(tag);
        return;
    }
    removeComicDetailAndDownloadDeitail();
    btnSwitchView(tag);
}

void VORARootViewController::btnSwitchView(int tag)
{
    if (tag < 100 || tag > 112)
        return;
    if (!hasScreen(tag)) {
        qCInfo(lcApp) << "button" << tag << "has no screen in this build";
        return;
    }
    if (tag <= 107) {
        if (m_buttonCount == tag + 1)
            return; // already the current screen
        initintager();
        initViewState();
        m_buttonCount = tag + 1;
        if (tag == 100 && !m_recommentView)
            createRecommentView();
        if (tag == 100)
            m_recommentView->recommendToOrientation(m_landscape);
        if (tag >= 101 && tag <= 104) {
            if (!m_sortView)
                createSortView();
            m_sortView->sortToOrientation(m_landscape);
            // 1, 2, 4, 8: behind the loading panel for 0.5 s, then the first page.
            m_sortView->showCategoryType(qint64(1) << (tag - 101));
        }
        if (tag == 105) {
            if (!m_bookshelfView)
                createBookshelfView();
            m_bookshelfView->updateView();
        }
        if (tag == 107) {
            if (!m_searchView)
                createSearchView();
            m_searchView->searchToOrientation(m_landscape);
            m_searchView->begainRequestData();
        }
        emit currentChanged();
        return;
    }
    if (tag == 108) {
        if (!m_settingView) {
            m_settingView = new VORASettingView(this);
            emit screensChanged();
        } else {
            m_settingView->refreshCacheSize();
            m_settingView->refreshUser();
        }
        setDimmingAlpha(0.6);
        if (!m_settingsOpen) {
            m_settingsOpen = true;
            emit settingsOpenChanged();
        }
        return;
    }
    if (tag == 109) {
        // The panel reads the user afresh each time it slides in.
        if (!m_userView)
            createUserView();
        else
            m_userView->upDateUserBasic();
        setDimmingAlpha(0.6);
        if (!m_userViewOpen) {
            m_userViewOpen = true;
            emit userViewOpenChanged();
            fatherToucuInView();
        }
        return;
    }
    if (tag == 111 || tag == 112) {
        VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
        if (global->user()->isLogin()) {
            openPay(tag == 111 ? VORAPayViewController::Membership : VORAPayViewController::Coins);
            return;
        }
        // Signed out: the panel signs the reader in first, then its jump opens
        // the payment screen of the button (0 membership, 1 coins).
        global->setUserViewJump(0, tag == 111 ? 0 : 1);
        btnSwitchView(109);
    }
}

void VORARootViewController::createUserView()
{
    m_userView = new VORAUserViewController(this);
    connect(m_userView, &VORAUserViewController::closeRequested, this, &VORARootViewController::closeUserView);
    // Signed in from a top-up button: the payment screen takes the panel's place.
    connect(m_userView, &VORAUserViewController::topUpRequested, this, [this](int kind) {
        openPay(kind);
        closeUserView();
    });
    emit screensChanged();
}

void VORARootViewController::closeUserView()
{
    if (!m_userViewOpen)
        return;
    m_userViewOpen = false;
    emit userViewOpenChanged();
    fatherToucuOutView();
    cancleButton();
}

void VORARootViewController::createRecommentView()
{
    m_recommentView = new VORARecommentView(this);
    connect(m_recommentView, &VORARecommentView::openComicRequested, this, &VORARootViewController::openComicDetail);
    connect(m_recommentView, &VORARecommentView::openUrlRequested, this, &VORARootViewController::openUrlRequested);
    emit screensChanged();
}

void VORARootViewController::createSortView()
{
    m_sortView = new VORASortView(this);
    connect(m_sortView, &VORASortView::openComicRequested, this, &VORARootViewController::openComicDetail);
    emit screensChanged();
}

void VORARootViewController::createSearchView()
{
    m_searchView = new VORASearchView(this);
    connect(m_searchView, &VORASearchView::openComicRequested, this, &VORARootViewController::openComicDetail);
    emit screensChanged();
}

void VORARootViewController::createBookshelfView()
{
    m_bookshelfView = new VORABoolshelf(this);
    connect(m_bookshelfView, &VORABoolshelf::openComicRequested, this, &VORARootViewController::openComicDetail);
    connect(m_bookshelfView, &VORABoolshelf::readRequested, this, &VORARootViewController::openReader);
    connect(m_bookshelfView, &VORABoolshelf::signInRequested, this, &VORARootViewController::requestSignIn);
    emit screensChanged();
}

void VORARootViewController::initViewState()
{
    // The screens are shown by currentTag; nothing else is visible to hide.
}

void VORARootViewController::initintager()
{
    m_buttonCount = 1;
}

void VORARootViewController::removeComicDetailAndDownloadDeitail()
{
    if (m_comicDetail.isEmpty())
        return;
    m_comicDetail.clear();
    emit comicDetailChanged();
    fatherToucuOutView();
    // The page may have added or removed a shelf comic: the badge and the shelf follow.
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::bookshelfLatestCountChange));
}

void VORARootViewController::closeSettingView()
{
    if (m_settingsOpen) {
        m_settingsOpen = false;
        emit settingsOpenChanged();
    }
    cancleButton();
}

void VORARootViewController::cancleButton()
{
    // Back from the sign-in the detail page asks again (the user may see other chapters now).
    if (m_isRefurbish && m_comicHomePageView && hasComicDetail()) {
        m_comicHomePageView->resumeAfterSignIn();
        m_comicHomePageView->initBookshelfAndReadHistory();
        m_comicHomePageView->beginRequestData();
    }
    m_isRefurbish = false;
    if (!m_userViewOpen && !walletOpen() && !m_settingsOpen)
        setDimmingAlpha(0);
}

void VORARootViewController::setDimmingAlpha(qreal alpha)
{
    if (qFuzzyCompare(m_dimmingAlpha + 1, alpha + 1))
        return;
    m_dimmingAlpha = alpha;
    emit dimmingChanged();
}

QString VORARootViewController::badgeText(qint64 count)
{
    return count > 99 ? QStringLiteral("N") : QString::number(count);
}

void VORARootViewController::downloadUpdate(const Notification &n)
{
    const QString text = n.userInfo.value(QString::fromLatin1(VORANotificationNames::downloadCount)).toString().trimmed();
    bool ok = false;
    const qint64 count = text.toLongLong(&ok);
    if (!ok || count <= 0) {
        // "0", and anything that is not a count, hides the badge.
        if (!ok && !text.isEmpty())
            qCWarning(lcApp) << "download count is not a number:" << text;
        m_downloadBadgeVisible = false;
        m_downloadBadge.clear();
    } else {
        m_downloadBadgeVisible = true;
        m_downloadBadge = badgeText(count);
    }
    emit badgesChanged();
}

QList<VORABookShelf> VORARootViewController::getBookshelfUpdateArray() const
{
    QList<VORABookShelf> updated;
    if (const VORABookShelfManager *manager = VORABookShelfManager::sharedManager()) {
        for (const VORABookShelf &entry : manager->getAllBookshelf()) {
            if (entry.isHasUpdate)
                updated.append(entry);
        }
    }
    return updated;
}

void VORARootViewController::bookshelfUpdate()
{
    if (m_bookshelfView)
        m_bookshelfView->updateView();
    const QList<VORABookShelf> updated = getBookshelfUpdateArray();
    const qint64 count = updated.size();
    if (count > 0 && !VORAUserConfig::shareUserConfigInstance()->isNotifyUpdate()) {
        // Updates are not to be shown: the badge goes, the panel keeps what it had.
        m_bookshelfBadgeVisible = false;
        emit badgesChanged();
        m_gengXinView->closePanel();
        return;
    }
    m_bookshelfBadgeVisible = count > 0;
    m_bookshelfBadge = count > 0 ? badgeText(count) : QString();
    emit badgesChanged();
    rightGengXinEvaluate(updated);
}

void VORARootViewController::rightGengXinEvaluate(const QList<VORABookShelf> &updated)
{
    m_gengXinView->setUpdatedRecords(updated);
}

void VORARootViewController::showHomePage()
{
    if (!m_welcomeView)
        return;
    m_welcomeView->deleteLater();
    m_welcomeView = nullptr;
    emit welcomeChanged();
}

void VORARootViewController::updateBackground(const QString &name)
{
    QString n = name;
    if (!n.endsWith(QLatin1String(".jpg")) && !n.endsWith(QLatin1String(".png")))
        n += QLatin1String(".jpg");
    if (m_backgroundName == n)
        return;
    m_backgroundName = n;
    emit backgroundChanged();
}

void VORARootViewController::setWindowSize(qreal width, qreal height)
{
    if (width <= 0 || height <= 0)
        return;
    const bool landscape = width >= height;
    if (landscape == m_landscape)
        return;
    m_landscape = landscape;
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::changeApplicationToOrientaion));
}

void VORARootViewController::rootViewControllerToOrientation()
{
    if (m_recommentView)
        m_recommentView->recommendToOrientation(m_landscape);
    if (m_sortView)
        m_sortView->sortToOrientation(m_landscape);
    if (m_searchView)
        m_searchView->searchToOrientation(m_landscape);
    if (m_comicHomePageView)
        m_comicHomePageView->comicHomePageToOrientation(m_landscape);
    if (m_welcomeView)
        m_welcomeView->welcomeToOrientation(m_landscape);
    emit orientationChanged();
}

void VORARootViewController::openComicDetail(const QString &comicId, const QString &comicName, const QString &comicCover)
{
    const bool reuse = !m_comicDetail.isEmpty();
    m_comicDetail = QVariantMap{{QStringLiteral("tag"), comicDetailTag},
                                {QStringLiteral("comicId"), comicId},
                                {QStringLiteral("comicName"), comicName},
                                {QStringLiteral("comicCover"), comicCover}};
    // One detail page for every list: a reused page is given the new comic.
    if (!m_comicHomePageView) {
        m_comicHomePageView = new VORAComicHomePageView(this);
        connect(m_comicHomePageView, &VORAComicHomePageView::removeComicHomePage, this,
                &VORARootViewController::removeComicDetailAndDownloadDeitail);
        connect(m_comicHomePageView, &VORAComicHomePageView::signInRequested, this, &VORARootViewController::requestSignIn);
        connect(m_comicHomePageView, &VORAComicHomePageView::readRequested, this, &VORARootViewController::openReader);
        connect(m_comicHomePageView, &VORAComicHomePageView::topUpRequested, this, [this](int kind) {
            // Back from the payment the page asks again: a member reads other chapters.
            m_isRefurbish = true;
            openPay(kind);
        });
        emit screensChanged();
    }
    m_comicHomePageView->comicHomePageToOrientation(m_landscape);
    m_comicHomePageView->setComicId(comicId);
    emit comicDetailChanged();
    if (!reuse)
        fatherToucuInView();
}

void VORARootViewController::requestSignIn()
{
    m_isRefurbish = true;
    btnSwitchView(109);
}

void VORARootViewController::openReader(const QString &comicId, const QString &chapterId, const QString &pageId)
{
    if (comicId.isEmpty())
        return;
    if (m_reader) {
        m_reader->disconnect(this);
        m_reader->deleteLater();
        m_reader = nullptr;
    }
    qCInfo(lcApp) << "reader: comic" << comicId << "chapter" << chapterId << "page" << pageId;
    m_reader = new VORAReadHomePageViewController(this);
    connect(m_reader, &VORAReadHomePageViewController::closed, this, &VORARootViewController::closeReader);
    connect(m_reader, &VORAReadHomePageViewController::signInRequested, this, &VORARootViewController::requestSignIn);
    // The reader's chapter panel answers a top-up itself ("BuyVIPorCoinSuccess").
    connect(m_reader, &VORAReadHomePageViewController::payRequested, this, &VORARootViewController::openPay);
    emit readerChanged();
    fatherToucuInView();
    m_reader->applyReadMode();
    m_reader->openComic(comicId, chapterId, pageId);
}

void VORARootViewController::closeReader()
{
    if (!m_reader)
        return;
    VORAReadHomePageViewController *reader = m_reader;
    m_reader = nullptr;
    reader->disconnect(this);
    reader->deleteLater();
    emit readerChanged();
    // Reading moved the recent-reading list and may have added bookmarks.
    m_bookMarkView->updateView();
    m_recendReadView->updateView();
    // The position is in the store: "continue reading" follows it.
    if (m_comicHomePageView && hasComicDetail())
        m_comicHomePageView->initBookshelfAndReadHistory();
    else
        fatherToucuOutView();
}

void VORARootViewController::openPay(int kind)
{
    if (kind != VORAPayViewController::Membership && kind != VORAPayViewController::Coins)
        return;
    if (!m_payView) {
        m_payView = new VORAPayViewController(this);
        connect(m_payView, &VORAPayViewController::openUrlRequested, this, &VORARootViewController::openUrlRequested);
        connect(m_payView, &VORAPayViewController::signInRequested, this, &VORARootViewController::requestSignIn);
        emit screensChanged();
    }
    m_payView->pushPayVC(kind);
    setDimmingAlpha(0.6);
    if (!m_payOpen) {
        m_payOpen = true;
        emit walletChanged();
        fatherToucuInView();
    }
}

void VORARootViewController::closePay()
{
    if (!m_payOpen)
        return;
    m_payOpen = false;
    emit walletChanged();
    if (!walletOpen()) {
        fatherToucuOutView();
        if (!m_settingsOpen)
            cancleButton();
    }
}

void VORARootViewController::openWalletHistory(int kind)
{
    if (kind < VORAWalletHistoryModel::CoinLog || kind > VORAWalletHistoryModel::TicketLog)
        return;
    VORAWalletHistoryModel *&list = m_walletHistories[kind];
    if (!list)
        list = new VORAWalletHistoryModel(VORAWalletHistoryModel::Kind(kind), this);
    list->reload();
    const bool opened = !m_walletHistoryOpen;
    m_walletHistory = list;
    m_walletHistoryOpen = true;
    setDimmingAlpha(0.6);
    emit walletChanged();
    if (opened && !m_payOpen)
        fatherToucuInView();
}

void VORARootViewController::closeWalletHistory()
{
    if (!m_walletHistoryOpen)
        return;
    m_walletHistoryOpen = false;
    emit walletChanged();
    if (!walletOpen()) {
        fatherToucuOutView();
        if (!m_settingsOpen)
            cancleButton();
    }
}

void VORARootViewController::dimmingTapped()
{
    if (walletOpen())
        return;
    if (m_userViewOpen)
        closeUserView();
    else
        closeSettingView();
}

void VORARootViewController::requestSignOut()
{
    VORAUtility::requestAlertMessage(QStringLiteral("确定要退出当前账号吗？"), QStringLiteral("温馨提醒"), signOutAlertTag,
                                     QStringLiteral("退出"), QStringLiteral("取消"), this);
}

void VORARootViewController::alertView(int tag, int buttonIndex)
{
    if (tag != signOutAlertTag || buttonIndex != 0)
        return;
    if (!m_userView)
        createUserView();
    m_userView->signOut();
}

void VORARootViewController::fatherToucuInView()
{
    // The banner pauses while a panel covers the feed.
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::recommentInvalidateNSTimer));
}

void VORARootViewController::fatherToucuOutView()
{
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::recommentIsValueNSTimer));
}
