#pragma once

#include "net/VORAChapterInfoDTO.h"
#include "net/VORAComicInfoDTO.h"
#include "net/VORAPageInfoDTO.h"
#include "net/VORATucao.h"
#include "net/VORATucaoDTO.h"
#include "reader/VORAComicViewManager.h"
#include "reader/VORAReadComicManagerDelegate.h"
#include "reader/VORAReadComicManager.h"
#include "reader/VORAReadPageLog.h"
#include "reader/VORAReaderPanels.h"
#include "reader/VORAReaderTucaoEditing.h"
#include "reader/VORAReadHomeViewControllerHooks.h"
#include "tucao/VORATuCaoInputView.h"
#include "tucao/VORATucaoPublisher.h"

#include <QList>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QString>

#include <optional>

class VORAReaderStore;

Q_MOC_INCLUDE("tucao/VORATuCaoEditManager.h")

// The reader screen. Opened with a comic, a chapter and a page id (or
// "kFirstPage" / "kLastPage"), it owns the reading session of the chapter on
// screen (a new VORAReadComicManager for every chapter), the reading surface
// (VORAComicViewManager), the menu bars' state and the read-page log, and
// answers the session's hooks (chapter jumps, sign-in, payment, bookmarks).
// Its panels (VORAReaderPanels), the tucao editing (VORAReaderTucaoEditing)
// and its store work (VORAReaderStore: position, bookmarks) are objects of
// their own that it owns; the QML reaches them through its properties.
//
// Sessions: the chapter on screen keeps its session until the session opening
// the next chapter has answered, so a chapter the read gate refuses (a
// purchase or VIP dialog, a sign-in) or that fails to open leaves the reader
// where it was, still readable. Every session call names its session; a call
// from a session that is neither is ignored. Opening another chapter releases
// the session that was still opening; adopting a new one releases the old.
class VORAReadHomePageViewController : public QObject,
                                       public VORAReadComicManagerDelegate,
                                       public VORAReadHomeViewControllerHooks
{
    Q_OBJECT
    Q_PROPERTY(VORAComicViewManager *comicViewManager READ comicViewManager CONSTANT)
    Q_PROPERTY(QString comicId READ comicId NOTIFY dataChanged)
    Q_PROPERTY(QString chapterId READ chapterId NOTIFY dataChanged)
    Q_PROPERTY(QString pageId READ pageId NOTIFY dataChanged)
    Q_PROPERTY(QString title READ title NOTIFY dataChanged)
    Q_PROPERTY(QString pageLabel READ pageLabel NOTIFY dataChanged)
    Q_PROPERTY(int currentPageIndex READ currentPageIndex NOTIFY dataChanged)
    Q_PROPERTY(int currentChapterIndex READ currentChapterIndex NOTIFY dataChanged)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY dataChanged)
    Q_PROPERTY(bool sliderEnabled READ sliderEnabled NOTIFY dataChanged)
    Q_PROPERTY(int sliderMaximum READ sliderMaximum NOTIFY dataChanged)
    Q_PROPERTY(QString tucaoMenuTitle READ tucaoMenuTitle NOTIFY dataChanged)
    Q_PROPERTY(QString tucaoMenuPageLabel READ tucaoMenuPageLabel NOTIFY dataChanged)
    Q_PROPERTY(int tucaoTotal READ tucaoTotal NOTIFY dataChanged)
    Q_PROPERTY(bool menuShown READ menuShown NOTIFY menuChanged)
    Q_PROPERTY(qreal luminanceValue READ luminanceValue NOTIFY luminanceChanged)
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadingChanged)
    Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)
    Q_PROPERTY(int screenState READ getCurrentScreenState NOTIFY screenStateChanged)
    Q_PROPERTY(bool verticalScreen READ isVerticalScreen NOTIFY readModeChanged)
    Q_PROPERTY(VORAChapterManager *chapterPanel READ chapterManager NOTIFY panelsChanged)
    Q_PROPERTY(VORABookmarkManager *bookmarkPanel READ bookmarkManager NOTIFY panelsChanged)
    Q_PROPERTY(VORAAdjustLuminanceView *luminancePanel READ luminanceView NOTIFY panelsChanged)
    Q_PROPERTY(bool helpShown READ helpShown NOTIFY panelsChanged)
    Q_PROPERTY(VORATuCaoInputView *tucaoInputView READ tucaoInputView CONSTANT)
    Q_PROPERTY(VORATuCaoEditManager *tucaoEditManager READ tucaoEditManager NOTIFY tucaoEditChanged)
