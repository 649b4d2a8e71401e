#pragma once

#include "catalogue/VORAReadGate.h"
#include "net/VORAComicInfoDTO.h"
#include "net/VORAHttpBaseWebServiceDelegate.h"

#include <QDateTime>
#include <QObject>
#include <QStringList>
#include <QThreadPool>
#include <QVariantMap>

#include <functional>
#include <optional>

class VORAAutoLoginService;
class VORABuyChapterService;
class VORAChapterView;
class VORAGetComicBasicInfoService;

Q_MOC_INCLUDE("catalogue/VORAChapterView.h")

// The comic detail page (overlay tag 300000), reused by every list: the head
// information, the chapter list with its marks and sort, start / continue
// reading, the read gate on a chapter tap with its dialogs (VORAChapterPurchase's
// tags), chapter purchases and the bookshelf button. A purchase made elsewhere
// (the reader's session or chapter panel) is announced by "BuySuccessPost": the
// page asks the site again for its comic (updateComic).
//
// Reading is not shown here: a readable chapter ends in readRequested(comic,
// chapter, page), which the reader connects to. Sending the user to sign in
// saves the user's jump types and emits signInRequested(); the top-up answers
// of the coin dialogs emit topUpRequested(kind) (1 membership, 2 coins).
//
// Files (the comic cache, the reading position, the download records) are read
// on a worker thread; the answer of the comic request fills the page on the
// main thread.
class VORAComicHomePageView : public QObject, public VORAHttpBaseWebServiceDelegate
{
    Q_OBJECT
    Q_PROPERTY(QString comicId READ comicId NOTIFY comicIdChanged)
    Q_PROPERTY(int state READ state NOTIFY stateChanged)
    Q_PROPERTY(QString waitText READ waitText CONSTANT)
    Q_PROPERTY(bool hasComicInfo READ hasComicInfo NOTIFY comicInfoChanged)
    Q_PROPERTY(QVariantMap headInfo READ headInfo NOTIFY comicInfoChanged)
    Q_PROPERTY(VORAChapterView *chapterView READ chapterView CONSTANT)
    Q_PROPERTY(bool hasReadHistory READ hasReadHistory NOTIFY readHistoryChanged)
    Q_PROPERTY(QString readButtonImage READ readButtonImage NOTIFY readHistoryChanged)
    Q_PROPERTY(QString readButtonPressedImage READ readButtonPressedImage NOTIFY readHistoryChanged)
    Q_PROPERTY(bool inBookshelf READ inBookshelf NOTIFY bookshelfChanged)
    Q_PROPERTY(QString bookshelfButtonImage READ bookshelfButtonImage NOTIFY bookshelfChanged)
    Q_PROPERTY(QString bookshelfButtonPressedImage READ bookshelfButtonPressedImage NOTIFY bookshelfChanged)
    Q_PROPERTY(bool landscape READ isLandscape NOTIFY orientationChanged)
public:
    static constexpr int viewTag = 300000;
    enum State { Waiting = 0, Shown = 1, Failed = 2 };

    explicit VORAComicHomePageView(QObject *parent = nullptr);
    ~VORAComicHomePageView() override;

    QString comicId() const { return m_comicId; }
    int state() const { return m_state; }
    QString waitText() const { return QStringLiteral("正在更新数据"); }
    bool hasComicInfo() const { return m_comicInfoDTO.has_value(); }
    const std::optional<VORAComicInfoDTO> &comicInfoDTO() const { return m_comicInfoDTO; }
    QVariantMap headInfo() const;
    VORAChapterView *chapterView() const { return m_chapterView; }
    bool hasReadHistory() const { return !m_historyChapterId.isEmpty(); }
    QString readButtonImage() const;
    QString readButtonPressedImage() const;
    bool inBookshelf() const { return m_inBookshelf; }
    QString bookshelfButtonImage() const;
    QString bookshelfButtonPressedImage() const;
    bool isLandscape() const { return m_landscape; }
    int buyType() const { return m_buyType; }
    int buyComicOrBuyVipType() const { return m_buyComicOrBuyVipType; }
    QStringList comicChapterArray() const { return m_comicChapter_Array; }

