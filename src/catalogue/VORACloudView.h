#pragma once

#include "catalogue/VORACloudButton.h"
#include "net/VORACloudTagDTO.h"

#include <QList>
#include <QObject>
#include <QRandomGenerator>

// The cloud of hot keywords on the search screen: at most 10 buttons (tags
// 1001-1010) placed at random inside a 503-point-wide area whose height limit
// is 950 (portrait) or 700 (landscape). A layout pass that overflows the limit
// is thrown away and drawn again.
//
// buttons: the laid-out buttons (VORACloudButton).
class VORACloudView : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<VORACloudButton> buttons READ buttonList NOTIFY buttonsChanged)
    Q_PROPERTY(int areaWidth READ areaWidth CONSTANT)
    Q_PROPERTY(int heightLimit READ heightLimit NOTIFY buttonsChanged)
public:
    static constexpr int maxButtons = 10;
    static constexpr int firstTag = 1001;
    static constexpr int areaWidthValue = 503;
    static constexpr int maxTextWidth = 181;
    static constexpr int maxPasses = 500;

    using Button = VORACloudButton;

    explicit VORACloudView(QObject *parent = nullptr);

    const QList<Button> &buttonList() const { return m_buttons; }
    int areaWidth() const { return areaWidthValue; }
    int heightLimit() const { return m_landscape ? 700 : 950; }
    int layoutPasses() const { return m_passes; }

    void setTagList(const QList<VORACloudTagDTO> &tags);
    const QList<VORACloudTagDTO> &tagList() const { return m_tags; }
    void setLandscape(bool landscape);
    // Lays the buttons out again (also on every setTagList / setLandscape).
    void drewCloudView();
    // A fixed seed makes the layout repeatable (tests).
    void seed(quint32 value) { m_random.seed(value); }

    // Background and font size of one of the four looks (0-3).
    static QString backgroundForLook(int look);
    static int fontSizeForLook(int look);

    Q_INVOKABLE void tapButton(int tag);

signals:
    void buttonsChanged();
    // The delegate's enterComicList: a keyword was tapped.
    void enterComicList(const QString &keyword);

private:
    bool layOutOnce(QList<Button> &out);
    quint32 next() { return m_random.generate(); }

    QList<VORACloudTagDTO> m_tags;
    QList<Button> m_buttons;
    bool m_landscape = true;
    int m_passes = 0;
    QRandomGenerator m_random;
};
