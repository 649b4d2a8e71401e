#pragma once

#include <QMetaType>
#include <QString>

// One keyword button of the search screen's cloud, in the cloud area's points:
// its tag (1001-1010), text, place and size, background picture
// ("cloudbackground….png") and font size (12-15, Helvetica).
struct VORACloudButton
{
    Q_GADGET
    Q_PROPERTY(int tag MEMBER tag)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(int x MEMBER x)
    Q_PROPERTY(int y MEMBER y)
    Q_PROPERTY(int width MEMBER width)
    Q_PROPERTY(int height MEMBER height)
    Q_PROPERTY(QString background MEMBER background)
    Q_PROPERTY(int fontSize MEMBER fontSize)
public:
    int tag = 0;
    QString text;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    QString background;
    int fontSize = 12;
};
