#pragma once

#include <QObject>
#include <QString>

// The tucao menu bar of the reader: show/hide and play/pause switches, the
// previous and next group, writing a tucao, and the title, page and tucao
// count it shows.
//
// showTucaoflag starts from the user setting isDisplayTuCao and playTucaoflag
// with it. showTucaoBtn() flips showTucaoflag, saves it as isDisplayTuCao (so
// it holds for the next chapter and after a restart), sets playTucaoflag to
// the same value and emits showTucao() and playTucao(). playTucaoBtn() flips
// playTucaoflag while tucao are shown (paused tucao stay on screen).
//
// Button pictures: while shown "tucaohide.png" (pressed "tucaohidepressed.png")
// and "tucaostart.png" ("tucaostartpressed.png"); while hidden "tucaoshow.png"
// (it has no pressed picture) and "tucaosuspend.png" ("tucaosuspendpressed.png").
// The play button follows playTucaoflag.
class VORATuCaoMenuView : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool showTucaoflag READ showTucaoflag NOTIFY switchesChanged)
    Q_PROPERTY(bool playTucaoflag READ playTucaoflag NOTIFY switchesChanged)
    Q_PROPERTY(QString showButtonPicture READ showButtonPicture NOTIFY switchesChanged)
    Q_PROPERTY(QString showButtonPressedPicture READ showButtonPressedPicture NOTIFY switchesChanged)
    Q_PROPERTY(QString playButtonPicture READ playButtonPicture NOTIFY switchesChanged)
    Q_PROPERTY(QString playButtonPressedPicture READ playButtonPressedPicture NOTIFY switchesChanged)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY labelsChanged)
    Q_PROPERTY(QString pageLabel READ pageLabel WRITE setPageLabel NOTIFY labelsChanged)
    Q_PROPERTY(int tucaoTotal READ tucaoTotal WRITE setTucaoTotal NOTIFY labelsChanged)
public:
    static inline const QString hidePicture = QStringLiteral("tucaohide.png");
    static inline const QString hidePressedPicture = QStringLiteral("tucaohidepressed.png");
    static inline const QString showPicture = QStringLiteral("tucaoshow.png");
    static inline const QString startPicture = QStringLiteral("tucaostart.png");
    static inline const QString startPressedPicture = QStringLiteral("tucaostartpressed.png");
    static inline const QString suspendPicture = QStringLiteral("tucaosuspend.png");
    static inline const QString suspendPressedPicture = QStringLiteral("tucaosuspendpressed.png");

    explicit VORATuCaoMenuView(QObject *parent = nullptr);

    bool showTucaoflag() const { return m_showTucaoflag; }
    bool playTucaoflag() const { return m_playTucaoflag; }
    QString showButtonPicture() const;
    QString showButtonPressedPicture() const;
    QString playButtonPicture() const;
    QString playButtonPressedPicture() const;

    QString title() const { return m_title; }
    void setTitle(const QString &title);
    QString pageLabel() const { return m_pageLabel; }
    void setPageLabel(const QString &label);
    int tucaoTotal() const { return m_tucaoTotal; }
    void setTucaoTotal(int total);

    Q_INVOKABLE void showTucaoBtn();
    Q_INVOKABLE void playTucaoBtn();
    Q_INVOKABLE void lastPageTucaoBtn();
    Q_INVOKABLE void nextPageTucaoBtn();
    Q_INVOKABLE void writeTucaoBtn();

signals:
    void switchesChanged();
    void labelsChanged();
    void showTucao(bool show);
    void playTucao(bool play);
    void previousGroupRequested();
    void nextGroupRequested();
    void writeTucaoRequested();

private:
    bool m_showTucaoflag = false;
    bool m_playTucaoflag = false;
    QString m_title;
    QString m_pageLabel;
    int m_tucaoTotal = 0;
};
