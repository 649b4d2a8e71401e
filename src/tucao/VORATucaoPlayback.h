#pragma once

#include "core/VORANotificationNames.h"
#include "net/VORATucao.h"

#include <QAbstractListModel>
#include <QList>
#include <QSizeF>
#include <QString>
#include <QTimer>
#include <QVariantMap>

#include <optional>

// The tucao of one page and their playback: the page's tucao in the order
// fetched (tucaoViewLists), the ones on screen (currentDisplayTucaoViewList,
// which is this model's rows), the playback that brings them in one by one,
// and the stepping through whole groups.
//
// Playback on the current page: setTucao() arms a one-shot timer of 2.5 s
// (only when no timer runs); it fires startTucaoPlayback(): the screen is
// emptied, showTucaoFlag set, the group index set to 1 and beginShowTucao()
// starts a repeating 1.5 s timer that calls showTucaoOneByOne(). Up to 21
// tucao stand on screen; from the 22nd on, the one at place (index mod 20) is
// replaced, so place 20 is never reused. hideTucaoView() stops everything.
//
// Groups: showLastPageTucao()/showNextPageTucao() stop the playback and, 0.2 s
// later (a newer press replaces an older one), call lastPageTucao() or
// nextPageTucao(), which put one whole group of tucaoNumPerPage on screen.
// currentTucaoPageIndex is the group the next "next" shows (1 once playback
// has started, as playback itself begins with group 0); "previous" steps it
// back and shows that group, and after group 0 it becomes -1, so one more
// press only tells the reader that this is the first group. A page whose image
// is too small for a group (tucaoNumPerPage 0) steps through all its tucao as
// one group.
//
// Every step is a public function: the timers call the same functions, and
// tests call them directly. Main thread only.
//
// Roles: tucaoId, content, nickName, x, y, width, height (image pixels),
// isOwn (written by the signed-in user).
class VORATucaoPlayback : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int tucaoCount READ tucaoCount NOTIFY tucaoListChanged)
    Q_PROPERTY(qreal imageWidth READ imageWidth NOTIFY imageSizeChanged)
    Q_PROPERTY(qreal imageHeight READ imageHeight NOTIFY imageSizeChanged)
    Q_PROPERTY(int tucaoNumPerPage READ tucaoNumPerPage NOTIFY imageSizeChanged)
    Q_PROPERTY(bool showTucaoFlag READ showTucaoFlag NOTIFY playbackChanged)
    Q_PROPERTY(bool playing READ isPlaying NOTIFY playbackChanged)
    Q_PROPERTY(int currentTucaoShowIndex READ currentTucaoShowIndex NOTIFY playbackChanged)
    Q_PROPERTY(int currentTucaoPageIndex READ currentTucaoPageIndex NOTIFY playbackChanged)
    Q_PROPERTY(bool isCurrentPage READ isCurrentPage NOTIFY currentPageChanged)
