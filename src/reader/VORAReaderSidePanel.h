#pragma once

#include <QObject>
#include <QTimer>

// A panel of the reader (chapter list, bookmarks) lying over a full-screen
// dimming button (mengbanBtn). A tap on the dimming button closes the panel
// (mengbanBtnClick): the button is disabled, the panel slides out to the right
// edge, x = closedX, in slideDuration milliseconds, and a one-shot timer of
// the same length (OnTimer) asks for its removal with removeFromSuperview();
// the reader screen then drops the panel's item and deletes the object.
//
// QML: bind the dimming button's `enabled` to mengbanEnabled and start the
// slide-out when `closing` becomes true.
class VORAReaderSidePanel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool mengbanEnabled READ mengbanEnabled NOTIFY closingChanged)
    Q_PROPERTY(bool closing READ isClosing NOTIFY closingChanged)
    Q_PROPERTY(int closedX READ closedX CONSTANT)
    Q_PROPERTY(int slideDuration READ slideDuration CONSTANT)
public:
    static constexpr int closedPanelX = 1024;
    static constexpr int slideMs = 350;

    explicit VORAReaderSidePanel(QObject *parent = nullptr);
    ~VORAReaderSidePanel() override;

    bool mengbanEnabled() const { return !m_closing; }
    bool isClosing() const { return m_closing; }
    int closedX() const { return closedPanelX; }
    int slideDuration() const { return slideMs; }
    // True once removeFromSuperview() was emitted.
    bool isRemoved() const { return m_removed; }

    // The dimming button; a second tap while closing does nothing.
    Q_INVOKABLE void mengbanBtnClick();

signals:
    void closingChanged();
    void removeFromSuperview();

private:
    void OnTimer();

    QTimer m_closeTimer;
    bool m_closing = false;
    bool m_removed = false;
};
