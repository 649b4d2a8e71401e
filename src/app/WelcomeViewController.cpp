#include "WelcomeViewController.h"

WelcomeViewController::WelcomeViewController(bool landscape, QObject *parent)
    : QObject(parent)
    , m_landscape(landscape)
{
}

QStringList WelcomeViewController::pages() const
{
    QStringList list;
    const QString pattern = m_landscape ? QStringLiteral("welcome%1") : QStringLiteral("uprightwelcome%1");
    for (int i = 0; i < 5; ++i)
        list.append(pattern.arg(i));
    return list;
}

void WelcomeViewController::welcomeToOrientation(bool landscape)
{
    if (m_landscape == landscape)
        return;
    m_landscape = landscape;
    emit pagesChanged();
}

void WelcomeViewController::deleteWelcomeView()
{
    emit showHomePage();
}
