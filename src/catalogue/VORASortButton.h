#pragma once

#include <QList>
#include <QMetaType>
#include <QString>

// One button of the category screen's menus: the menu buttons (题材, 进度,
// 排序) and the filters of the open menu. `tag` is what the screen's
// switchFilter / menu calls take back; `title` is the label.
struct VORASortButton
{
    Q_GADGET
    Q_PROPERTY(int tag MEMBER tag)
    Q_PROPERTY(QString title MEMBER title)
public:
    int tag = 0;
    QString title;
};
