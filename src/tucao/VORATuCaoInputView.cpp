#include "tucao/VORATuCaoInputView.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORAUtility.h"

VORATuCaoInputView::VORATuCaoInputView(QObject *parent)
    : QObject(parent)
{
}

void VORATuCaoInputView::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    emit textChanged();
}

void VORATuCaoInputView::setScreenSize(const QSizeF &size)
{
    if (m_screenSize == size || size.isEmpty())
        return;
    m_screenSize = size;
    emit geometryChanged();
}

QRectF VORATuCaoInputView::inputBoxRect() const
{
    const qreal x = (m_screenSize.width() - inputBoxWidth) / 2;
    qreal y = (m_screenSize.height() - 200) / 2;
    if (isLandscape() && m_keyboardOpen)
        y -= 200;
    return QRectF(x, y, inputBoxWidth, inputBoxHeight);
}

bool VORATuCaoInputView::popUpTucaoInputView()
{
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    if (!global->user()->isLogin()) {
        global->setUserViewJump(1, 2); // back to the page, no top-up
        emit signInRequested();
        return false;
    }
    setText(QString());
    m_isLocation = false;
    m_keyboardOpen = false;
    m_isOpen = true;
    emit stateChanged();
    emit geometryChanged();
    return true;
}

void VORATuCaoInputView::textFieldDidBeginEditing()
{
    if (m_keyboardOpen || !m_isOpen)
        return;
    m_keyboardOpen = true;
    emit stateChanged();
    emit geometryChanged();
}

void VORATuCaoInputView::keyboardWillHide()
{
    if (!m_keyboardOpen)
        return;
    m_keyboardOpen = false;
    emit stateChanged();
    emit geometryChanged();
}

void VORATuCaoInputView::configTucaoInput()
{
    if (!m_isOpen)
        return;
    if (m_text.trimmed().isEmpty()) { // blanks alone are no tucao either
        VORAUtility::openMBProgressHUDView(emptyText, emptyIndicatorSeconds);
        emit textRefused();
    } else {
        m_isLocation = true;
        emit stateChanged();
    }
    keyboardWillHide();
}

void VORATuCaoInputView::cancelTucaoInput()
{
    close();
}

bool VORATuCaoInputView::touchEndedAtPoint(const QPointF &point)
{
    if (!m_isOpen || !m_isLocation)
        return false;
    const QString text = m_text;
    close();
    emit placeTucao(text, point);
    return true;
}

void VORATuCaoInputView::close()
{
    if (!m_isOpen)
        return;
    m_isOpen = false;
    m_isLocation = false;
    m_keyboardOpen = false;
    emit stateChanged();
    emit geometryChanged();
    emit closed();
}
