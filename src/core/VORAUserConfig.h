#pragma once

#include <QString>

class UserDefaults;

// Reader preferences mirrored in the user defaults; every setter writes and
// flushes at once. isNotifyUpdate and isVerticalScreen default to true, the
// others to false / 0.0.
class VORAUserConfig
{
public:
    static VORAUserConfig *shareUserConfigInstance();

    // Binds to the given store (the standard one when null) and loads.
    explicit VORAUserConfig(UserDefaults *defaults = nullptr);

    void loadUserSetting();

    bool isNotifyUpdate() const { return m_isNotifyUpdate; }
    void setIsNotifyUpdate(bool v);
    bool isTurnPageByVolumeBtn() const { return m_isTurnPageByVolumeBtn; }
    void setIsTurnPageByVolumeBtn(bool v);
    bool isDisplayTuCao() const { return m_isDisplayTuCao; }
    void setIsDisplayTuCao(bool v);
    bool isVerticalScreen() const { return m_isVerticalScreen; }
    void setIsVerticalScreen(bool v);
    bool isOpenLuminanceAutoAdjust() const { return m_isOpenLuminanceAutoAdjust; }
    void setIsOpenLuminanceAutoAdjust(bool v);
    double luminanceValue() const { return m_luminanceValue; }
    void setLuminanceValue(double v); // kept with float precision
    bool isAutoLuminance() const { return m_isAutoLuminance; }
    void setIsAutoLuminance(bool v);

private:
    UserDefaults &defaults() const;

    UserDefaults *m_defaults = nullptr;
    bool m_isNotifyUpdate = true;
    bool m_isTurnPageByVolumeBtn = false;
    bool m_isDisplayTuCao = false;
    bool m_isVerticalScreen = true;
    bool m_isOpenLuminanceAutoAdjust = false;
    double m_luminanceValue = 0.0;
    bool m_isAutoLuminance = false;
};