public:
    static inline const QString firstChapterText = QStringLiteral("已经是第一章了");
    static inline const QString lastChapterText = QStringLiteral("已经是最后一章了");
    static inline const QString bookmarkExistsText = QStringLiteral("书签已经存在");
    static inline const QString bookmarkAddedText = QStringLiteral("书签添加成功");
    static constexpr double indicatorSeconds = 0.5;

    explicit VORAReadHomePageViewController(QObject *parent = nullptr);
    ~VORAReadHomePageViewController() override;

    // --- State ---
    VORAComicViewManager *comicViewManager() const { return m_comicViewManager; }
    VORAReadComicManager *readComicManager() const { return m_session; }
    // The session opening another chapter, until it answers.
    VORAReadComicManager *pendingReadComicManager() const { return m_pendingSession; }
    VORAReadPageLog *readPageLog() const { return m_readPageLog; }
    VORAReaderPanels *panels() const { return m_panels; }
    VORAReaderTucaoEditing *tucaoEditing() const { return m_tucaoEditing; }
    VORAReaderStore *store() const { return m_store; }
    QString comicId() const { return m_comicId; }
    QString chapterId() const { return m_chapterId; }
    QString pageId() const { return m_pageId; }
    const std::optional<VORAComicInfoDTO> &comicInfoDTO() const { return m_comicInfoDTO; }
    const std::optional<VORAChapterInfoDTO> &chapterInfoDTO() const { return m_chapterInfoDTO; }
    const std::optional<VORAPageInfoDTO> &pageInfoDTO() const { return m_pageInfoDTO; }
    const QList<VORAChapterInfoDTO> &chapterDTOList() const { return m_chapterDTOList; }
    int currentPageIndex() const { return m_currentPageIndex; }
    int currentChapterIndex() const { return m_currentChapterIndex; }
    int pageCount() const;
    QString title() const { return m_title; }
    QString pageLabel() const { return m_pageLabel; }
    bool sliderEnabled() const { return m_sliderEnabled; }
    int sliderMaximum() const { return m_sliderMaximum; }
    QString tucaoMenuTitle() const { return m_tucaoMenuTitle; }
    QString tucaoMenuPageLabel() const { return m_tucaoMenuPageLabel; }
    int tucaoTotal() const { return m_tucaoTotal; }
    bool menuShown() const { return m_menuShown; }
    qreal luminanceValue() const { return m_luminanceValue; }
    bool isLoading() const { return m_loading; }
    bool isActive() const { return m_active; }
    // 1 landscape, 0 portrait: the reading surface's shape.
    int getCurrentScreenState() const;
    // The read mode (the user setting): true = portrait reading.
    bool isVerticalScreen() const;

    // The panels while they are open (the menu entries make them).
    VORAChapterManager *chapterManager() const { return m_panels->chapterManager(); }
    VORABookmarkManager *bookmarkManager() const { return m_panels->bookmarkManager(); }
    VORAAdjustLuminanceView *luminanceView() const { return m_panels->luminanceView(); }
    bool helpShown() const { return m_panels->helpShown(); }

    // Tucao editing.
    VORATuCaoInputView *tucaoInputView() const { return m_tucaoEditing->tucaoInputView(); }
    VORATuCaoEditManager *tucaoEditManager() const { return m_tucaoEditing->tucaoEditManager(); }
    VORATucaoPublisher *tucaoPublisher() const { return m_tucaoEditing->tucaoPublisher(); }

    // --- Rules (pure) ---
    // The page slider's value rounded half up.
    static int roundHalfUp(double value);
    static QString titleText(const QString &comicName, const QString &chapterName);
    static QString pageLabelText(int pageIndex, qsizetype pageCount);

    // --- Opening ---
    // The entry of the app shell and of every list: comic, chapter (may be
    // empty: the first) and page id or sentinel.
    Q_INVOKABLE void openComic(const QString &comicId, const QString &chapterId, const QString &pageId);
    void requestPageDataWithComicId(const QString &comicId, const QString &chapterId, const QString &pageId);

    // --- VORAReadComicManagerDelegate ---
    void comicInfoLoadDidFinishedWithError(VORAReadComicManager *session, const NetError *error) override;
    void pageLoadDidFinishedWithPage(VORAReadComicManager *session, const std::optional<QByteArray> &imageData,
                                     const std::optional<QList<VORATucao>> &tucao, int pageIndex) override;

    // --- Pages and chapters ---
    // The surface asks for a page: inside the chapter it becomes the current
    // page; -1 and the page count cross into the chapter before and after.
    void requestPageWithIndex(int index);
    void turnToLastPageWithIndex(int index);
    void turnToNextPageWithIndex(int index);
    void UpdateData();
    // The page slider.
    Q_INVOKABLE void quickTurnPage(double value);

    // --- Menu ---
    Q_INVOKABLE void showMenu();
    Q_INVOKABLE void hideMenu();
    Q_INVOKABLE void toggleMenu();
    Q_INVOKABLE void backPreviousPage();
    Q_INVOKABLE void addBookmark();
    Q_INVOKABLE void popUpLuminanceView();
    Q_INVOKABLE void popUpBookmarkView();
    Q_INVOKABLE void popUpChapterView();
    Q_INVOKABLE void popUpHelpView();
    Q_INVOKABLE void hideHelpView();
    // Writing a tucao: the sign-in route for nobody signed in; else the page
    // back at its fitted zoom and the input view.
    Q_INVOKABLE void popUpTucaoInputView();
    Q_INVOKABLE void swtichScreen();
    Q_INVOKABLE void swtichScreenToLandscape();
    Q_INVOKABLE void swtichScreenToportraitScreen();
    // The read mode as the screen opens: the shape of the reading surface
    // inside the window (the window itself is the user's).
    Q_INVOKABLE void applyReadMode();
    // The black layer's opacity (the brightness panel sets it).
    Q_INVOKABLE void setLuminanceValue(qreal value);

    // --- Position ---
    // Saves the reading position on the store's worker thread (when the comic,
    // the chapter and the page are known); readingPositionSaved() follows.
    void saveReadHistoryInfo();

    // --- VORAReadHomeViewControllerHooks ---
    void skipeToChapterWithChapterId(const QString &chapterId) override;
    void backCurrentChapterIndex() override;
    void createUserView() override;
    void pushPayVC(int kind) override;
    void skipeToComicWithBookmark(const VORABookMarkDTO &bookmark) override;

