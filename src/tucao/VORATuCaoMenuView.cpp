#include "tucao/VORATuCaoMenuView.h"

#include "core/VORAUserConfig.h"

VORATuCaoMenuView::VORATuCaoMenuView(QObject *parent)
    : QObject(parent)
    , m_showTucaoflag(VORAUserConfig::shareUserConfigInstance()->isDisplayTuCao())
    , m_playTucaoflag(m_showTucaoflag)
{
}

QString VORATuCaoMenuView::showButtonPicture() const
{
    return m_showTucaoflag ? hidePicture : showPicture;
}

QString VORATuCaoMenuView::showButtonPressedPicture() const
{
    return m_showTucaoflag ? hidePressedPicture : showPicture;
}

QString VORATuCaoMenuView::playButtonPicture() const
{
    return m_playTucaoflag ? startPicture : suspendPicture;
}

QString VORATuCaoMenuView::playButtonPressedPicture() const
{
    return m_playTucaoflag ? startPressedPicture : suspendPressedPicture;
}

void VORATuCaoMenuView::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    emit labelsChanged();
}

void VORATuCaoMenuView::setPageLabel(const QString &label)
{
    if (m_pageLabel == label)
        return;
    m_pageLabel = label;
    emit labelsChanged();
}

void VORATuCaoMenuView::setTucaoTotal(int total)
{
    if (m_tucaoTotal == total)
        return;
    m_tucaoTotal = total;
    emit labelsChanged();
}

void VORATuCaoMenuView::showTucaoBtn()
{
    m_showTucaoflag = !m_showTucaoflag;
    VORAUserConfig::shareUserConfigInstance()->setIsDisplayTuCao(m_showTucaoflag);
    m_playTucaoflag = m_showTucaoflag;
    emit switchesChanged();
    emit showTucao(m_showTucaoflag);
    emit playTucao(m_playTucaoflag);
}

void VORATuCaoMenuView::playTucaoBtn()
{
    if (!m_showTucaoflag)
        return; // hidden tucao do not play
    m_playTucaoflag = !m_playTucaoflag;
    emit switchesChanged();
    emit playTucao(m_playTucaoflag);
}

void VORATuCaoMenuView::lastPageTucaoBtn()
{
    emit previousGroupRequested();
}

void VORATuCaoMenuView::nextPageTucaoBtn()
{
    emit nextGroupRequested();
}

void VORATuCaoMenuView::writeTucaoBtn()
{
    emit writeTucaoRequested();
}
