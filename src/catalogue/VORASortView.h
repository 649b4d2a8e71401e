#pragma once

#include "catalogue/VORASortButton.h"
#include "net/VORAHttpBaseWebServiceDelegate.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

class VORAComicListModel;
class VORANetWorkNoLinking;
class VORASortWebService;

Q_MOC_INCLUDE("catalogue/VORAComicListModel.h")
Q_MOC_INCLUDE("catalogue/VORANetWorkNoLinking.h")

// The category screen: comics filtered by one criterion at a time (a theme, a
// serial state, a sort order or, from the shell's category buttons, a type),
// 30 a page, pull-down to reload, pull-up for the next page until a page comes
// back empty, shown as a grid of three or as a list.
//
// Menus: 115 sort, 116 theme, 117 serial (openMenu is the tag of the open one,
// 0 when none). Filter buttons: themes 118-127, serial 128-129, sorts 130-137;
// each waits requestDelay() ms (2000) behind the "加载中..." panel before asking
// for the first page.
class VORASortView : public QObject, public VORAHttpBaseWebServiceDelegate
{
    Q_OBJECT
    Q_PROPERTY(VORAComicListModel *comics READ comicList CONSTANT)
    Q_PROPERTY(int comicCategory READ comicCategory NOTIFY filterChanged)
    Q_PROPERTY(int btnInt READ btnInt NOTIFY filterChanged)
    Q_PROPERTY(QString filterTitle READ filterTitle NOTIFY filterChanged)
    Q_PROPERTY(int sortTableType READ sortTableType NOTIFY layoutChanged)
    Q_PROPERTY(QString layoutButtonImage READ layoutButtonImage NOTIFY layoutChanged)
    Q_PROPERTY(QString layoutButtonPressedImage READ layoutButtonPressedImage NOTIFY layoutChanged)
    Q_PROPERTY(int tableRowCount READ tableRowCount NOTIFY tableChanged)
    Q_PROPERTY(int rowHeight READ rowHeight NOTIFY layoutChanged)
    Q_PROPERTY(int comicTotal READ comicTotal NOTIFY tableChanged)
    Q_PROPERTY(bool hasFooter READ hasFooter NOTIFY tableChanged)
    Q_PROPERTY(int openMenu READ openMenu NOTIFY openMenuChanged)
    Q_PROPERTY(QList<VORASortButton> themeButtons READ themeButtons CONSTANT)
    Q_PROPERTY(QList<VORASortButton> serialButtons READ serialButtons CONSTANT)
    Q_PROPERTY(QList<VORASortButton> sortButtons READ sortButtons CONSTANT)
    Q_PROPERTY(QList<VORASortButton> menuButtons READ menuButtons CONSTANT)
    Q_PROPERTY(bool loadingPanel READ loadingPanel NOTIFY loadingPanelChanged)
    Q_PROPERTY(QString loadingText READ loadingText CONSTANT)
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadingChanged)
    Q_PROPERTY(QString textPanel READ textPanel NOTIFY textPanelChanged)
    Q_PROPERTY(bool reloading READ reloading NOTIFY reloadingChanged)
    Q_PROPERTY(bool reloadingUp READ reloadingUp NOTIFY reloadingChanged)
    Q_PROPERTY(VORANetWorkNoLinking *noNetworkView READ noNetworkView CONSTANT)
    Q_PROPERTY(bool landscape READ isLandscape NOTIFY orientationChanged)
