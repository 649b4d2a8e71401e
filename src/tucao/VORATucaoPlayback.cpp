#include "tucao/VORATucaoPlayback.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORAUtility.h"
#include "platform/NotificationCenter.h"
#include "tucao/VORATucaoGeometry.h"

#include <algorithm>

VORATucaoPlayback::VORATucaoPlayback(QObject *parent)
    : QAbstractListModel(parent)
{
    m_setTucaoTimer.setSingleShot(true);
    m_setTucaoTimer.setInterval(setTucaoDelayMs);
    connect(&m_setTucaoTimer, &QTimer::timeout, this, &VORATucaoPlayback::startTucaoPlayback);

    m_showTucaoTimer.setInterval(showTucaoIntervalMs);
    connect(&m_showTucaoTimer, &QTimer::timeout, this, &VORATucaoPlayback::showTucaoOneByOne);

    m_groupTimer.setSingleShot(true);
    m_groupTimer.setInterval(groupStepDelayMs);
    connect(&m_groupTimer, &QTimer::timeout, this, [this]() {
        if (m_groupStepNext)
            nextPageTucao();
        else
            lastPageTucao();
    });

    // Signing in or out changes which tucao are one's own.
    NotificationCenter::defaultCenter().addObserver(
        this, QString::fromLatin1(VORANotificationNames::userViewPostInfo), [this](const Notification &) {
            if (!m_displayed.isEmpty())
                emit dataChanged(index(0), index(int(m_displayed.size()) - 1), {IsOwnRole});
        });
}

VORATucaoPlayback::~VORATucaoPlayback()
{
    NotificationCenter::defaultCenter().removeObserver(this);
}

// --- The page ---

void VORATucaoPlayback::setTucaoList(const QList<VORATucao> &list)
{
    stopTimers();
    clearDisplay();
    m_entries.clear();
    for (const VORATucao &t : list)
        m_entries.append(Entry{t, m_nextKey++});
    setPlaybackState(0, 0, false);
    emit tucaoListChanged();
}

void VORATucaoPlayback::setImageSize(const QSizeF &size)
{
    m_imageSize = size;
    m_tucaoNumPerPage = VORATucaoGeometry::tucaoNumPerPage(size);
    emit imageSizeChanged();
}

void VORATucaoPlayback::setPageIndex(int index)
{
    if (m_pageIndex == index)
        return;
    m_pageIndex = index;
    emit currentPageChanged();
}

void VORATucaoPlayback::setCurrentImagePageIndex(int index)
{
    if (m_currentImagePageIndex == index)
        return;
    m_currentImagePageIndex = index;
    emit currentPageChanged();
}

void VORATucaoPlayback::setTimerIntervals(int startMs, int showMs, int groupMs)
{
    m_setTucaoTimer.setInterval(startMs);
    m_showTucaoTimer.setInterval(showMs);
    m_groupTimer.setInterval(groupMs);
}

// --- Playback ---

void VORATucaoPlayback::setTucao()
{
    if (m_setTucaoTimer.isActive() || m_showTucaoTimer.isActive())
        return;
    m_setTucaoTimer.start();
}

void VORATucaoPlayback::startTucaoPlayback()
{
    m_setTucaoTimer.stop();
    clearDisplay();
    setPlaybackState(m_currentTucaoShowIndex, 1, true);
    beginShowTucao();
}

void VORATucaoPlayback::beginShowTucao()
{
    if (!isCurrentPage()) {
        stopTimers();
        emit playbackChanged();
        return;
    }
    if (m_showTucaoTimer.isActive())
        return;
    m_showTucaoTimer.start();
    emit playbackChanged();
}

void VORATucaoPlayback::showTucaoOneByOne()
{
    if (m_currentTucaoShowIndex >= m_entries.size()) {
        if (m_showTucaoTimer.isActive()) {
            m_showTucaoTimer.stop();
            emit playbackChanged();
        }
        return;
    }
    const int next = qMax(m_currentTucaoShowIndex, 0);
    const quint64 key = m_entries.at(next).key;
    // A tucao already on screen (a group put it there) stays where it is.
    if (!m_displayed.contains(key)) {
        if (m_displayed.size() < maxDisplayed)
            appendDisplay(key);
        else
            replaceDisplay(next % replacedPlaces, key);
    }
    setPlaybackState(next + 1, m_currentTucaoPageIndex, m_showTucaoFlag);
}

void VORATucaoPlayback::hideTucaoView()
{
    const bool started = m_showTucaoFlag;
    stopTimers();
    clearDisplay();
    setPlaybackState(started ? 0 : m_currentTucaoShowIndex, m_currentTucaoPageIndex, false);
}

