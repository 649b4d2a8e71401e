#pragma once

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

// Writing a new tucao, first step: the text, then a tap on the page where it
// goes. The view lies over the whole screen; its input box (400 x 150 points)
// holds the text field (TucaotextFiled) with cancel and confirm.
//
// popUpTucaoInputView() is what the reader calls before showing the view: it
// answers whether the view may open. Nobody signed in: the user's
// userViewJumpType becomes 1, the user is saved, signInRequested() is emitted
// and the answer is false.
//
// configTucaoInput(): an empty (or blank) text shows "吐槽不能为空，请输入吐槽内容" for
// 0.5 s and keeps the box; otherwise the box gives way to the placing hint
// (locationTucaoImageView) and isLocation is set. Either way the keyboard
// closes. The next touch that ends on the view while isLocation is set emits
// placeTucao(text, point) and closes the view.
//
// In landscape the box stands centred at y = (H - 200) / 2 - 200 while the
// text field is being edited (moved there over 0.5 s by the QML) and at
// (H - 200) / 2 otherwise; in portrait it stays at (H - 200) / 2.
class VORATuCaoInputView : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(bool isLocation READ isLocation NOTIFY stateChanged)
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY stateChanged)
    Q_PROPERTY(bool inputBoxVisible READ inputBoxVisible NOTIFY stateChanged)
    Q_PROPERTY(bool keyboardOpen READ keyboardOpen NOTIFY stateChanged)
    Q_PROPERTY(QSizeF screenSize READ screenSize WRITE setScreenSize NOTIFY geometryChanged)
    Q_PROPERTY(QRectF inputBoxRect READ inputBoxRect NOTIFY geometryChanged)
public:
    static constexpr qreal inputBoxWidth = 400;
    static constexpr qreal inputBoxHeight = 150;
    static constexpr double emptyIndicatorSeconds = 0.5;
    static inline const QString emptyText = QStringLiteral("吐槽不能为空，请输入吐槽内容");

    explicit VORATuCaoInputView(QObject *parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString &text);
    bool isLocation() const { return m_isLocation; }
    bool isOpen() const { return m_isOpen; }
    bool inputBoxVisible() const { return m_isOpen && !m_isLocation; }
    bool keyboardOpen() const { return m_keyboardOpen; }
    // 1024 x 768 in landscape, 768 x 1024 in portrait (wider than tall is landscape).
    QSizeF screenSize() const { return m_screenSize; }
    void setScreenSize(const QSizeF &size);
    bool isLandscape() const { return m_screenSize.width() > m_screenSize.height(); }
    QRectF inputBoxRect() const;

    Q_INVOKABLE bool popUpTucaoInputView();
    Q_INVOKABLE void textFieldDidBeginEditing();
    Q_INVOKABLE void keyboardWillHide();
    Q_INVOKABLE void configTucaoInput();
    Q_INVOKABLE void cancelTucaoInput();
    // A touch that ended on the view at point (screen points); true when it
    // placed the tucao.
    Q_INVOKABLE bool touchEndedAtPoint(const QPointF &point);

signals:
    void textChanged();
    void stateChanged();
    void geometryChanged();
    void signInRequested();
    void placeTucao(const QString &text, const QPointF &point);
    // An empty text was refused (the box shakes).
    void textRefused();
    void closed();

private:
    void close();

    QString m_text;
    bool m_isLocation = false;
    bool m_isOpen = false;
    bool m_keyboardOpen = false;
    QSizeF m_screenSize{1024, 768};
};
