#include "Theme.h"

Theme::Theme(QObject *parent)
    : QObject(parent)
{
}