public:
    static constexpr int pageSize = 30;
    static constexpr int defaultRequestDelay = 2000;
    static constexpr int refreshDelay = 300;
    static constexpr int categorySwitchDelay = 500;
    static constexpr int textPanelSeconds = 2;
    static constexpr int headerHeight = 65;
    static constexpr int footerHeight = 65;

    static const QString endOfCategoryText; // "该分类中优质漫画就这么多，看看其他分类O(∩_∩)O~"
    static const QString requestFailedText; // "请求服务器失败，网络信号不是太好哟~"
    static const QString tapToRetryText;    // "请求服务器失败，点击屏幕重新请求哦~！"
    static const QString noNetworkText;     // "网络死掉了，请揉捏客户端或刷新重试"

    explicit VORASortView(QObject *parent = nullptr);
    ~VORASortView() override;

    VORAComicListModel *comicList() const { return m_sortArray; }
    const VORASortWebService *service() const { return m_service; }
    VORANetWorkNoLinking *noNetwork() const { return m_noNetwork; }
    VORANetWorkNoLinking *noNetworkView() const;

    int comicCategory() const { return m_comicCategory; }
    qint64 comicTheme() const { return m_comicTheme; }
    qint64 comicType() const { return m_comicType; }
    qint64 comicSerial() const { return m_comicSerial; }
    qint64 comicSort() const { return m_comicSort; }
    int btnInt() const { return m_btnInt; }
    QString filterTitle() const;
    int sortTableType() const { return m_sortTableType; }
    QString layoutButtonImage() const;
    QString layoutButtonPressedImage() const;
    int tableRowCount() const;
    int rowHeight() const { return m_sortTableType == 0 ? 205 : 156; }
    int comicTotal() const { return int(m_comicTotal); }
    bool hasFooter() const { return m_hasFooter; }
    int openMenu() const { return m_openMenu; }
    QList<VORASortButton> themeButtons() const;
    QList<VORASortButton> serialButtons() const;
    QList<VORASortButton> sortButtons() const;
    QList<VORASortButton> menuButtons() const;
    bool loadingPanel() const { return m_loadingPanel; }
    QString loadingText() const { return QStringLiteral("加载中..."); }
    bool isLoading() const { return m_loading; }
    QString textPanel() const { return m_textPanel; }
    bool reloading() const { return m_reloading; }
    bool reloadingUp() const { return m_reloadingUp; }
    bool isLandscape() const { return m_landscape; }

    // Rows of the table: grid ceil(n / 3), list n.
    static int rowsForCount(int count, int sortTableType);

    // The delay behind the "加载中..." panel (2000 ms unless a test shortens it;
    // the shell's category switch waits a quarter of it, 500 ms).
    int requestDelay() const { return m_requestDelay; }
    void setRequestDelay(int ms);

    // The shell's category buttons set these, then call begainRequestData.
    Q_INVOKABLE void setComicCategory(int category);
    Q_INVOKABLE void setComicType(qint64 type);
    // Buttons 101-104 of the shell: panel, 500 ms, category 1 with the type
    // (1, 2, 4, 8), first page.
    Q_INVOKABLE void showCategoryType(qint64 type);

    Q_INVOKABLE void begainRequestData();
    Q_INVOKABLE void requestNextPageData();
    Q_INVOKABLE void switchTheme(int tag);
    Q_INVOKABLE void switchSerial(int tag);
    Q_INVOKABLE void switchSort(int tag);
    // Any filter button by tag (118-137).
    Q_INVOKABLE void switchFilter(int tag);
    Q_INVOKABLE void setPopbutton(int tag);
    Q_INVOKABLE void closemenuView();
    Q_INVOKABLE void layoutBtn();
    // The refresh control: a pull past the header (offset < 0) reloads, a pull
    // past the footer (offset >= 0) asks for the next page, 0.3 s later.
    Q_INVOKABLE void refreshTriggered(qreal contentOffset);
    Q_INVOKABLE void reloadTableViewDataSource(qreal contentOffset);
    // A tap on a comic (index into comics).
    Q_INVOKABLE void executeDown(int index);
    Q_INVOKABLE void sortToOrientation(bool landscape);
    Q_INVOKABLE void removeComicHomePage();

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;

signals:
    void filterChanged();
    void layoutChanged();
    void tableChanged();
    void openMenuChanged();
    void loadingPanelChanged();
    void loadingChanged();
    void textPanelChanged();
    void reloadingChanged();
    void orientationChanged();
    void answered();
    void requestFailed();
    void openComicRequested(const QString &comicId, const QString &comicName, const QString &comicCover);

private:
    void showLoadingPanel(bool show);
    void showTextPanel(const QString &text);
    void delayedFirstPage(int delay);
    void sendPage(qint64 page);
    void doneLoadingTableViewData();
    void setLoading(bool loading);
    void retryFailed(int page);

    VORASortWebService *m_service = nullptr;
    VORAComicListModel *m_sortArray = nullptr;
    VORANetWorkNoLinking *m_noNetwork = nullptr;
    QTimer m_delayTimer;
    std::function<void()> m_delayed; // what the delay timer runs
    QTimer m_textPanelTimer;

    int m_comicCategory = 3;
    qint64 m_comicTheme = 0;
    qint64 m_comicType = 1;
    qint64 m_comicSerial = 0;
    qint64 m_comicSort = 0;
    int m_sortTableType = 0;
    int m_btnInt = 130;
    qint64 m_comicTotal = 0;
    bool m_hasFooter = false;
    int m_openMenu = 0;
    bool m_loadingPanel = false;
    bool m_loading = false;
    QString m_textPanel;
    bool m_reloading = false;
    bool m_reloadingUp = false;
    bool m_landscape = true;
    int m_requestDelay = defaultRequestDelay;
};
