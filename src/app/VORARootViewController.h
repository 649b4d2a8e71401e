#pragma once

#include "store/VORABookShelf.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QPointer>
#include <QVariantList>
#include <QVariantMap>

class VORABookMarkView;
class VORABoolshelf;
class VORAComicHomePageView;
class VORAGengXinView;
class VORAPayViewController;
class VORAWalletHistoryModel;
class VORAReadHomePageViewController;
class VORARecendRead;
class VORARecommentView;
class VORASearchView;
class VORASortView;
class VORASettingView;
class VORAUserViewController;
class WelcomeViewController;
struct Notification;

Q_MOC_INCLUDE("VORAGengXinView.h")
Q_MOC_INCLUDE("VORASettingView.h")
Q_MOC_INCLUDE("WelcomeViewController.h")
Q_MOC_INCLUDE("account/VORAPayViewController.h")
Q_MOC_INCLUDE("account/VORAWalletHistoryModel.h")
Q_MOC_INCLUDE("account/VORAUserViewController.h")
Q_MOC_INCLUDE("catalogue/VORAComicHomePageView.h")
Q_MOC_INCLUDE("catalogue/VORARecommentView.h")
Q_MOC_INCLUDE("catalogue/VORASearchView.h")
Q_MOC_INCLUDE("catalogue/VORASortView.h")
Q_MOC_INCLUDE("reader/VORAReadHomePageViewController.h")
Q_MOC_INCLUDE("store/VORABoolshelf.h")
Q_MOC_INCLUDE("store/VORABookMarkView.h")
Q_MOC_INCLUDE("store/VORARecendRead.h")

// The one root screen controller: the main screens side by side, switched by
// button tag (screens are created on first switch and then kept), the overlays
// by view tag (comic detail 300000, download detail 300001, dimming 777777),
// the two badges, the welcome pages of the first launch and the sign-out
// confirmation. Only the buttons whose screens exist are offered.
//
// The wallet's screens open over whatever is shown (the shell, the detail page
// or the reader) behind the dimming layer: the payment screen (tags 111 and
// 112, the reader's and the detail page's top-up requests, openPay) and the
// history lists (openWalletHistory). Their objects are made on first use and
// kept, so an order waiting for payment survives closing the screen.
//
// The user panel (tag 109) slides in over the dimming layer, above the shell
// and above the reader: the main button opens it, and so does every request to
// sign in (the detail page, the reader's read gate, the tucao editor), after
// which the panel's own jump decides whether it closes by itself. Closing it
// runs cancleButton (the detail page asks again when a sign-in was requested).
class VORARootViewController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the app delegate makes the one root controller")
    Q_PROPERTY(int buttonCount READ buttonCount NOTIFY currentChanged)
    Q_PROPERTY(int currentTag READ currentTag NOTIFY currentChanged)
    Q_PROPERTY(QVariantList buttons READ buttons CONSTANT)
    Q_PROPERTY(VORARecommentView *recommentView READ recommentView NOTIFY screensChanged)
    Q_PROPERTY(VORASettingView *settingView READ settingView NOTIFY screensChanged)
    Q_PROPERTY(VORASortView *sortView READ sortView NOTIFY screensChanged)
    Q_PROPERTY(VORASearchView *searchView READ searchView NOTIFY screensChanged)
    Q_PROPERTY(VORABoolshelf *bookshelfView READ bookshelfView NOTIFY screensChanged)
    Q_PROPERTY(VORAComicHomePageView *comicHomePageView READ comicHomePageView NOTIFY screensChanged)
    Q_PROPERTY(bool settingsOpen READ settingsOpen NOTIFY settingsOpenChanged)
    Q_PROPERTY(qreal dimmingAlpha READ dimmingAlpha NOTIFY dimmingChanged)
    Q_PROPERTY(QString downloadBadge READ downloadBadge NOTIFY badgesChanged)
    Q_PROPERTY(bool downloadBadgeVisible READ downloadBadgeVisible NOTIFY badgesChanged)
    Q_PROPERTY(QString bookshelfBadge READ bookshelfBadge NOTIFY badgesChanged)
    Q_PROPERTY(bool bookshelfBadgeVisible READ bookshelfBadgeVisible NOTIFY badgesChanged)
    // The side panel of updated comics, opened from the bookshelf badge.
    Q_PROPERTY(VORAGengXinView *gengXinView READ gengXinView CONSTANT)
    Q_PROPERTY(WelcomeViewController *welcomeView READ welcomeView NOTIFY welcomeChanged)
    Q_PROPERTY(bool landscape READ isLandscape NOTIFY orientationChanged)
    Q_PROPERTY(QVariantMap comicDetail READ comicDetail NOTIFY comicDetailChanged)
    Q_PROPERTY(QString backgroundName READ backgroundName NOTIFY backgroundChanged)
    Q_PROPERTY(VORAReadHomePageViewController *readHomePageViewController READ readHomePageViewController NOTIFY readerChanged)
    Q_PROPERTY(VORAPayViewController *payView READ payView NOTIFY screensChanged)
    Q_PROPERTY(bool payOpen READ payOpen NOTIFY walletChanged)
    // The history list of the kind last opened (null before the first opening).
    Q_PROPERTY(VORAWalletHistoryModel *walletHistory READ walletHistory NOTIFY walletChanged)
    Q_PROPERTY(bool walletHistoryOpen READ walletHistoryOpen NOTIFY walletChanged)
    Q_PROPERTY(VORAUserViewController *userView READ userView NOTIFY screensChanged)
    Q_PROPERTY(bool userViewOpen READ userViewOpen NOTIFY userViewOpenChanged)
    // The bookmarks and recent-reading lists of the bookshelf screen: made with
    // the controller, read from the store when shown (updateView) and again
    // when the reader closes; a row opens the reader at its place.
    Q_PROPERTY(VORABookMarkView *bookMarkView READ bookMarkView CONSTANT)
    Q_PROPERTY(VORARecendRead *recendReadView READ recendReadView CONSTANT)
