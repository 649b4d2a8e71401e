#include "reader/VORAReaderSidePanel.h"

VORAReaderSidePanel::VORAReaderSidePanel(QObject *parent)
    : QObject(parent)
{
    m_closeTimer.setSingleShot(true);
    m_closeTimer.setInterval(slideMs);
    connect(&m_closeTimer, &QTimer::timeout, this, &VORAReaderSidePanel::OnTimer);
}

VORAReaderSidePanel::~VORAReaderSidePanel() = default;

void VORAReaderSidePanel::mengbanBtnClick()
{
    if (m_closing)
        return;
    m_closing = true;
    emit closingChanged();
    m_closeTimer.start();
}

void VORAReaderSidePanel::OnTimer()
{
    m_removed = true;
    emit removeFromSuperview();
}
