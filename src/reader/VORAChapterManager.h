#pragma once

#include "catalogue/VORAReadGate.h"
#include "net/VORAChapterInfoDTO.h"
#include "net/VORAComicInfoDTO.h"
#include "net/VORAHttpBaseWebServiceDelegate.h"
#include "reader/VORAReaderSidePanel.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class VORABuyChapterService;
class VORAChapterListModel;
class VORAReadHomeViewControllerHooks;

Q_MOC_INCLUDE("reader/VORAChapterListModel.h")

// The reader's chapter panel: the open comic's chapters with the chapter being
// read marked, a count label and a sort button. A tap on a row passes the read
// gate; a readable chapter is opened through the reader screen
// (skipeToChapterWithChapterId) and the panel closes. The gate's dialogs are
// answered here, including buying a chapter or the whole comic with coins;
// after a purchase the panel raises "章节购买成功" (tag 10005), whose "进去阅读"
// opens the chapter.
//
// A sign-in or a top-up started from the panel ends in the chosen chapter:
// "UserViewPostInfo" (signed in) answers with jumpChapter(), and
// "BuyVIPorCoinSuccess" (topped up) with cancleButtonSuccess(). Both are heard
// only while the panel's sign-in / payment view is up (userViewShown).
//
// Sort: `ascending` is false when the panel opens and the rows keep the order
// they were handed over in. Each press flips it and sorts by chapter index,
// ascending exactly when the flag is now false (the flag's name says the
// opposite of the order, as it always has). The button's picture is
// "comichomepagesort.png" after a press from false, "comichomepagesort_up.png"
// after a press from true.
//
// Main thread only. The reader controller creates the panel with the chapter
// being read and the comic, sets itself as readHomeController (not owned; it
// must outlive the panel) and deletes the panel on removeFromSuperview().
class VORAChapterManager : public VORAReaderSidePanel, public VORAHttpBaseWebServiceDelegate
{
    Q_OBJECT
    Q_PROPERTY(VORAChapterListModel *model READ chapterListModel CONSTANT)
    Q_PROPERTY(QString comicId READ comicId CONSTANT)
    Q_PROPERTY(QString countText READ countText NOTIFY chapterListChanged)
    Q_PROPERTY(bool ascending READ ascending NOTIFY sortChanged)
    Q_PROPERTY(QString sortButtonImage READ sortButtonImage NOTIFY sortChanged)
    Q_PROPERTY(QString currentChapterId READ currentChapterId NOTIFY chapterListChanged)
    Q_PROPERTY(bool userViewShown READ userViewShown NOTIFY userViewShownChanged)
    Q_PROPERTY(int rowHeight READ rowHeight CONSTANT)
public:
    // initWithFrame: the chapter being read and the comic's id.
    VORAChapterManager(const QString &chapterId, const QString &comicId, QObject *parent = nullptr);
    ~VORAChapterManager() override;

    void setReadHomeController(VORAReadHomeViewControllerHooks *controller) { m_readHomeController = controller; }
    VORAReadHomeViewControllerHooks *readHomeController() const { return m_readHomeController; }
    // The comic with its chapter list, kept in the order given; then
    // UpdateChapterInfo with the chapter being read.
    void setComicInfoDTO(const VORAComicInfoDTO &comic);

    VORAChapterListModel *chapterListModel() const { return m_model; }
    QString comicId() const { return m_comicId; }
    // The chapter last tapped (at first the one being read).
    QString chapterId() const { return m_chapterId; }
    QString currentChapterId() const { return m_currentChapterId; }
    const QList<VORAChapterInfoDTO> &chapterList() const { return m_chapterList; }
    QString countText() const { return m_countText; }
    bool ascending() const { return m_ascending; }
    QString sortButtonImage() const { return m_sortButtonImage; }
    bool userViewShown() const { return m_userRootViewShown; }
    int rowHeight() const { return 56; }
    int buyType() const { return m_buyType; }
    int buyComicOrBuyVipType() const { return m_buyComicOrBuyVipType; }

    // "当前共有%lu章" for n chapters.
    static QString countTextFor(qsizetype n);

    // The time the seal rule compares with; the clock unless a test sets one.
    QDateTime now() const;
    void setNowForTesting(std::function<QDateTime()> clock) { m_clock = std::move(clock); }

    Q_INVOKABLE void UpdateChapterInfo(const QString &chapterId);
    Q_INVOKABLE void chapterSort();
    // A tap on the row as shown.
    Q_INVOKABLE void selectChapterAtRow(int row);
    VORAReadGate::Outcome selectChapter(const VORAChapterInfoDTO &chapter);
    Q_INVOKABLE void jumpChapter();
    // The sign-in / payment view was left without success.
    Q_INVOKABLE void cancleButton();
    // A top-up succeeded: close and open the chosen chapter.
    Q_INVOKABLE void cancleButtonSuccess();
    // Answer of a dialog raised from the panel (index 0 = first button).
    Q_INVOKABLE void alertView(int tag, int buttonIndex);

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;

signals:
    void chapterListChanged();
    void sortChanged();
    void userViewShownChanged();
    void purchaseFinished(bool success);

private:
    void reloadTable();
    void setUserViewShown(bool shown);
    void showUserView(int payKind);
    void buyChapters(const QStringList &chapterIds, int buyType);
    void parseData(const NetError *error);
    void markBought(const QStringList &chapterIds);

    VORAReadHomeViewControllerHooks *m_readHomeController = nullptr;
    VORAChapterListModel *m_model = nullptr;
    VORABuyChapterService *m_buyService = nullptr;

    QString m_comicId;
    QString m_chapterId;
    QString m_currentChapterId;
    std::optional<VORAComicInfoDTO> m_comicInfoDTO;
    QList<VORAChapterInfoDTO> m_chapterList;
    QString m_countText;
    bool m_ascending = false;
    QString m_sortButtonImage = QStringLiteral("comichomepagesort_up.png");
    bool m_userRootViewShown = false;
    QStringList m_comicChapter_Array;
    int m_buyType = -1; // 1 one chapter, 0 the whole comic, -1 none
    int m_buyComicOrBuyVipType = 0;
    std::function<QDateTime()> m_clock;
};
