#include "reader/VORAAdjustLuminanceView.h"

#include "core/VORAUserConfig.h"

#include <algorithm>
#include <cmath>

VORAAdjustLuminanceView::VORAAdjustLuminanceView(QObject *parent)
    : QObject(parent)
{
    const qreal stored = VORAUserConfig::shareUserConfigInstance()->luminanceValue();
    m_layerOpacity = std::isfinite(stored) ? stored : 0;
    m_sliderValue = std::clamp<qreal>(1 - m_layerOpacity, 0, 1);
}

VORAAdjustLuminanceView::~VORAAdjustLuminanceView() = default;

void VORAAdjustLuminanceView::adjustLuminance(qreal s)
{
    if (!std::isfinite(s))
        return;
    s = std::clamp<qreal>(s, 0, 1);
    m_sliderValue = s;
    emit sliderValueChanged();
    m_layerOpacity = opacityForSliderValue(s);
    // A few bytes into the user defaults, as every reader setting is kept.
    VORAUserConfig::shareUserConfigInstance()->setLuminanceValue(m_layerOpacity);
    emit layerOpacityChanged(m_layerOpacity);
}

void VORAAdjustLuminanceView::close()
{
    emit removeFromSuperview();
}
