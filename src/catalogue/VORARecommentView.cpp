#include "catalogue/VORARecommentView.h"

#include "catalogue/CatalogueLog.h"
#include "catalogue/VORAComicListModel.h"
#include "catalogue/VORANetWorkNoLinking.h"
#include "core/VORANotificationNames.h"
#include "core/VORASystemConfig.h"
#include "core/VORAUtility.h"
#include "net/VORAGetRcommentService.h"
#include "platform/NotificationCenter.h"

#include <QVariantMap>

#include <cmath>

const QString VORARecommentView::requestFailedText = QStringLiteral("请求服务器失败，网络信号不是太好哟~");
const QString VORARecommentView::noNetworkText = QStringLiteral("网络死掉了，请揉捏客户端或刷新重试");

VORARecommentView::VORARecommentView(QObject *parent)
    : QObject(parent)
    , m_service(new VORAGetRcommentService(this))
    , m_noNetwork(new VORANetWorkNoLinking(this))
{
    connect(m_noNetwork, &VORANetWorkNoLinking::retryRequested, this, &VORARecommentView::switchRecommentView);

    // The sense of isStop is inverted on purpose: "invalidate" pauses the
    // banner by clearing it, "is valid" lets it run again by setting it.
    auto &center = NotificationCenter::defaultCenter();
    center.addObserver(this, QString::fromLatin1(VORANotificationNames::recommentInvalidateNSTimer),
                       [this](const Notification &) { setIsStop(false); });
    center.addObserver(this, QString::fromLatin1(VORANotificationNames::recommentIsValueNSTimer),
                       [this](const Notification &) { setIsStop(true); });

    createNSTimer();
    m_curTag = firstTag;
    switchRecommentView(firstTag);
}

VORARecommentView::~VORARecommentView()
{
    m_timer.stop();
    NotificationCenter::defaultCenter().removeObserver(this);
    m_service->cancelRequest();
}

QStringList VORARecommentView::tabTitles() const
{
    return {QStringLiteral("热门"), QStringLiteral("新作"), QStringLiteral("连载"), QStringLiteral("完结")};
}

QVariantList VORARecommentView::comics() const
{
    QVariantList list;
    list.reserve(m_recommentArray.size());
    for (const VORARecommentDTO &c : m_recommentArray) {
        list.append(QVariantMap{
            {QStringLiteral("comicId"), c.comicId},
            {QStringLiteral("comicName"), c.comicName},
            {QStringLiteral("comicAuthor"), c.comicAuthor},
            {QStringLiteral("comicCover"), c.comicCover},
            {QStringLiteral("comicClickTotal"), c.comicClickTotal},
            {QStringLiteral("comicDescription"), c.comicDescription},
            {QStringLiteral("clickText"), clickText(c.comicClickTotal)},
            {QStringLiteral("badge"), VORAComicListModel::accreditBadge(c.comicAccredit)},
        });
    }
    return list;
}

QVariantList VORARecommentView::slides() const
{
    QVariantList list;
    list.reserve(m_slideArray.size());
    for (const VORASlideComicDTO &s : m_slideArray) {
        list.append(QVariantMap{
            {QStringLiteral("comicId"), s.comicId},
            {QStringLiteral("comicName"), s.comicName},
            {QStringLiteral("comicCover"), s.comicCover},
            {QStringLiteral("comicTitle"), s.comicTitle},
            {QStringLiteral("comicUrl"), s.comicUrl},
            {QStringLiteral("slideType"), s.slideType},
        });
    }
    return list;
}

VORANetWorkNoLinking *VORARecommentView::noNetworkView() const
{
    return m_noNetwork;
}

QString VORARecommentView::clickText(const QString &clickTotal)
{
    bool ok = false;
    const qint64 n = clickTotal.toLongLong(&ok);
    if (!ok || n < 10000)
        return clickTotal;
    if (n < 100000000)
        return QString::number(double(n) / 10000.0, 'f', 1) + QStringLiteral("万");
    return QString::number(double(n) / 100000000.0, 'f', 1) + QStringLiteral("亿");
}

int VORARecommentView::rowCount() const
{
    return VORAComicListModel::gridRows(int(m_recommentArray.size()));
}

void VORARecommentView::setTimerInterval(int ms)
{
    m_timer.setInterval(ms > 0 ? ms : defaultTimerInterval);
}

void VORARecommentView::createNSTimer()
{
    m_timer.setInterval(defaultTimerInterval);
    m_timer.setSingleShot(false);
    connect(&m_timer, &QTimer::timeout, this, &VORARecommentView::timerTurnNext);
    m_timer.start();
}

void VORARecommentView::recommendLabel(int tag)
{
    if (tag == m_curTag)
        return;
    m_curTag = tag;
    resetLabel(tag);
    emit curTagChanged();
    switchRecommentView(tag);
}

void VORARecommentView::resetLabel(int)
{
    // The tab colours and the selection marker are drawn from curTag.
}