signals:
    void dataChanged();
    void menuChanged();
    void luminanceChanged();
    void loadingChanged();
    void activeChanged();
    void screenStateChanged();
    void readModeChanged();
    void panelsChanged();
    void tucaoEditChanged();
    // The chapter on screen changed (a new page list).
    void chapterLoaded();
    void chapterLoadFailed();
    // The sign-in screen, the payment screen (1 membership, 2 coins).
    void signInRequested();
    void payRequested(int kind);
    // The tucao input (a signed-in reader).
    void tucaoInputRequested();
    // The reading position of the comic is in the store.
    void readingPositionSaved(const QString &comicId);
    // The reader was left; the position is saved.
    void closed();

private:
    void adoptSession(VORAReadComicManager *session);
    void releaseSession(VORAReadComicManager *session);
    void onReadRefused(VORAReadComicManager *session, VORAReadGate::Outcome outcome);
    void openChapter(const VORAChapterInfoDTO &chapter, const QString &pageId);
    void setLoading(bool loading);
    void showIndicator(const QString &text);
    void retryCurrentPage(int index);
    void dropCachedPage(int index);

    VORAComicViewManager *m_comicViewManager = nullptr;
    QPointer<VORAReadComicManager> m_session;
    QPointer<VORAReadComicManager> m_pendingSession;
    QPointer<VORAReadPageLog> m_readPageLog;
    VORAReaderPanels *m_panels = nullptr;
    VORAReaderTucaoEditing *m_tucaoEditing = nullptr;
    VORAReaderStore *m_store = nullptr;

    QString m_comicId;
    QString m_chapterId;
    QString m_pageId;
    std::optional<VORAComicInfoDTO> m_comicInfoDTO;
    std::optional<VORAChapterInfoDTO> m_chapterInfoDTO;
    std::optional<VORAPageInfoDTO> m_pageInfoDTO;
    QList<VORAChapterInfoDTO> m_chapterDTOList;
    int m_currentChapterIndex = 0;
    int m_currentPageIndex = 0;

    // The ids of the chapter being opened (kept for a retry).
    QString m_pendingComicId;
    QString m_pendingChapterId;
    QString m_pendingPageId;
    bool m_chapterLoadFailed = false;

    QString m_title;
    QString m_pageLabel;
    bool m_sliderEnabled = false;
    int m_sliderMaximum = 0;
    QString m_tucaoMenuTitle;
    QString m_tucaoMenuPageLabel;
    int m_tucaoTotal = 0;
    bool m_menuShown = false;
    bool m_menuForLoading = false; // shown only while the first chapter opens
    qreal m_luminanceValue = 0;
    bool m_loading = false;
    bool m_active = true;
    bool m_closing = false;
};
