#include "catalogue/VORASortView.h"

#include "catalogue/CatalogueLog.h"
#include "catalogue/VORAComicListModel.h"
#include "catalogue/VORANetWorkNoLinking.h"
#include "core/VORAUtility.h"
#include "net/VORASortWebService.h"


const QString VORASortView::endOfCategoryText = QStringLiteral("该分类中优质漫画就这么多，看看其他分类O(∩_∩)O~");
const QString VORASortView::requestFailedText = QStringLiteral("请求服务器失败，网络信号不是太好哟~");
const QString VORASortView::tapToRetryText = QStringLiteral("请求服务器失败，点击屏幕重新请求哦~！");
const QString VORASortView::noNetworkText = QStringLiteral("网络死掉了，请揉捏客户端或刷新重试");

namespace {
struct FilterButton
{
    int tag;
    qint64 value;
    const char *title;
};

// Theme values are single bits, except sports, which deliberately carries 513.
constexpr FilterButton themeTable[] = {
    {118, 1, "搞笑"},  {119, 2, "魔幻"},  {120, 4, "生活"},   {121, 8, "恋爱"},   {122, 16, "动作"},
    {123, 32, "科幻"}, {124, 64, "战争"}, {125, 128, "推理"}, {126, 256, "恐怖"}, {127, 513, "体育"},
};
constexpr FilterButton serialTable[] = {{128, 0, "连载中"}, {129, 1, "已完结"}};
// 135 ("周人气") sets 5 and then 2: it asks for the same order as 136 ("吐槽").
constexpr FilterButton sortTable[] = {
    {130, 0, "更新"}, {131, 7, "月票"},   {132, 1, "章节"}, {133, 3, "收藏"},
    {134, 6, "总人气"}, {135, 2, "周人气"}, {136, 2, "吐槽"}, {137, 4, "评分"},
};
constexpr const char *typeTitles[] = {"少年", "少女", "青年", "儿童"};

template <std::size_t N>
const FilterButton *findButton(const FilterButton (&table)[N], int tag)
{
    for (const FilterButton &b : table) {
        if (b.tag == tag)
            return &b;
    }
    return nullptr;
}

template <std::size_t N>
QList<VORASortButton> buttonList(const FilterButton (&table)[N])
{
    QList<VORASortButton> list;
    for (const FilterButton &b : table)
        list.append({b.tag, QString::fromUtf8(b.title)});
    return list;
}

VORAComicListModel::Comic comicFromSortDTO(const VORASortDTO &dto)
{
    return {dto.comicId,          dto.comicName,       dto.comicAuthor,   dto.comicCover,
            dto.comicDescription, dto.comicClickTotal, dto.comicAccredit, dto.comicLastUpdate};
}
} // namespace

VORASortView::VORASortView(QObject *parent)
    : QObject(parent)
    , m_service(new VORASortWebService(this))
    , m_sortArray(new VORAComicListModel(this))
    , m_noNetwork(new VORANetWorkNoLinking(this))
{
    m_delayTimer.setSingleShot(true);
    connect(&m_delayTimer, &QTimer::timeout, this, [this]() {
        if (auto action = std::exchange(m_delayed, nullptr))
            action();
    });
    m_textPanelTimer.setSingleShot(true);
    m_textPanelTimer.setInterval(textPanelSeconds * 1000);
    connect(&m_textPanelTimer, &QTimer::timeout, this, [this]() {
        m_textPanel.clear();
        emit textPanelChanged();
    });
    connect(m_noNetwork, &VORANetWorkNoLinking::retryRequested, this, &VORASortView::retryFailed);
}

VORASortView::~VORASortView()
{
    m_delayTimer.stop();
    m_service->cancelRequest();
    VORAUtility::hideLoadingViewWithParentView(this);
}

VORANetWorkNoLinking *VORASortView::noNetworkView() const { return m_noNetwork; }

QList<VORASortButton> VORASortView::themeButtons() const { return buttonList(themeTable); }
QList<VORASortButton> VORASortView::serialButtons() const { return buttonList(serialTable); }
QList<VORASortButton> VORASortView::sortButtons() const { return buttonList(sortTable); }

QList<VORASortButton> VORASortView::menuButtons() const
{
    return {{116, QStringLiteral("题材")}, {117, QStringLiteral("进度")}, {115, QStringLiteral("排序")}};
}

