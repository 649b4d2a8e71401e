#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

// The look of the app: colours, fonts, sizes and the background picture,
// named by the role they play. QML takes every colour and size from here
// (`Theme.accent`, `Theme.fontSmall`) and keeps only layout arithmetic of its
// own. Every property notifies `changed`, so a skin can replace the values
// while the app runs and every binding follows.
class Theme : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    // Text
    Q_PROPERTY(QString fontFamily MEMBER m_fontFamily NOTIFY changed)
    // Surfaces
    Q_PROPERTY(QColor windowBackground MEMBER m_windowBackground NOTIFY changed)
public:
    explicit Theme(QObject *parent = nullptr);

signals:
    void changed();

private:
    QString m_fontFamily = QStringLiteral("Noto Sans CJK SC");
    QColor m_windowBackground{"#FFF3E6"};
};
