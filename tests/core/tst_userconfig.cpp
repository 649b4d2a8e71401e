#include "core/VORAUserConfig.h"

#include "platform/UserDefaults.h"

#include "TestHome.h"

#include <QTest>

namespace {
// Each switch with its stored default; the first two are on at first start.
struct Switch
{
    bool (VORAUserConfig::*get)() const;
    void (VORAUserConfig::*set)(bool);
    bool initial;
};
const Switch switches[] = {
    {&VORAUserConfig::isNotifyUpdate, &VORAUserConfig::setIsNotifyUpdate, true},
    {&VORAUserConfig::isVerticalScreen, &VORAUserConfig::setIsVerticalScreen, true},
    {&VORAUserConfig::isTurnPageByVolumeBtn, &VORAUserConfig::setIsTurnPageByVolumeBtn, false},
    {&VORAUserConfig::isDisplayTuCao, &VORAUserConfig::setIsDisplayTuCao, false},
    {&VORAUserConfig::isOpenLuminanceAutoAdjust, &VORAUserConfig::setIsOpenLuminanceAutoAdjust, false},
    {&VORAUserConfig::isAutoLuminance, &VORAUserConfig::setIsAutoLuminance, false},
};
} // namespace

class tst_UserConfig : public QObject
{
    Q_OBJECT
private slots:
    void defaultsThenChangesSurviveARestart();
    void storedValuesOfTheWrongType();
};

void tst_UserConfig::defaultsThenChangesSurviveARestart()
{
    TestHome home;
    {
        VORAUserConfig config;
        for (const Switch &s : switches)
            QCOMPARE((config.*s.get)(), s.initial);
        QCOMPARE(config.luminanceValue(), 0.0);
        QVERIFY(!UserDefaults::standard().contains("KIsNotifyUpdate")); // loading defaults writes nothing
        for (const Switch &s : switches)
            (config.*s.set)(!s.initial);
        config.setLuminanceValue(0.1);
        QCOMPARE(config.luminanceValue(), double(0.1f)); // kept as a float
    }
    // A fresh store over the same file, as in the next launch.
    UserDefaults reopened(UserDefaults::standardFilePath());
    VORAUserConfig next(&reopened);
    for (const Switch &s : switches)
        QCOMPARE((next.*s.get)(), !s.initial);
    QCOMPARE(next.luminanceValue(), double(0.1f));
}

void tst_UserConfig::storedValuesOfTheWrongType()
{
    TestHome home;
    UserDefaults &defaults = UserDefaults::standard();
    defaults.setValue("KIsVerticalScreen", "maybe"); // present: the default no longer applies
    defaults.setValue("KIsNotifyUpdate", 0);
    defaults.setValue("KLuminanceValue", "bright");
    defaults.setValue("KIsDisplayTuCao", "1");
    UserDefaults reopened(UserDefaults::standardFilePath());
    VORAUserConfig config(&reopened);
    QCOMPARE(config.isVerticalScreen(), false);
    QCOMPARE(config.isNotifyUpdate(), false);
    QCOMPARE(config.luminanceValue(), 0.0);
    QCOMPARE(config.isDisplayTuCao(), true);
}

QTEST_GUILESS_MAIN(tst_UserConfig)
#include "tst_userconfig.moc"