QString VORASortView::filterTitle() const
{
    switch (m_comicCategory) {
    case 0:
        for (const FilterButton &b : themeTable) {
            if (b.value == m_comicTheme)
                return QString::fromUtf8(b.title);
        }
        break;
    case 1: {
        const int bit = m_comicType == 1 ? 0 : m_comicType == 2 ? 1 : m_comicType == 4 ? 2 : m_comicType == 8 ? 3 : -1;
        if (bit >= 0)
            return QString::fromUtf8(typeTitles[bit]);
        break;
    }
    case 2:
        return m_comicSerial == 1 ? QStringLiteral("已完结") : QStringLiteral("连载中");
    case 3:
        if (const FilterButton *b = findButton(sortTable, m_btnInt))
            return QString::fromUtf8(b->title);
        for (const FilterButton &b : sortTable) {
            if (b.value == m_comicSort)
                return QString::fromUtf8(b.title);
        }
        break;
    default:
        break;
    }
    return {};
}

QString VORASortView::layoutButtonImage() const
{
    return m_sortTableType == 1 ? QStringLiteral("tablelayout.png") : QStringLiteral("readmenuchapter.png");
}

QString VORASortView::layoutButtonPressedImage() const
{
    return m_sortTableType == 1 ? QStringLiteral("tablelayoutpressed.png") : QStringLiteral("readmenuchapter_pressed.png");
}

int VORASortView::rowsForCount(int count, int sortTableType)
{
    if (count <= 0)
        return 0;
    return sortTableType == 0 ? VORAComicListModel::gridRows(count) : count;
}

int VORASortView::tableRowCount() const
{
    return rowsForCount(m_sortArray->count(), m_sortTableType);
}

void VORASortView::setRequestDelay(int ms)
{
    m_requestDelay = ms >= 0 ? ms : defaultRequestDelay;
}

void VORASortView::setComicCategory(int category)
{
    if (m_comicCategory == category)
        return;
    m_comicCategory = category;
    emit filterChanged();
}

void VORASortView::setComicType(qint64 type)
{
    if (m_comicType == type)
        return;
    m_comicType = type;
    emit filterChanged();
}

void VORASortView::showCategoryType(qint64 type)
{
    closemenuView();
    showLoadingPanel(true);
    m_delayed = [this, type]() {
        setComicCategory(1);
        setComicType(type);
        m_btnInt = 0;
        emit filterChanged();
        begainRequestData();
        showLoadingPanel(false);
    };
    m_delayTimer.start(m_requestDelay / 4);
}

// --- Requests ---

void VORASortView::begainRequestData()
{
    m_service->cancelRequest();
    if (!VORAUtility::isExistenceNetwork()) {
        qCInfo(lcCatalogue) << "category: no network, nothing sent";
        VORAUtility::requestAtlerMessage(noNetworkText, QStringLiteral("温馨提醒"), nullptr);
        setLoading(false);
        doneLoadingTableViewData();
        return;
    }
    switch (m_comicCategory) {
    case 0:
        m_service->comicTheme = m_comicTheme;
        break;
    case 1:
        m_service->comicType = m_comicType;
        break;
    case 2:
        m_service->comicSerial = m_comicSerial;
        break;
    case 3:
        m_service->comicSort = m_comicSort;
        break;
    default:
        break;
    }
    m_service->comicCategory = m_comicCategory;
    m_service->size = pageSize;
    sendPage(0);
}

void VORASortView::sendPage(qint64 page)
{
    m_service->cancelRequest();
    m_service->page = page;
    setLoading(true);
    m_service->asynchronousRequestWithDelegate(this);
}

void VORASortView::requestNextPageData()
{
    showLoadingPanel(true);
    m_delayed = [this]() {
        sendPage(m_service->page + 1);
        showLoadingPanel(false);
    };
    m_delayTimer.start(m_requestDelay);
}

void VORASortView::retryFailed(int page)
{
    if (page <= 0)
        begainRequestData();
    else
        sendPage(page);
}

void VORASortView::delayedFirstPage(int delay)
{
    showLoadingPanel(true);
    m_delayed = [this]() {
        begainRequestData();
        showLoadingPanel(false);
    };
    m_delayTimer.start(delay);
}

// --- Filter buttons and menus ---

void VORASortView::switchTheme(int tag)
{
    const FilterButton *b = findButton(themeTable, tag);
    if (!b)
        return;
    closemenuView();
    m_comicCategory = 0;
    m_comicTheme = b->value;
    m_btnInt = tag;
    emit filterChanged();
    delayedFirstPage(m_requestDelay);
}

void VORASortView::switchSerial(int tag)
{
    const FilterButton *b = findButton(serialTable, tag);
    if (!b)
        return;
    closemenuView();
    m_comicCategory = 2;
    m_comicSerial = tag == 129 ? 1 : 0;
    m_btnInt = tag;
    emit filterChanged();
    delayedFirstPage(m_requestDelay);
}