void VORARecommentView::switchRecommentView(int tag)
{
    if (!VORAUtility::isExistenceNetwork()) {
        qCInfo(lcCatalogue) << "feed: no network, tab" << tag << "not requested";
        m_noNetwork->setAtag(tag);
        m_noNetwork->showWithText(noNetworkText);
        doneLoadingTableViewData();
        return;
    }
    switch (tag) {
    case 2000:
        m_service->comicCategory = 3;
        m_service->comicSort = 5;
        break;
    case 2001:
        m_service->comicCategory = 3;
        m_service->comicSort = 2;
        break;
    case 2002:
        m_service->comicCategory = 2;
        m_service->comicSerial = 0;
        break;
    case 2003:
        m_service->comicCategory = 2;
        m_service->comicSerial = 1;
        break;
    default:
        // Any other tag keeps the previous filter and sends it again.
        break;
    }
    setLoading(true);
    m_service->asynchronousRequestWithDelegate(this);
}

void VORARecommentView::begainRequestData()
{
    switchRecommentView(m_curTag);
    initScrollPage();
}

void VORARecommentView::initScrollPage()
{
    emit slidesChanged();
}

void VORARecommentView::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error)
{
    if (service != m_service)
        return;
    setLoading(false);
    if (error) {
        qCWarning(lcCatalogue) << "feed request failed:" << error->localizedDescription;
        m_noNetwork->setAtag(m_curTag);
        m_noNetwork->showWithText(requestFailedText);
        doneLoadingTableViewData();
        emit requestFailed();
        return;
    }
    m_noNetwork->hide();
    m_recommentArray = m_service->recommentArray;
    m_slideArray = m_service->slideArray;
    emit slidesChanged();
    emit comicsChanged();
    doneLoadingTableViewData();
    emit answered();
}

void VORARecommentView::doneLoadingTableViewData()
{
    if (!m_reloadingUp)
        return;
    m_reloadingUp = false;
    emit reloadingUpChanged();
}

void VORARecommentView::reloadTableViewDataSource()
{
    if (m_reloadingUp)
        return;
    m_reloadingUp = true;
    emit reloadingUpChanged();
    QTimer::singleShot(refreshDelay, this, &VORARecommentView::begainRequestData);
}

void VORARecommentView::timerTurnNext()
{
    emit timerFired();
    if (!m_isStop)
        return;
    int next = m_timeCount + 1;
    if (next >= bannerPageCount)
        next = 0;
    setTimeCount(next);
}

void VORARecommentView::scrollViewDidScroll(qreal contentX, qreal width)
{
    if (width <= 0)
        return;
    const int page = int(std::floor((contentX - width / 2) / width)) + 1;
    setTimeCount(page);
}

void VORARecommentView::setTimeCount(int count)
{
    if (m_timeCount == count)
        return;
    m_timeCount = count;
    emit timeCountChanged();
}

void VORARecommentView::setIsStop(bool stop)
{
    if (m_isStop == stop)
        return;
    m_isStop = stop;
    emit isStopChanged();
}

void VORARecommentView::setLoading(bool loading)
{
    if (m_loading == loading)
        return;
    m_loading = loading;
    emit loadingChanged();
}

void VORARecommentView::recommendToOrientation(bool landscape)
{
    if (m_landscape == landscape)
        return;
    m_landscape = landscape;
    emit orientationChanged();
}

void VORARecommentView::touchImageView(int index)
{
    if (index < 0 || index >= m_recommentArray.size())
        return;
    const VORARecommentDTO comic = m_recommentArray.at(index);
    openSlideOrComic(nullptr, &comic);
}

void VORARecommentView::handleTapGesture()
{
    if (m_timeCount < 0 || m_timeCount >= m_slideArray.size())
        return; // one of the empty pages of the five-page banner
    const VORASlideComicDTO slide = m_slideArray.at(m_timeCount);
    openSlideOrComic(&slide, nullptr);
}

void VORARecommentView::openSlideOrComic(const VORASlideComicDTO *slide, const VORARecommentDTO *comic)
{
    if (!VORAUtility::isExistenceNetwork()) {
        VORAUtility::requestAtlerMessage(noNetworkText, QStringLiteral("温馨提醒"), nullptr);
        return;
    }
    if (slide && slide->slideType != 0) {
        QUrl url(slide->comicUrl);
        if (slide->comicUrl.isEmpty() || !url.isValid())
            url = QUrl(VORASystemConfig::getWebServiceUrlBase());
        emit openUrlRequested(url);
        return;
    }
    if (slide)
        emit openComicRequested(slide->comicId, slide->comicName, slide->comicCover);
    else
        emit openComicRequested(comic->comicId, comic->comicName, comic->comicCover);
}

void VORARecommentView::slideTouchBegan()
{
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::recommentInvalidateNSTimer));
}

void VORARecommentView::slideTouchEnded()
{
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::recommentIsValueNSTimer));
}