public:
    enum Roles {
        TucaoIdRole = Qt::UserRole + 1,
        ContentRole,
        NickNameRole,
        XRole,
        YRole,
        WidthRole,
        HeightRole,
        IsOwnRole,
    };

    static constexpr int setTucaoDelayMs = 2500;
    static constexpr int showTucaoIntervalMs = 1500;
    static constexpr int groupStepDelayMs = 200;
    static constexpr int maxDisplayed = 21;
    static constexpr int replacedPlaces = 20;
    static constexpr double groupIndicatorSeconds = 1.0;
    static inline const QString firstGroupText = QStringLiteral("已经是吐槽第一页了");
    static inline const QString lastGroupText = QStringLiteral("已经是吐槽最后一页了");
    // Posted on a long press of one's own tucao; userInfo {"TuCaoView": the
    // view, "tucao": the tucao as a map (roles' names), "playback": this}.
    static inline const QString popUpTucaoEditView = QString::fromLatin1(VORANotificationNames::popUpTucaoEditView);

    explicit VORATucaoPlayback(QObject *parent = nullptr);
    ~VORATucaoPlayback() override;

    // --- The page ---
    // A new list stops the playback and empties the screen.
    void setTucaoList(const QList<VORATucao> &list);
    // The page image's size in pixels; sets tucaoNumPerPage.
    void setImageSize(const QSizeF &size);
    void setPageIndex(int index);
    // The page the strip shows; playback runs only while it is this page.
    void setCurrentImagePageIndex(int index);
    int pageIndex() const { return m_pageIndex; }
    int currentImagePageIndex() const { return m_currentImagePageIndex; }
    bool isCurrentPage() const { return m_pageIndex == m_currentImagePageIndex; }

    // The start delay, the pace of playback and the group-step delay (the
    // constants above unless a test shortens them).
    void setTimerIntervals(int startMs, int showMs, int groupMs);

    // --- Playback ---
    Q_INVOKABLE void setTucao();
    Q_INVOKABLE void startTucaoPlayback(); // what the 2.5 s timer does
    Q_INVOKABLE void beginShowTucao();
    Q_INVOKABLE void showTucaoOneByOne();
    Q_INVOKABLE void hideTucaoView();
    // Play (again) or pause on the current page; a pause leaves the tucao on screen.
    Q_INVOKABLE void playTucao(bool play);

    // --- Groups ---
    Q_INVOKABLE void showLastPageTucao();
    Q_INVOKABLE void showNextPageTucao();
    void lastPageTucao();
    void nextPageTucao();

    // --- Edits ---
    // Takes the tucao off the page (list and screen); false when unknown.
    bool removeTucao(const QString &tucaoId);
    // Puts a tucao on the page at once; one with the same id is replaced. It
    // joins the list where playback will not bring it in a second time.
    void addTucao(const VORATucao &tucao);
    std::optional<VORATucao> tucaoWithId(const QString &tucaoId) const;

    // A long press on the tucao shown at row: one's own posts
    // "PopUpTucaoEditView" and answers true; any other is ignored.
    Q_INVOKABLE bool longPressTucao(int row, QObject *view);
    Q_INVOKABLE QVariantMap tucaoAt(int row) const;
    bool isOwnTucao(const VORATucao &tucao) const;

    // --- State ---
    QList<VORATucao> tucaoViewLists() const;
    QList<VORATucao> currentDisplayTucaoViewList() const;
    int count() const { return int(m_displayed.size()); }
    int tucaoCount() const { return int(m_entries.size()); }
    qreal imageWidth() const { return m_imageSize.width(); }
    qreal imageHeight() const { return m_imageSize.height(); }
    int tucaoNumPerPage() const { return m_tucaoNumPerPage; }
    bool showTucaoFlag() const { return m_showTucaoFlag; }
    int currentTucaoShowIndex() const { return m_currentTucaoShowIndex; }
    int currentTucaoPageIndex() const { return m_currentTucaoPageIndex; }
    bool isPlaying() const { return m_showTucaoTimer.isActive(); }
    bool isStartPending() const { return m_setTucaoTimer.isActive(); }
    bool isGroupStepPending() const { return m_groupTimer.isActive(); }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

signals:
    void countChanged();
    void tucaoListChanged();
    void imageSizeChanged();
    void playbackChanged();
    void currentPageChanged();

private:
    struct Entry
    {
        VORATucao tucao;
        quint64 key = 0;
    };

    int entryIndex(quint64 key) const;
    int entryIndexOfId(const QString &tucaoId) const;
    // The tucao at a row of the screen; null for a row that is not there.
    const VORATucao *displayedTucao(int row) const;
    void stopTimers();
    void clearDisplay();
    void appendDisplay(quint64 key);
    void replaceDisplay(int place, quint64 key);
    void setDisplay(const QList<quint64> &keys);
    void showGroup(int group);
    int groupSize() const;
    void setPlaybackState(int showIndex, int pageIndex, bool flag);

    QList<Entry> m_entries;     // tucaoViewLists
    QList<quint64> m_displayed; // currentDisplayTucaoViewList (keys of m_entries)
    quint64 m_nextKey = 1;
    QSizeF m_imageSize;
    int m_tucaoNumPerPage = 0;
    int m_pageIndex = 0;
    int m_currentImagePageIndex = 0;
    int m_currentTucaoShowIndex = 0;
    int m_currentTucaoPageIndex = 0;
    bool m_showTucaoFlag = false;
    bool m_groupStepNext = false;
    QTimer m_setTucaoTimer;
    QTimer m_showTucaoTimer;
    QTimer m_groupTimer;
};
