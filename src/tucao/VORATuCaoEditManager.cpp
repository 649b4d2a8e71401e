#include "tucao/VORATuCaoEditManager.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORAUtility.h"
#include "tucao/VORATucaoGeometry.h"

#include <QFont>
#include <QFontMetricsF>

#include <cmath>

VORATuCaoEditManager::VORATuCaoEditManager(const VORATucaoPagePlacement &placement, int screenState,
                                           QObject *parent)
    : QObject(parent)
    , m_placement(placement)
    , m_screenState(screenState)
{
    m_removeTimer.setSingleShot(true);
    m_removeTimer.setInterval(removeDelayMs);
    connect(&m_removeTimer, &QTimer::timeout, this, &VORATuCaoEditManager::removeEditLayer);
    // The rectangle stays where the image is and on the layer.
    const QRectF layer(QPointF(0, 0), tucaoEditViewSize());
    m_bounds = VORATucaoGeometry::imageRectInView(placement).intersected(layer);
    if (m_bounds.width() < minWidth || m_bounds.height() < minHeight)
        m_bounds = layer;
}

VORATuCaoEditManager::VORATuCaoEditManager(const QString &tucaoStr, const QPointF &tucaoLocationPoint,
                                           const VORATucaoPagePlacement &placement, int screenState,
                                           QObject *parent)
    : VORATuCaoEditManager(placement, screenState, parent)
{
    m_isPublished = false;
    m_tucaoStr = tucaoStr;
    m_tucaoLocationPoint = tucaoLocationPoint;
    VORAUser *user = VORAAppGlobalData::shareAppGlobalData()->user();
    m_tucao.content = tucaoStr;
    m_tucao.userId = user->userId();
    m_tucao.nickName = user->nickName();
    const QSizeF size = sizeForText(tucaoStr);
    m_editRect = clamped(QRectF(tucaoLocationPoint.x() - size.width() / 2,
                                tucaoLocationPoint.y() - size.height() / 2, size.width(), size.height()));
}

VORATuCaoEditManager::VORATuCaoEditManager(const VORATucao &tucao, const VORATucaoPagePlacement &placement,
                                           int screenState, QObject *parent)
    : VORATuCaoEditManager(placement, screenState, parent)
{
    m_isPublished = true;
    m_tucao = tucao;
    m_tucaoStr = tucao.content;
    // Left where it stands, even partly outside the screen, until moved.
    m_editRect = VORATucaoGeometry::viewRectForTucao(tucao, placement);
}

QSizeF VORATuCaoEditManager::tucaoEditViewSize() const
{
    if (!m_placement.surfaceSize.isEmpty())
        return m_placement.surfaceSize;
    return m_screenState == 1 ? QSizeF(1024, 768) : QSizeF(768, 1024);
}

QSizeF VORATuCaoEditManager::sizeForText(const QString &text)
{
    QFont font;
    font.setPointSizeF(contentPointSize);
    const QSizeF label = VORAUtility::heightForText(text, font, 0, maxLabelWidth);
    const qreal maxHeight = std::ceil(QFontMetricsF(font).lineSpacing() * maxLines);
    return QSizeF(qMax(minWidth, std::ceil(label.width()) + 2 * labelMargin),
                  qMax(minHeight, std::ceil(qMin(label.height(), maxHeight)) + 2 * labelMargin));
}

QRectF VORATuCaoEditManager::clamped(QRectF rect) const
{
    rect.setWidth(qBound(qMin(minWidth, m_bounds.width()), rect.width(), m_bounds.width()));
    rect.setHeight(qBound(qMin(minHeight, m_bounds.height()), rect.height(), m_bounds.height()));
    rect.moveLeft(qBound(m_bounds.left(), rect.left(), m_bounds.right() - rect.width()));
    rect.moveTop(qBound(m_bounds.top(), rect.top(), m_bounds.bottom() - rect.height()));
    return rect;
}

VORATucaoDTO VORATuCaoEditManager::transRectFromCurrentView() const
{
    VORATucaoDTO dto;
    dto.tucaoId = m_tucao.tucaoId;
    dto.content = m_tucao.content;
    dto.userId = m_tucao.userId;
    dto.updateTime = m_tucao.updateTime;
    dto.x = qint64(m_editRect.x());
    dto.y = qint64(m_editRect.y());
    dto.width = qint64(m_editRect.width());
    dto.height = qint64(m_editRect.height());
    return dto;
}

void VORATuCaoEditManager::setEditRect(const QRectF &rect)
{
    if (!m_menuExpanded || !std::isfinite(rect.x()) || !std::isfinite(rect.y())
        || !std::isfinite(rect.width()) || !std::isfinite(rect.height()))
        return;
    const QRectF next = clamped(rect);
    if (next == m_editRect)
        return;
    m_editRect = next;
    emit editRectChanged();
}

void VORATuCaoEditManager::moveBy(qreal dx, qreal dy)
{
    setEditRect(m_editRect.translated(dx, dy));
}

void VORATuCaoEditManager::resizeBy(qreal dw, qreal dh)
{
    QRectF rect = m_editRect;
    // Growing stops at the bounds instead of pushing the rectangle away.
    rect.setWidth(qMax(minWidth, qMin(rect.width() + dw, m_bounds.right() - rect.left())));
    rect.setHeight(qMax(minHeight, qMin(rect.height() + dh, m_bounds.bottom() - rect.top())));
    setEditRect(rect);
}

void VORATuCaoEditManager::confirmPubTuCao()
{
    if (!m_menuExpanded)
        return;
    if (m_isPublished)
        emit confirmEditRequested(transRectFromCurrentView());
    else
        emit publishTucaoRequested(transRectFromCurrentView());
}

void VORATuCaoEditManager::cancleEditTuCao()
{
    if (!m_menuExpanded)
        return;
    if (m_isPublished) {
        const VORATucaoDTO record = VORATucaoGeometry::getNewTucaoDTO(transRectFromCurrentView(), m_placement);
        VORATucao back = m_tucao;
        back.x = qint32(record.x);
        back.y = qint32(record.y);
        back.width = qint32(record.width);
        back.height = qint32(record.height);
        emit tucaoPutBack(back);
    }
    hideEditTuCaoView();
}

void VORATuCaoEditManager::deleteTuCaoView()
{
    if (!m_menuExpanded)
        return;
    if (m_isPublished)
        emit deleteTucaoRequested(transRectFromCurrentView());
    else
        hideEditTuCaoView();
}

void VORATuCaoEditManager::hideEditTuCaoView()
{
    if (!m_menuExpanded)
        return;
    m_menuExpanded = false;
    emit stateChanged();
    m_removeTimer.start();
}

void VORATuCaoEditManager::removeEditLayer()
{
    m_removeTimer.stop();
    if (m_isRemoved)
        return;
    m_menuExpanded = false;
    m_isRemoved = true;
    emit stateChanged();
    emit removed();
}
