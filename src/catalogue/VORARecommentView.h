#pragma once

#include "net/VORAHttpBaseWebServiceDelegate.h"
#include "net/VORARecommentDTO.h"
#include "net/VORASlideComicDTO.h"

#include <QList>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QUrl>
#include <QVariantList>

class VORAGetRcommentService;
class VORANetWorkNoLinking;

Q_MOC_INCLUDE("catalogue/VORANetWorkNoLinking.h")

// The recommendation feed: four tabs, a banner of slides that advances by
// itself, a grid of comics three to a row and pull-to-refresh. All state and
// rules live here; the QML only draws the properties and calls the invokables.
class VORARecommentView : public QObject, public VORAHttpBaseWebServiceDelegate
{
    Q_OBJECT
    Q_PROPERTY(int curTag READ curTag NOTIFY curTagChanged)
    Q_PROPERTY(QStringList tabTitles READ tabTitles CONSTANT)
    Q_PROPERTY(qreal markerX READ markerX NOTIFY curTagChanged)
    Q_PROPERTY(QVariantList comics READ comics NOTIFY comicsChanged)
    Q_PROPERTY(int rowCount READ rowCount NOTIFY comicsChanged)
    Q_PROPERTY(QVariantList slides READ slides NOTIFY slidesChanged)
    Q_PROPERTY(int timeCount READ timeCount NOTIFY timeCountChanged)
    Q_PROPERTY(bool isStop READ isStop NOTIFY isStopChanged)
    Q_PROPERTY(bool reloadingUp READ reloadingUp NOTIFY reloadingUpChanged)
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadingChanged)
    Q_PROPERTY(bool landscape READ isLandscape NOTIFY orientationChanged)
    Q_PROPERTY(VORANetWorkNoLinking *noNetworkView READ noNetworkView CONSTANT)
    Q_PROPERTY(int rowHeight READ rowHeight CONSTANT)
public:
    static constexpr int firstTag = 2000;
    static constexpr int lastTag = 2003;
    static constexpr int bannerPageCount = 5; // the banner cycles over five pages whatever the slide count
    static constexpr int defaultTimerInterval = 5000;
    static constexpr int refreshDelay = 300;

    static const QString requestFailedText; // "请求服务器失败，网络信号不是太好哟~"
    static const QString noNetworkText;     // "网络死掉了，请揉捏客户端或刷新重试"

    // Builds the screen, listens for the banner notifications, selects tab
    // 2000 and requests it.
    explicit VORARecommentView(QObject *parent = nullptr);
    ~VORARecommentView() override;

    int curTag() const { return m_curTag; }
    QStringList tabTitles() const;
    qreal markerX() const { return (m_curTag - firstTag) * 114.1 + 50.1; }
    QVariantList comics() const;
    int rowCount() const;
    QVariantList slides() const;
    int timeCount() const { return m_timeCount; }
    bool isStop() const { return m_isStop; }
    bool reloadingUp() const { return m_reloadingUp; }
    bool isLoading() const { return m_loading; }
    bool isLandscape() const { return m_landscape; }
    VORANetWorkNoLinking *noNetworkView() const;
    int rowHeight() const { return 205; }

    const QList<VORARecommentDTO> &recommentArray() const { return m_recommentArray; }
    const QList<VORASlideComicDTO> &slideArray() const { return m_slideArray; }
    VORANetWorkNoLinking *noNetwork() const { return m_noNetwork; }
    const VORAGetRcommentService *service() const { return m_service; }

    // Clicks as shown on a cell: plain below 10000, then "483.5万", "1.2亿".
    static QString clickText(const QString &clickTotal);

    // Banner timer interval; 5000 ms unless a test shortens it.
    int timerInterval() const { return m_timer.interval(); }
    void setTimerInterval(int ms);

    Q_INVOKABLE void recommendLabel(int tag);
    Q_INVOKABLE void switchRecommentView(int tag);
    Q_INVOKABLE void begainRequestData();
    Q_INVOKABLE void touchImageView(int index);
    Q_INVOKABLE void handleTapGesture();
    Q_INVOKABLE void scrollViewDidScroll(qreal contentX, qreal width);
    Q_INVOKABLE void reloadTableViewDataSource();
    Q_INVOKABLE void timerTurnNext();
    Q_INVOKABLE void recommendToOrientation(bool landscape);
    // The slide strip: a touch on it pauses the banner, its end lets it run.
    Q_INVOKABLE void slideTouchBegan();
    Q_INVOKABLE void slideTouchEnded();

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;

signals:
    void curTagChanged();
    void comicsChanged();
    void slidesChanged();
    void timeCountChanged();
    void isStopChanged();
    void reloadingUpChanged();
    void loadingChanged();
    void orientationChanged();
    // Tick of the banner timer (whether or not the banner moved).
    void timerFired();
    // A successful answer replaced the lists.
    void answered();
    void requestFailed();
    // Opening a comic: the shell reuses or creates the detail overlay (tag 300000).
    void openComicRequested(const QString &comicId, const QString &comicName, const QString &comicCover);
    // A link slide: the shell opens the address in the system browser.
    void openUrlRequested(const QUrl &url);

private:
    void resetLabel(int tag);
    void initScrollPage();
    void createNSTimer();
    void doneLoadingTableViewData();
    void setTimeCount(int count);
    void setIsStop(bool stop);
    void setLoading(bool loading);
    void openSlideOrComic(const VORASlideComicDTO *slide, const VORARecommentDTO *comic);

    VORAGetRcommentService *m_service = nullptr;
    VORANetWorkNoLinking *m_noNetwork = nullptr;
    QList<VORARecommentDTO> m_recommentArray;
    QList<VORASlideComicDTO> m_slideArray;
    QTimer m_timer;
    int m_curTag = firstTag;
    int m_timeCount = 0;
    bool m_isStop = true;
    bool m_reloadingUp = false;
    bool m_loading = false;
    bool m_landscape = true;
};