void VORATucaoPlayback::playTucao(bool play)
{
    if (!isCurrentPage())
        return;
    if (play) {
        beginShowTucao();
    } else if (m_showTucaoTimer.isActive() || m_setTucaoTimer.isActive()) {
        // The start that is still pending is a part of the playback too.
        m_setTucaoTimer.stop();
        m_showTucaoTimer.stop();
        emit playbackChanged();
    }
}

// --- Groups ---

void VORATucaoPlayback::showLastPageTucao()
{
    m_setTucaoTimer.stop();
    m_showTucaoTimer.stop();
    m_groupStepNext = false;
    m_groupTimer.start(); // restarting drops the older press
    emit playbackChanged();
}

void VORATucaoPlayback::showNextPageTucao()
{
    m_setTucaoTimer.stop();
    m_showTucaoTimer.stop();
    m_groupStepNext = true;
    m_groupTimer.start();
    emit playbackChanged();
}

int VORATucaoPlayback::groupSize() const
{
    return m_tucaoNumPerPage > 0 ? m_tucaoNumPerPage : int(qMax<qsizetype>(m_entries.size(), 1));
}

void VORATucaoPlayback::showGroup(int group)
{
    const int size = groupSize();
    const int total = int(m_entries.size());
    const int start = qBound(0, group * size, total);
    const int end = qBound(start, start + size, total);
    QList<quint64> keys;
    for (int i = start; i < end; ++i)
        keys.append(m_entries.at(i).key);
    setDisplay(keys);
}

void VORATucaoPlayback::lastPageTucao()
{
    m_groupTimer.stop();
    if (m_currentTucaoPageIndex < 0) {
        VORAUtility::openMBProgressHUDView(firstGroupText, groupIndicatorSeconds);
        return;
    }
    const int size = groupSize();
    int group = m_currentTucaoPageIndex - 1;
    if (qint64(group) * size > m_entries.size())
        --group;
    group = qMax(group, 0);
    showGroup(group);
    setPlaybackState(m_currentTucaoShowIndex, group == 0 ? -1 : group, m_showTucaoFlag);
}

void VORATucaoPlayback::nextPageTucao()
{
    m_groupTimer.stop();
    const int size = groupSize();
    const int groups = qMax(1, int((m_entries.size() + size - 1) / size));
    if (m_currentTucaoPageIndex >= groups) {
        VORAUtility::openMBProgressHUDView(lastGroupText, groupIndicatorSeconds);
        return;
    }
    const int group = qMax(m_currentTucaoPageIndex, 0);
    showGroup(group);
    setPlaybackState(m_currentTucaoShowIndex, group + 1, m_showTucaoFlag);
}

// --- Edits ---

bool VORATucaoPlayback::removeTucao(const QString &tucaoId)
{
    const int i = entryIndexOfId(tucaoId);
    if (i < 0)
        return false;
    const quint64 key = m_entries.at(i).key;
    const int place = int(m_displayed.indexOf(key));
    if (place >= 0) {
        beginRemoveRows(QModelIndex(), place, place);
        m_displayed.removeAt(place);
        endRemoveRows();
        emit countChanged();
    }
    Q_ASSERT(!m_displayed.contains(key));
    m_entries.removeAt(i);
    // Playback goes on with the tucao that followed it.
    const int showIndex = i < m_currentTucaoShowIndex ? m_currentTucaoShowIndex - 1 : m_currentTucaoShowIndex;
    setPlaybackState(showIndex, m_currentTucaoPageIndex, m_showTucaoFlag);
    emit tucaoListChanged();
    return true;
}

void VORATucaoPlayback::addTucao(const VORATucao &tucao)
{
    if (!tucao.tucaoId.isEmpty())
        removeTucao(tucao.tucaoId);
    // Before the next one to play when playback has begun (it is on screen
    // already); at the head otherwise, where the playback's first round finds it.
    const int at = m_showTucaoFlag ? std::clamp(m_currentTucaoShowIndex, 0, int(m_entries.size())) : 0;
    const Entry entry{tucao, m_nextKey++};
    m_entries.insert(at, entry);
    const int showIndex = m_showTucaoFlag ? at + 1 : m_currentTucaoShowIndex;
    appendDisplay(entry.key);
    setPlaybackState(showIndex, m_currentTucaoPageIndex, m_showTucaoFlag);
    emit tucaoListChanged();
}

std::optional<VORATucao> VORATucaoPlayback::tucaoWithId(const QString &tucaoId) const
{
    const int i = entryIndexOfId(tucaoId);
    if (i < 0)
        return std::nullopt;
    return m_entries.at(i).tucao;
}

bool VORATucaoPlayback::isOwnTucao(const VORATucao &tucao) const
{
    VORAUser *user = VORAAppGlobalData::shareAppGlobalData()->user();
    return user->isLogin() && !tucao.userId.isEmpty() && tucao.userId == user->userId();
}

