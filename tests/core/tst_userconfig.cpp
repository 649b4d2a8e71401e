#include "core/VORAUserConfig.h"

#include "platform/UserDefaults.h"

#include "TestHome.h"

#include <QTest>

class tst_UserConfig : public QObject
{
    Q_OBJECT
private slots:
    void defaultsWhenNothingIsStored();
    void changesSurviveARestart();
    void storedValuesOfTheWrongType();
};

void tst_UserConfig::defaultsWhenNothingIsStored()
{
    TestHome home;
    VORAUserConfig config;
    QCOMPARE(config.isNotifyUpdate(), true);
    QCOMPARE(config.isVerticalScreen(), true);
    QCOMPARE(config.isTurnPageByVolumeBtn(), false);
    QCOMPARE(config.isDisplayTuCao(), false);
    QCOMPARE(config.isOpenLuminanceAutoAdjust(), false);
    QCOMPARE(config.isAutoLuminance(), false);
    QCOMPARE(config.luminanceValue(), 0.0);
    // Loading defaults writes nothing.
    QVERIFY(!UserDefaults::standard().contains("KIsNotifyUpdate"));
}

void tst_UserConfig::changesSurviveARestart()
{
    TestHome home;
    {
        VORAUserConfig config;
        config.setIsVerticalScreen(false);
        config.setIsNotifyUpdate(false);
        config.setIsTurnPageByVolumeBtn(true);
        config.setIsDisplayTuCao(true);
        config.setIsOpenLuminanceAutoAdjust(true);
        config.setIsAutoLuminance(true);
        config.setLuminanceValue(0.1);
        QCOMPARE(config.luminanceValue(), double(0.1f)); // kept as a float
    }
    // A fresh store over the same file, as in the next launch.
    UserDefaults reopened(UserDefaults::standardFilePath());
    VORAUserConfig next(&reopened);
    QCOMPARE(next.isVerticalScreen(), false);
    QCOMPARE(next.isNotifyUpdate(), false);
    QCOMPARE(next.isTurnPageByVolumeBtn(), true);
    QCOMPARE(next.isDisplayTuCao(), true);
    QCOMPARE(next.isOpenLuminanceAutoAdjust(), true);
    QCOMPARE(next.isAutoLuminance(), true);
    QCOMPARE(next.luminanceValue(), double(0.1f));

    // Back to true is stored as well (not merely "absent").
    next.setIsVerticalScreen(true);
    next.setLuminanceValue(0.0);
    VORAUserConfig third(&reopened);
    QCOMPARE(third.isVerticalScreen(), true);
    QCOMPARE(third.luminanceValue(), 0.0);
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
