#include "core/VORAUserConfig.h"

#include "platform/UserDefaults.h"

namespace {
const QString kIsNotifyUpdate = QStringLiteral("KIsNotifyUpdate");
const QString kIsTurnPageByVolumeBtn = QStringLiteral("KIsTurnPageByVolumeBtn");
const QString kIsDisplayTuCao = QStringLiteral("KIsDisplayTuCao");
const QString kIsVerticalScreen = QStringLiteral("KIsVerticalScreen");
const QString kIsOpenLuminanceAutoAdjust = QStringLiteral("KIsOpenLuminanceAutoAdjust");
const QString kLuminanceValue = QStringLiteral("KLuminanceValue");
const QString kIsAutoLuminance = QStringLiteral("KIsAutoLuminance");
} // namespace

VORAUserConfig *VORAUserConfig::shareUserConfigInstance()
{
    static VORAUserConfig *instance = new VORAUserConfig;
    return instance;
}

VORAUserConfig::VORAUserConfig(UserDefaults *defaults)
    : m_defaults(defaults)
{
    loadUserSetting();
}

UserDefaults &VORAUserConfig::defaults() const
{
    return m_defaults ? *m_defaults : UserDefaults::standard();
}

void VORAUserConfig::loadUserSetting()
{
    UserDefaults &d = defaults();
    m_isNotifyUpdate = d.contains(kIsNotifyUpdate) ? d.boolForKey(kIsNotifyUpdate) : true;
    m_isTurnPageByVolumeBtn = d.boolForKey(kIsTurnPageByVolumeBtn);
    m_isDisplayTuCao = d.boolForKey(kIsDisplayTuCao);
    m_isVerticalScreen = d.contains(kIsVerticalScreen) ? d.boolForKey(kIsVerticalScreen) : true;
    m_isOpenLuminanceAutoAdjust = d.boolForKey(kIsOpenLuminanceAutoAdjust);
    m_luminanceValue = double(float(d.doubleForKey(kLuminanceValue)));
    m_isAutoLuminance = d.boolForKey(kIsAutoLuminance);
}

void VORAUserConfig::setIsNotifyUpdate(bool v)
{
    m_isNotifyUpdate = v;
    defaults().setValue(kIsNotifyUpdate, v);
}

void VORAUserConfig::setIsTurnPageByVolumeBtn(bool v)
{
    m_isTurnPageByVolumeBtn = v;
    defaults().setValue(kIsTurnPageByVolumeBtn, v);
}

void VORAUserConfig::setIsDisplayTuCao(bool v)
{
    m_isDisplayTuCao = v;
    defaults().setValue(kIsDisplayTuCao, v);
}

void VORAUserConfig::setIsVerticalScreen(bool v)
{
    m_isVerticalScreen = v;
    defaults().setValue(kIsVerticalScreen, v);
}

void VORAUserConfig::setIsOpenLuminanceAutoAdjust(bool v)
{
    m_isOpenLuminanceAutoAdjust = v;
    defaults().setValue(kIsOpenLuminanceAutoAdjust, v);
}

void VORAUserConfig::setLuminanceValue(double v)
{
    const float stored = float(v);
    m_luminanceValue = double(stored);
    defaults().setValue(kLuminanceValue, double(stored));
}

void VORAUserConfig::setIsAutoLuminance(bool v)
{
    m_isAutoLuminance = v;
    defaults().setValue(kIsAutoLuminance, v);
}