public:
    static constexpr int comicDetailTag = 300000;
    static constexpr int downloadDetailTag = 300001;
    static constexpr int dimmingViewTag = 777777;
    static constexpr int signOutAlertTag = 4;

    explicit VORARootViewController(bool landscape, QObject *parent = nullptr);
    ~VORARootViewController() override;

    int buttonCount() const { return m_buttonCount; }
    int currentTag() const { return m_buttonCount - 1; }
    QVariantList buttons() const;
    static bool hasScreen(int tag);

    VORARecommentView *recommentView() const { return m_recommentView; }
    VORASettingView *settingView() const { return m_settingView; }
    VORASortView *sortView() const { return m_sortView; }
    VORASearchView *searchView() const { return m_searchView; }
    VORABoolshelf *bookshelfView() const { return m_bookshelfView; }
    VORAComicHomePageView *comicHomePageView() const { return m_comicHomePageView; }
    bool settingsOpen() const { return m_settingsOpen; }
    qreal dimmingAlpha() const { return m_dimmingAlpha; }
    QString downloadBadge() const { return m_downloadBadge; }
    bool downloadBadgeVisible() const { return m_downloadBadgeVisible; }
    QString bookshelfBadge() const { return m_bookshelfBadge; }
    bool bookshelfBadgeVisible() const { return m_bookshelfBadgeVisible; }
    VORAGengXinView *gengXinView() const { return m_gengXinView; }
    WelcomeViewController *welcomeView() const { return m_welcomeView; }
    bool isLandscape() const { return m_landscape; }
    QVariantMap comicDetail() const { return m_comicDetail; }
    bool hasComicDetail() const { return !m_comicDetail.isEmpty(); }
    QString backgroundName() const { return m_backgroundName; }
    // The reader while it is open (full screen over everything else).
    VORAReadHomePageViewController *readHomePageViewController() const { return m_reader; }
    VORAPayViewController *payView() const { return m_payView; }
    bool payOpen() const { return m_payOpen; }
    VORAWalletHistoryModel *walletHistory() const { return m_walletHistory; }
    bool walletHistoryOpen() const { return m_walletHistoryOpen; }
    // True while a wallet screen is shown over the rest.
    bool walletOpen() const { return m_payOpen || m_walletHistoryOpen; }
    // The user panel, made on first opening and kept.
    VORAUserViewController *userView() const { return m_userView; }
    bool userViewOpen() const { return m_userViewOpen; }
    VORABookMarkView *bookMarkView() const { return m_bookMarkView; }
    VORARecendRead *recendReadView() const { return m_recendReadView; }

    // Entry point of every main button.
    Q_INVOKABLE void switchView(int tag);
    Q_INVOKABLE void btnSwitchView(int tag);
    void createRecommentView();
    void createSortView();
    void createSearchView();
    void createBookshelfView();
    void initViewState();
    void initintager();
    Q_INVOKABLE void removeComicDetailAndDownloadDeitail();
    Q_INVOKABLE void closeSettingView();
    Q_INVOKABLE void cancleButton();
    // The user panel's close button, and its own way back after a sign-in.
    Q_INVOKABLE void closeUserView();
    // Sends the reader to sign in: the user panel on its sign-in form, over
    // whatever is shown; the detail page is asked again when it closes.
    Q_INVOKABLE void requestSignIn();
    void downloadUpdate(const Notification &n);
    void bookshelfUpdate();
    // The shelf entries marked updated, in the shelf manager's order (its
    // in-memory list: no store read on the main thread).
    QList<VORABookShelf> getBookshelfUpdateArray() const;
    // Hands the updated entries to the side panel.
    void rightGengXinEvaluate(const QList<VORABookShelf> &updated);
    void showHomePage();
    Q_INVOKABLE void updateBackground(const QString &name);
    // The window's size decides the orientation: taller than wide is portrait.
    Q_INVOKABLE void setWindowSize(qreal width, qreal height);
    void rootViewControllerToOrientation();
    // Opens (or reuses) the comic detail overlay, tag 300000.
    Q_INVOKABLE void openComicDetail(const QString &comicId, const QString &comicName, const QString &comicCover);
    // Opens the reader on a comic, a chapter (empty: the first) and a page id
    // or "kFirstPage" / "kLastPage"; the detail page, the bookshelf and the
    // reading history come through here.
    Q_INVOKABLE void openReader(const QString &comicId, const QString &chapterId, const QString &pageId);
    // The reader was left (its position is saved): it goes, and the detail
    // page shows the new position.
    void closeReader();
    // The payment screen for kind 1 (membership) or 2 (coins); other kinds do nothing.
    Q_INVOKABLE void openPay(int kind);
    Q_INVOKABLE void closePay();
    // A history list: 0 coin changes, 1 top-ups, 2 monthly tickets (the
    // VORAWalletHistoryModel kinds), read again from its first page.
    Q_INVOKABLE void openWalletHistory(int kind);
    Q_INVOKABLE void closeWalletHistory();
    // A tap on the dimming layer: closes the user panel or the settings, never a wallet screen
    // (a tap beside the payment panel must not lose the order on screen).
    Q_INVOKABLE void dimmingTapped();
    // The sign-out confirmation.
    Q_INVOKABLE void requestSignOut();
    Q_INVOKABLE void alertView(int tag, int buttonIndex);

    // Touches entering and leaving a panel.
    void fatherToucuInView();
    void fatherToucuOutView();