void VORASortView::switchSort(int tag)
{
    const FilterButton *b = findButton(sortTable, tag);
    if (!b)
        return;
    closemenuView();
    m_comicCategory = 3;
    if (tag == 135)
        m_comicSort = 5; // then 2, below: the weekly button asks for the page-comment order
    m_comicSort = b->value;
    m_btnInt = tag;
    emit filterChanged();
    delayedFirstPage(m_requestDelay);
}

void VORASortView::switchFilter(int tag)
{
    if (tag >= 118 && tag <= 127)
        switchTheme(tag);
    else if (tag == 128 || tag == 129)
        switchSerial(tag);
    else if (tag >= 130 && tag <= 137)
        switchSort(tag);
}

void VORASortView::setPopbutton(int tag)
{
    if (tag != 115 && tag != 116 && tag != 117)
        return;
    const int open = m_openMenu == tag ? 0 : tag;
    if (open == m_openMenu)
        return;
    m_openMenu = open;
    emit openMenuChanged();
}

void VORASortView::closemenuView()
{
    if (m_openMenu == 0)
        return;
    m_openMenu = 0;
    emit openMenuChanged();
}

void VORASortView::layoutBtn()
{
    closemenuView();
    m_sortTableType = m_sortTableType == 0 ? 1 : 0;
    emit layoutChanged();
    emit tableChanged();
}

// --- Pulling ---

void VORASortView::reloadTableViewDataSource(qreal contentOffset)
{
    if (contentOffset > 0)
        m_reloadingUp = true;
    else
        m_reloading = true;
    emit reloadingChanged();
}

void VORASortView::refreshTriggered(qreal contentOffset)
{
    if (m_reloading || m_reloadingUp)
        return; // a pull is already being served
    reloadTableViewDataSource(contentOffset);
    if (contentOffset >= 0)
        QTimer::singleShot(refreshDelay, this, &VORASortView::requestNextPageData);
    else
        QTimer::singleShot(refreshDelay, this, &VORASortView::begainRequestData);
}

void VORASortView::doneLoadingTableViewData()
{
    if (!m_reloading && !m_reloadingUp)
        return;
    m_reloading = false;
    m_reloadingUp = false;
    emit reloadingChanged();
}

// --- Answer ---

void VORASortView::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error)
{
    if (service != m_service)
        return;
    setLoading(false);
    if (error) {
        qCWarning(lcCatalogue) << "category page" << m_service->page << "failed:" << error->localizedDescription;
        m_noNetwork->setAtag(int(m_service->page));
        m_noNetwork->showWithText(VORAUtility::isExistenceNetwork() ? requestFailedText : tapToRetryText);
        // A later pull-up asks for the page that failed again.
        if (m_service->page > 0)
            m_service->page -= 1;
        doneLoadingTableViewData();
        emit requestFailed();
        return;
    }
    m_noNetwork->hide();
    QList<VORAComicListModel::Comic> page;
    page.reserve(m_service->comicList.size());
    for (const VORASortDTO &dto : m_service->comicList)
        page.append(comicFromSortDTO(dto));
    if (m_service->page == 0)
        m_sortArray->setComics(page);
    else
        m_sortArray->appendComics(page);
    if (page.isEmpty()) {
        showTextPanel(endOfCategoryText);
        // The next pull-up asks for the same page again.
        if (m_service->page > 0)
            m_service->page -= 1;
    }
    m_comicTotal = m_service->totalCount;
    m_hasFooter = m_sortArray->count() > 0;
    emit tableChanged();
    doneLoadingTableViewData();
    emit answered();
}

// --- Other ---

void VORASortView::executeDown(int index)
{
    closemenuView();
    const VORAComicListModel::Comic *comic = m_sortArray->comicAt(index);
    if (!comic)
        return;
    if (!VORAUtility::isExistenceNetwork()) {
        VORAUtility::requestAtlerMessage(noNetworkText, QStringLiteral("温馨提醒"), nullptr);
        return;
    }
    emit openComicRequested(comic->comicId, comic->comicName, comic->comicCover);
}

void VORASortView::sortToOrientation(bool landscape)
{
    if (m_landscape == landscape)
        return;
    m_landscape = landscape;
    emit orientationChanged();
}

void VORASortView::removeComicHomePage()
{
    // The detail overlay closed; the list stays as it was.
}

void VORASortView::showLoadingPanel(bool show)
{
    if (show)
        VORAUtility::showLoadingViewWithParentView(this, loadingText());
    else
        VORAUtility::hideLoadingViewWithParentView(this);
    if (m_loadingPanel == show)
        return;
    m_loadingPanel = show;
    emit loadingPanelChanged();
}

void VORASortView::showTextPanel(const QString &text)
{
    m_textPanel = text;
    emit textPanelChanged();
    m_textPanelTimer.start();
}

void VORASortView::setLoading(bool loading)
{
    if (m_loading == loading)
        return;
    m_loading = loading;
    emit loadingChanged();
}
