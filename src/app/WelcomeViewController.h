#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QStringList>

// The welcome pages of the first launch (view tag 4733801): five pages, four
// pictures and a last page that is a button closing the view. Despite its
// name it is a view with a delegate (the root controller).
class WelcomeViewController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the root controller makes the welcome pages")
    Q_PROPERTY(QStringList pages READ pages NOTIFY pagesChanged)
    Q_PROPERTY(int tag READ tag CONSTANT)
public:
    static constexpr int viewTag = 4733801;
    static constexpr int firstPageTag = 316319; // 316319..316322, then the button 316323

    explicit WelcomeViewController(bool landscape, QObject *parent = nullptr);

    int tag() const { return viewTag; }
    // "welcome0".."welcome4" in landscape, "uprightwelcome0".."uprightwelcome4" in portrait.
    QStringList pages() const;
    bool isLandscape() const { return m_landscape; }

    void welcomeToOrientation(bool landscape);
    // The last page's button.
    Q_INVOKABLE void deleteWelcomeView();

signals:
    void pagesChanged();
    void showHomePage();

private:
    bool m_landscape = true;
};