signals:
    void currentChanged();
    void screensChanged();
    void settingsOpenChanged();
    void dimmingChanged();
    void badgesChanged();
    void welcomeChanged();
    void orientationChanged();
    void comicDetailChanged();
    void backgroundChanged();
    void openUrlRequested(const QUrl &url);
    void readerChanged();
    void walletChanged();
    void userViewOpenChanged();

private:
    void setDimmingAlpha(qreal alpha);
    void createUserView();
    static QString badgeText(qint64 count);

    int m_buttonCount = 1;
    VORARecommentView *m_recommentView = nullptr;
    VORASettingView *m_settingView = nullptr;
    VORASortView *m_sortView = nullptr;
    VORASearchView *m_searchView = nullptr;
    VORABoolshelf *m_bookshelfView = nullptr;
    VORAComicHomePageView *m_comicHomePageView = nullptr;
    VORAReadHomePageViewController *m_reader = nullptr;
    VORAPayViewController *m_payView = nullptr;
    bool m_payOpen = false;
    // One list per kind, made on first opening.
    VORAWalletHistoryModel *m_walletHistories[3] = {};
    VORAWalletHistoryModel *m_walletHistory = nullptr;
    bool m_walletHistoryOpen = false;
    VORAUserViewController *m_userView = nullptr;
    bool m_userViewOpen = false;
    VORABookMarkView *m_bookMarkView = nullptr;
    VORARecendRead *m_recendReadView = nullptr;
    WelcomeViewController *m_welcomeView = nullptr;
    bool m_settingsOpen = false;
    qreal m_dimmingAlpha = 0;
    QString m_downloadBadge;
    bool m_downloadBadgeVisible = false;
    QString m_bookshelfBadge;
    bool m_bookshelfBadgeVisible = false;
    VORAGengXinView *m_gengXinView = nullptr;
    bool m_landscape = true;
    bool m_isRefurbish = false;
    QVariantMap m_comicDetail;
    QString m_backgroundName;
};
