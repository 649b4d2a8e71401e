#include "catalogue/VORASearchView.h"

#include "catalogue/CatalogueLog.h"
#include "catalogue/VORACloudView.h"
#include "catalogue/VORAComicListModel.h"
#include "core/VORAArchiveNames.h"
#include "core/VORAUtility.h"
#include "net/VORAGetCloudTagService.h"
#include "net/VORAGetSearchKeyword.h"
#include "store/VORAHistory.h"
#include "store/VORAPersistenceManager.h"


const QString VORASearchView::requestFailedText = QStringLiteral("请求服务器失败，网络信号不是太好哟~");
const QString VORASearchView::noNetworkText = QStringLiteral("网络死掉了，请揉捏客户端或刷新重试");

namespace {
const QString historyKey = QStringLiteral("History");
}

VORASearchView::VORASearchView(QObject *parent)
    : QObject(parent)
    , m_cloudService(new VORAGetCloudTagService(this))
    , m_searchService(new VORAGetSearchKeyword(this))
    , m_cloudView(new VORACloudView(this))
    , m_comicListArray(new VORAComicListModel(this))
{
    m_io.setMaxThreadCount(1); // reads and writes of the history file stay in order
    m_io.setExpiryTimeout(2000);
    connect(m_cloudView, &VORACloudView::enterComicList, this, &VORASearchView::enterComicList);

    // The destructor waits for the pool, so `this` outlives the job; a queued
    // call to an object deleted meanwhile is dropped by Qt.
    VORASearchView *self = this;
    m_io.start([self]() {
        const QStringList list =
            VORAHistory::initWithCoder(VORAPersistenceManager::loadObject(historyKey, VORAPersistenceManager::searchHistoryFile()))
                .getAllSearchHistory();
        QMetaObject::invokeMethod(self, [self, list]() {
            // A search made before the file was read goes in front.
            VORAHistory merged;
            for (auto it = list.crbegin(); it != list.crend(); ++it)
                merged.addSearchKey(*it);
            for (auto it = self->m_searchHistoryArray.crbegin(); it != self->m_searchHistoryArray.crend(); ++it)
                merged.addSearchKey(*it);
            self->m_searchHistoryArray = merged.getAllSearchHistory();
            self->m_historyLoaded = true;
            emit self->historyChanged();
            emit self->historyLoaded();
        }, Qt::QueuedConnection);
    });
}

VORASearchView::~VORASearchView()
{
    m_io.waitForDone();
    m_cloudService->cancelRequest();
    m_searchService->cancelRequest();
}


QString VORASearchView::headerText() const
{
    // The number of entries received, not the answer's "total".
    return QStringLiteral("搜索“%1” 共计%2条查询结果").arg(m_keyString).arg(m_comicListArray->count());
}

bool VORASearchView::noResult() const
{
    return m_resultsVisible && m_comicListArray->count() == 0;
}

void VORASearchView::begainRequestData()
{
    m_cloudService->cancelRequest();
    m_cloudService->asynchronousRequestWithDelegate(this);
}

void VORASearchView::searchButtonClicked(const QString &text)
{
    emit resignKeyboard();
    setFieldText(text);
    const QString key = text;
    if (!key.isEmpty()) {
        VORAHistory history;
        for (auto it = m_searchHistoryArray.crbegin(); it != m_searchHistoryArray.crend(); ++it)
            history.addSearchKey(*it);
        history.addSearchKey(key);
        m_searchHistoryArray = history.getAllSearchHistory();
        emit historyChanged();
        saveHistory();
    }
    begainRequestSearchListData(key);
    setHistoryVisible(false);
}

void VORASearchView::enterComicList(const QString &keyword)
{
    emit resignKeyboard();
    begainRequestSearchListData(keyword);
    setFieldText(keyword);
    setHistoryVisible(false);
}

void VORASearchView::enterComicListHistory(const QString &keyword)
{
    enterComicList(keyword);
}

void VORASearchView::begainRequestSearchListData(const QString &text)
{
    if (text.trimmed().isEmpty())
        return; // the site refuses an empty query
    m_searchService->cancelRequest();
    m_searchService->page = 1;
    m_searchService->keywordString = text;
    setSearching(true);
    m_searchService->asynchronousRequestWithDelegate(this);
}

void VORASearchView::textDidChange(const QString &text)
{
    m_fieldText = text;
    emit fieldTextChanged();
    if (text.isEmpty()) {
        // The cloud comes back to the front.
        setHistoryVisible(false);
        comiclistOutView();
        return;
    }
    setHistoryVisible(!m_searchHistoryArray.isEmpty());
}

void VORASearchView::clearnAllSearchHistory()
{
    setHistoryVisible(false);
    m_searchHistoryArray.clear();
    emit historyChanged();
    saveHistory();
}

void VORASearchView::clearSearchHistory()
{
    clearnAllSearchHistory();
}

void VORASearchView::saveHistory()
{
    VORAHistory history;
    for (auto it = m_searchHistoryArray.crbegin(); it != m_searchHistoryArray.crend(); ++it)
        history.addSearchKey(*it);
    const QCborValue archived = history.encodeWithCoder();
    m_io.start([archived]() {
        VORAPersistenceManager::saveObject(archived, historyKey, VORAPersistenceManager::searchHistoryFile());
    });
}

void VORASearchView::openResult(int index)
{
    const VORAComicListModel::Comic *comic = m_comicListArray->comicAt(index);
    if (!comic)
        return;
    if (!VORAUtility::isExistenceNetwork()) {
        VORAUtility::requestAtlerMessage(noNetworkText, QStringLiteral("温馨提醒"), nullptr);
        return;
    }
    emit openComicRequested(comic->comicId, comic->comicName, comic->comicCover);
}

void VORASearchView::comiclistOutView()
{
    if (!m_resultsVisible)
        return;
    m_resultsVisible = false;
    emit resultsChanged();
}

void VORASearchView::searchToOrientation(bool landscape)
{
    if (m_landscape != landscape) {
        m_landscape = landscape;
        emit orientationChanged();
    }
    m_cloudView->setLandscape(landscape);
}

void VORASearchView::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error)
{
    if (service != m_cloudService && service != m_searchService)
        return;
    if (service == m_searchService)
        setSearching(false);
    if (error) {
        qCWarning(lcCatalogue) << "search screen request failed:" << error->localizedDescription;
        VORAUtility::requestAtlerMessage(requestFailedText, QStringLiteral("温馨提醒"), nullptr);
        emit requestFailed();
        return;
    }
    if (service == m_cloudService) {
        m_cloudView->setTagList(m_cloudService->tagList);
        emit cloudAnswered();
        return;
    }
    QList<VORAComicListModel::Comic> list;
    for (const VORASearchListDTO &dto : m_searchService->searchArray) {
        list.append({dto.comicId, dto.comicName, dto.comicAuthor, dto.comicCover, dto.comicDescription, QString(),
                     dto.accredit, dto.lastUpdate});
    }
    m_comicListArray->setComics(list);
    m_keyString = m_fieldText;
    m_resultsVisible = true;
    emit resultsChanged();
    emit searchAnswered();
}

void VORASearchView::setFieldText(const QString &text)
{
    if (m_fieldText == text)
        return;
    m_fieldText = text;
    emit fieldTextChanged();
}

void VORASearchView::setHistoryVisible(bool visible)
{
    if (m_historyVisible == visible)
        return;
    m_historyVisible = visible;
    emit historyChanged();
}

void VORASearchView::setSearching(bool searching)
{
    if (m_searching == searching)
        return;
    m_searching = searching;
    emit searchingChanged();
}
