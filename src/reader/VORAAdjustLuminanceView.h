#pragma once

#include <QObject>

// The reader's brightness panel: a 351 x 69 panel with a slider, over a
// full-screen transparent button that closes it.
//
// The reader's black layer has the opacity of the user setting
// luminanceValue. The slider opens at 1 - luminanceValue; each change to s
// sets the layer's opacity and the stored luminanceValue to (1 - s) / 1.2 at
// once (0 at s = 1, 0.8333 at s = 0). Reopening thus shows the slider a little
// off where it was left (0 becomes 0.1667), as it always has.
//
// The reader screen connects layerOpacityChanged to its layer and deletes the
// panel on removeFromSuperview(). Main thread only.
class VORAAdjustLuminanceView : public QObject
{
    Q_OBJECT
    Q_PROPERTY(qreal sliderValue READ sliderValue NOTIFY sliderValueChanged)
    Q_PROPERTY(qreal layerOpacity READ layerOpacity NOTIFY layerOpacityChanged)
    Q_PROPERTY(int panelWidth READ panelWidth CONSTANT)
    Q_PROPERTY(int panelHeight READ panelHeight CONSTANT)
public:
    explicit VORAAdjustLuminanceView(QObject *parent = nullptr);
    ~VORAAdjustLuminanceView() override;

    qreal sliderValue() const { return m_sliderValue; }
    qreal layerOpacity() const { return m_layerOpacity; }
    int panelWidth() const { return 351; }
    int panelHeight() const { return 69; }

    static qreal opacityForSliderValue(qreal s) { return (1 - s) / 1.2; }

    // The slider moved to s (clamped to 0..1; not a number is ignored).
    Q_INVOKABLE void adjustLuminance(qreal s);
    // The full-screen button under the panel.
    Q_INVOKABLE void close();

signals:
    void sliderValueChanged();
    void layerOpacityChanged(qreal opacity);
    void removeFromSuperview();

private:
    qreal m_sliderValue = 1;
    qreal m_layerOpacity = 0;
};
