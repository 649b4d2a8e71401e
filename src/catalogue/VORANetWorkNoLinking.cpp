#include "catalogue/VORANetWorkNoLinking.h"

VORANetWorkNoLinking::VORANetWorkNoLinking(QObject *parent)
    : QObject(parent)
{
}

void VORANetWorkNoLinking::setAtag(int atag)
{
    if (m_atag == atag)
        return;
    m_atag = atag;
    emit changed();
}

void VORANetWorkNoLinking::showWithText(const QString &text)
{
    m_text = text;
    m_visible = true;
    emit changed();
}

void VORANetWorkNoLinking::hide()
{
    if (!m_visible)
        return;
    m_visible = false;
    emit changed();
}

void VORANetWorkNoLinking::retry()
{
    hide();
    emit retryRequested(m_atag);
}