    // --- Rules (pure) ---
    // The cell mark by the comic's is_vip (see VORAChapterView).
    static QString markForChapter(qint64 isVip, const VORAChapterInfoDTO &chapter, const QDateTime &now);
    static QString serialText(qint32 serialStatus);

    // The time the seal rule compares with; the clock unless a test sets one.
    QDateTime now() const;
    void setNowForTesting(std::function<QDateTime()> clock);

    // --- Operations ---
    // A new comic for this (possibly reused) view: clears the page, then
    // initBookshelfAndReadHistory() and beginRequestData().
    Q_INVOKABLE void setComicId(const QString &comicId);
    Q_INVOKABLE void initBookshelfAndReadHistory();
    Q_INVOKABLE void beginRequestData();
    Q_INVOKABLE void readComicBtnClick();
    // A tap on a row of the chapter list (row in the list as shown).
    Q_INVOKABLE void readCurrentChapterAtRow(int row);
    VORAReadGate::Outcome readCurrentChapter(const VORAChapterInfoDTO &chapter);
    Q_INVOKABLE void addBookShelfBtnClick();
    // Back from a sign-in this page asked for: the shelf button that sent the
    // reader there is pressed for him once he is signed in.
    void resumeAfterSignIn();
    Q_INVOKABLE void comicHomePageToOrientation(bool landscape);
    // The close button: the list that opened the page hears removeComicHomePage.
    Q_INVOKABLE void close();
    // Answer of a dialog raised by this page (index 0 = first button).
    Q_INVOKABLE void alertView(int tag, int buttonIndex);

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;
    // "BuySuccessPost" for this comic from another screen: the comic again.
    void updateComic(const QString &comicId);

signals:
    void comicIdChanged();
    void stateChanged();
    void comicInfoChanged();
    void readHistoryChanged();
    void bookshelfChanged();
    void orientationChanged();
    // The local lookups of initBookshelfAndReadHistory are in.
    void localInfoLoaded();
    // The comic answer was applied (or failed).
    void answered();
    void requestFailed();
    void readRequested(const QString &comicId, const QString &chapterId, const QString &pageId);
    void signInRequested();
    void topUpRequested(int kind);
    void purchaseFinished(bool success);
    void removeComicHomePage();

private:
    struct LocalInfo;
    void applyLocalInfo(quint64 generation, const LocalInfo &info);
    void applyComicInfo(const VORAComicInfoDTO &comic, bool fromServer);
    void refreshHeadInf();
    void setState(State state);
    void sendToSignIn();
    void openReader(const QString &chapterId, const QString &pageId);
    void buyChapters(const QStringList &chapterIds, int buyType);
    void handleBuyAnswer(const NetError *error);
    const VORAChapterInfoDTO *chapterWithId(const QString &chapterId) const;

    VORAGetComicBasicInfoService *m_service = nullptr;
    VORABuyChapterService *m_buyService = nullptr;
    VORAAutoLoginService *m_autoLoginService = nullptr;
    VORAChapterView *m_chapterView = nullptr;
    QThreadPool m_io;
    quint64 m_generation = 0;

    QString m_comicId;
    std::optional<VORAComicInfoDTO> m_comicInfoDTO;
    QString m_historyChapterId;
    QString m_historyPageId;
    QStringList m_downloadedChapterIds;
    bool m_inBookshelf = false;
    bool m_addBookshelfAfterSignIn = false;
    State m_state = Waiting;
    bool m_landscape = true;

    std::optional<VORAChapterInfoDTO> m_cacheChapter; // the chapter being opened
    QStringList m_comicChapter_Array;                  // chapter ids to buy
    int m_buyType = -1;                                // 1 one chapter, 0 whole comic, -1 none
    bool m_purchaseReloadPending = false;
    QString m_boughtChapterId;
    int m_buyComicOrBuyVipType = 0;
    std::function<QDateTime()> m_clock;
};