bool VORATucaoPlayback::longPressTucao(int row, QObject *view)
{
    const VORATucao *tucao = displayedTucao(row);
    if (!tucao || !isOwnTucao(*tucao))
        return false;
    NotificationCenter::defaultCenter().post(popUpTucaoEditView, view ? view : this,
                                             {{QStringLiteral("TuCaoView"), QVariant::fromValue(view)},
                                              {QStringLiteral("tucao"), tucaoAt(row)},
                                              {QStringLiteral("playback"), QVariant::fromValue<QObject *>(this)}});
    return true;
}

QVariantMap VORATucaoPlayback::tucaoAt(int row) const
{
    QVariantMap map;
    if (row < 0 || row >= m_displayed.size())
        return map;
    const QHash<int, QByteArray> names = roleNames();
    for (auto it = names.cbegin(); it != names.cend(); ++it)
        map.insert(QString::fromLatin1(it.value()), data(index(row), it.key()));
    return map;
}

// --- State ---

QList<VORATucao> VORATucaoPlayback::tucaoViewLists() const
{
    QList<VORATucao> list;
    for (const Entry &e : m_entries)
        list.append(e.tucao);
    return list;
}

QList<VORATucao> VORATucaoPlayback::currentDisplayTucaoViewList() const
{
    QList<VORATucao> list;
    for (int row = 0; row < m_displayed.size(); ++row) {
        if (const VORATucao *t = displayedTucao(row))
            list.append(*t);
    }
    return list;
}

int VORATucaoPlayback::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_displayed.size());
}

QVariant VORATucaoPlayback::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const VORATucao *shown = displayedTucao(index.row());
    if (!shown)
        return {};
    const VORATucao &t = *shown;
    switch (role) {
    case Qt::DisplayRole:
    case ContentRole:
        return t.content;
    case TucaoIdRole:
        return t.tucaoId;
    case NickNameRole:
        return t.nickName;
    case XRole:
        return t.x;
    case YRole:
        return t.y;
    case WidthRole:
        return t.width;
    case HeightRole:
        return t.height;
    case IsOwnRole:
        return isOwnTucao(t);
    default:
        return {};
    }
}

QHash<int, QByteArray> VORATucaoPlayback::roleNames() const
{
    return {{TucaoIdRole, "tucaoId"}, {ContentRole, "content"}, {NickNameRole, "nickName"},
            {XRole, "x"},             {YRole, "y"},             {WidthRole, "width"},
            {HeightRole, "height"},   {IsOwnRole, "isOwn"}};
}

// --- Helpers ---

int VORATucaoPlayback::entryIndex(quint64 key) const
{
    for (int i = 0; i < m_entries.size(); ++i) {
        if (m_entries.at(i).key == key)
            return i;
    }
    return -1;
}

const VORATucao *VORATucaoPlayback::displayedTucao(int row) const
{
    if (row < 0 || row >= m_displayed.size())
        return nullptr;
    const int i = entryIndex(m_displayed.at(row));
    return i < 0 ? nullptr : &m_entries.at(i).tucao;
}

int VORATucaoPlayback::entryIndexOfId(const QString &tucaoId) const
{
    if (tucaoId.isEmpty())
        return -1;
    for (int i = 0; i < m_entries.size(); ++i) {
        if (m_entries.at(i).tucao.tucaoId == tucaoId)
            return i;
    }
    return -1;
}

void VORATucaoPlayback::stopTimers()
{
    m_setTucaoTimer.stop();
    m_showTucaoTimer.stop();
    m_groupTimer.stop();
}

void VORATucaoPlayback::clearDisplay()
{
    if (m_displayed.isEmpty())
        return;
    beginRemoveRows(QModelIndex(), 0, int(m_displayed.size()) - 1);
    m_displayed.clear();
    endRemoveRows();
    emit countChanged();
}

void VORATucaoPlayback::appendDisplay(quint64 key)
{
    const int row = int(m_displayed.size());
    beginInsertRows(QModelIndex(), row, row);
    m_displayed.append(key);
    endInsertRows();
    emit countChanged();
}

void VORATucaoPlayback::replaceDisplay(int place, quint64 key)
{
    // Out and in again, so the view of the new tucao is made afresh and plays
    // its appearance.
    beginRemoveRows(QModelIndex(), place, place);
    m_displayed.removeAt(place);
    endRemoveRows();
    beginInsertRows(QModelIndex(), place, place);
    m_displayed.insert(place, key);
    endInsertRows();
}

void VORATucaoPlayback::setDisplay(const QList<quint64> &keys)
{
    beginResetModel();
    m_displayed = keys;
    endResetModel();
    emit countChanged();
}

void VORATucaoPlayback::setPlaybackState(int showIndex, int pageIndex, bool flag)
{
    m_currentTucaoShowIndex = showIndex;
    m_currentTucaoPageIndex = pageIndex;
    m_showTucaoFlag = flag;
    emit playbackChanged();
}
