#pragma once

#include "net/VORATucao.h"
#include "net/VORATucaoDTO.h"
#include "tucao/VORATucaoPagePlacement.h"

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QTimer>

// One editing act on the current page: a new tucao being placed (isPublished
// false) or one of the user's own being moved, resized or deleted (isPublished
// true). It holds the edited rectangle in the page view's points, over a
// editing layer over the reading surface (tucaoEditView: the placement's
// surface; without one 1024 x 768 in landscape, screen state 1, else
// 768 x 1024) with a circular menu of confirm, cancel and delete.
//
// A new tucao's rectangle is sized from its text (the 11 pt label at most
// 200 points wide, at most 20 lines, with a small margin), centred on the
// tapped point and kept inside the part of the screen the page image covers.
// Moves and resizes stay inside it too, and keep at least 24 x 16 points.
//
// The options (each takes the rectangle as it stands):
//   confirm: new -> publishTucaoRequested(record); existing -> confirmEditRequested(record)
//   cancel:  new -> the menu closes; existing -> tucaoPutBack(the tucao at its
//            rectangle now, in page pixels), nothing is sent, the menu closes
//   delete:  new -> the menu closes, nothing is sent; existing -> deleteTucaoRequested(record)
// Records are in view points; the publisher converts them. After the answers
// of the add, edit or delete service the reader closes the menu
// (hideEditTuCaoView): it collapses, and 0.2 s later the layer goes
// (removeEditLayer, then removed()). Once collapsing, the options do nothing.
class VORATuCaoEditManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isPublished READ isPublished CONSTANT)
    Q_PROPERTY(QString tucaoStr READ tucaoStr CONSTANT)
    Q_PROPERTY(QPointF tucaoLocationPoint READ tucaoLocationPoint CONSTANT)
    Q_PROPERTY(QRectF editRect READ editRect NOTIFY editRectChanged)
    Q_PROPERTY(QRectF boundsRect READ boundsRect CONSTANT)
    Q_PROPERTY(QSizeF tucaoEditViewSize READ tucaoEditViewSize CONSTANT)
    Q_PROPERTY(bool menuExpanded READ menuExpanded NOTIFY stateChanged)
    Q_PROPERTY(bool isRemoved READ isRemoved NOTIFY stateChanged)
public:
    static constexpr qreal maxLabelWidth = 200;
    static constexpr int maxLines = 20;
    static constexpr qreal labelMargin = 6;
    static constexpr qreal minWidth = 24;
    static constexpr qreal minHeight = 16;
    static constexpr int removeDelayMs = 200;
    static constexpr qreal contentPointSize = 11;

    // A new tucao: its text and where the user tapped (page view points).
    VORATuCaoEditManager(const QString &tucaoStr, const QPointF &tucaoLocationPoint,
                         const VORATucaoPagePlacement &placement, int screenState,
                         QObject *parent = nullptr);
    // One of the user's own, taken off the page for editing.
    VORATuCaoEditManager(const VORATucao &tucao, const VORATucaoPagePlacement &placement,
                         int screenState, QObject *parent = nullptr);

    bool isPublished() const { return m_isPublished; }
    QString tucaoStr() const { return m_tucaoStr; }
    QPointF tucaoLocationPoint() const { return m_tucaoLocationPoint; }
    QRectF editRect() const { return m_editRect; }
    QRectF boundsRect() const { return m_bounds; }
    QSizeF tucaoEditViewSize() const;
    int screenState() const { return m_screenState; }
    bool menuExpanded() const { return m_menuExpanded; }
    bool isRemoved() const { return m_isRemoved; }
    const VORATucaoPagePlacement &placement() const { return m_placement; }
    // The tucao edited (for a new one: its text and author, no id yet).
    const VORATucao &currentTucao() const { return m_tucao; }

    // The rectangle given the label size of text (at most 200 points wide and
    // 20 lines of 11 pt) plus its margin.
    static QSizeF sizeForText(const QString &text);

    // The record of the rectangle as it stands, in view points (transRectFromCurrentView).
    VORATucaoDTO transRectFromCurrentView() const;

    Q_INVOKABLE void setEditRect(const QRectF &rect);
    Q_INVOKABLE void moveBy(qreal dx, qreal dy);
    // Resizes from the bottom-right corner.
    Q_INVOKABLE void resizeBy(qreal dw, qreal dh);

    Q_INVOKABLE void confirmPubTuCao();
    Q_INVOKABLE void cancleEditTuCao();
    Q_INVOKABLE void deleteTuCaoView();
    Q_INVOKABLE void hideEditTuCaoView();
    Q_INVOKABLE void removeEditLayer();

signals:
    void editRectChanged();
    void stateChanged();
    void publishTucaoRequested(const VORATucaoDTO &record);
    void confirmEditRequested(const VORATucaoDTO &record);
    void deleteTucaoRequested(const VORATucaoDTO &record);
    void tucaoPutBack(const VORATucao &tucao);
    void removed();

private:
    VORATuCaoEditManager(const VORATucaoPagePlacement &placement, int screenState, QObject *parent);
    QRectF clamped(QRectF rect) const;

    VORATucaoPagePlacement m_placement;
    VORATucao m_tucao;
    QString m_tucaoStr;
    QPointF m_tucaoLocationPoint;
    QRectF m_editRect;
    QRectF m_bounds;
    int m_screenState = 0;
    bool m_isPublished = false;
    bool m_menuExpanded = true;
    bool m_isRemoved = false;
    QTimer m_removeTimer;
};
