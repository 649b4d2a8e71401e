// The read gate, the one chapter access rule of the detail page, the reading
// session and the chapter panel: every branch with its dialog or sign-in
// route and the mark the detail page draws on the chapter's cell, and the seven-day seal window at its edges (the gate's rows take one
// case each side), on a fixed clock and a user record filled locally.

#include "TestHome.h"
#include "catalogue/VORAChapterPurchase.h"
#include "catalogue/VORAComicHomePageView.h"
#include "catalogue/VORAReadGate.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "platform/NotificationCenter.h"

#include <QTest>

namespace {
using Outcome = VORAReadGate::Outcome;
const QDateTime fixedNow = QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC);
} // namespace

class TestReadGate : public QObject
{
    Q_OBJECT

private slots:
    void sealWindow_data();
    void sealWindow();
    void gate_data();
    void gate();

private:
    TestHome m_home;
};

void TestReadGate::sealWindow_data()
{
    QTest::addColumn<qint64>("secondsSincePass");
    QTest::addColumn<bool>("sealed");
    QTest::newRow("just passed") << qint64(0) << true;
    QTest::newRow("604799 s") << qint64(604799) << true;
    QTest::newRow("604800 s: open") << qint64(604800) << false;
    QTest::newRow("86399 s ahead") << qint64(-86399) << true;
    QTest::newRow("86400 s ahead: open") << qint64(-86400) << false;
    QTest::newRow("a year ahead: open") << qint64(-365 * 86400) << false;
}

void TestReadGate::sealWindow()
{
    QFETCH(qint64, secondsSincePass);
    QFETCH(bool, sealed);
    // Fractions of a second are cut before comparing.
    const QDateTime pass = fixedNow.addSecs(-secondsSincePass).addMSecs(900);
    QCOMPARE(VORAReadGate::isSealed(pass, fixedNow.addMSecs(999)), sealed);
}

void TestReadGate::gate_data()
{
    QTest::addColumn<qint64>("isVip");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("buyed");
    QTest::addColumn<int>("isView");
    QTest::addColumn<int>("price");
    QTest::addColumn<qint64>("secondsSincePass");
    QTest::addColumn<QString>("user"); // "", "member" or "vip"
    QTest::addColumn<qint64>("coins");
    QTest::addColumn<int>("fromAppStore");
    QTest::addColumn<Outcome>("outcome");
    QTest::addColumn<QString>("message"); // of the dialog, if any
    QTest::addColumn<QString>("mark");    // of the chapter's cell on the detail page

    const qint64 old = 30 * 86400;
    const QString member = QStringLiteral("member");
    QTest::newRow("free comic") << qint64(0) << 2 << 0 << 0 << 30 << old << "" << qint64(0) << 0 << Outcome::Readable << "" << "";
    QTest::newRow("is_view opens a paid chapter") << qint64(1) << 2 << 0 << 1 << 50 << old << "" << qint64(0) << 0 << Outcome::Readable << "" << "comicbuyed";
    QTest::newRow("paid comic, free chapter") << qint64(1) << 1 << 0 << 0 << 30 << old << "" << qint64(0) << 0 << Outcome::Readable << "" << "";
    QTest::newRow("bought") << qint64(1) << 2 << 1 << 0 << 30 << old << member << qint64(0) << 0 << Outcome::Readable << "" << "buyread";
    QTest::newRow("price 0") << qint64(2) << 2 << 0 << 0 << 0 << old << member << qint64(0) << 0 << Outcome::Readable << "" << "buyread";
    QTest::newRow("buyed -1: sign-in") << qint64(1) << 2 << -1 << 0 << 30 << old << "" << qint64(0) << 0 << Outcome::SignIn << "" << "buyread";
    QTest::newRow("buyed -1, price 0, signed in: sign-in") << qint64(2) << 2 << -1 << 0 << 0 << old << member << qint64(500) << 0
                                                           << Outcome::SignIn << "" << "buyread";
    QTest::newRow("enough coins: 10002") << qint64(1) << 2 << 0 << 0 << 30 << old << member << qint64(100) << 0
                                         << Outcome::CoinAlert << "购买此章节需要30quorin币" << "buyread";
    QTest::newRow("exactly the price: 10002") << qint64(2) << 2 << 0 << 0 << 30 << old << member << qint64(30) << 0
                                              << Outcome::CoinAlert << "购买此章节需要30quorin币" << "buyread";
    QTest::newRow("one coin short: 10001")
        << qint64(1) << 2 << 0 << 0 << 30 << old << member << qint64(29) << 0 << Outcome::NotEnoughCoins
        << "该章节为付费章节哦!请购买后进行阅读!阅读本章节需要30个quorin币,您当前quorin币余额为29,余额不足,请充值!" << "buyread";
    QTest::newRow("paid, from the store: nothing") << qint64(1) << 2 << 0 << 0 << 30 << old << member << qint64(100) << 1
                                                   << Outcome::Nothing << "" << "buyread";
    QTest::newRow("sealed: 10000") << qint64(3) << 1 << 0 << 0 << 0 << qint64(604799) << member << qint64(0) << 0
                                   << Outcome::SealAlert << "即将阅读的VIP章节暂时被封印啦,7天后解封,成为Quorin会员即刻解封哦~" << "delayread";
    QTest::newRow("sealed, signed out: sign-in") << qint64(3) << 1 << 0 << 0 << 0 << qint64(86400) << "" << qint64(0) << 0
                                                 << Outcome::SignIn << "" << "delayread";
    QTest::newRow("sealed, paying member") << qint64(3) << 1 << 0 << 0 << 0 << qint64(86400) << "vip" << qint64(0) << 0
                                           << Outcome::Readable << "" << "delayread";
    QTest::newRow("sealed, from the store: nothing") << qint64(3) << 1 << 0 << 0 << 0 << qint64(86400) << member << qint64(0) << 1
                                                     << Outcome::Nothing << "" << "delayread";
    QTest::newRow("seal over") << qint64(3) << 1 << 0 << 0 << 0 << qint64(604800) << "" << qint64(0) << 0 << Outcome::Readable << "" << "";
    QTest::newRow("unknown class opens") << qint64(9) << 2 << 0 << 0 << 40 << old << "" << qint64(0) << 0 << Outcome::Readable << "" << "";
}

void TestReadGate::gate()
{
    QFETCH(qint64, isVip);
    QFETCH(int, type);
    QFETCH(int, buyed);
    QFETCH(int, isView);
    QFETCH(int, price);
    QFETCH(qint64, secondsSincePass);
    QFETCH(QString, user);
    QFETCH(qint64, coins);
    QFETCH(int, fromAppStore);
    QFETCH(Outcome, outcome);
    QFETCH(QString, message);
    QFETCH(QString, mark);

    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    VORAUser *record = global->user();
    record->setUserId(user.isEmpty() ? QString() : QStringLiteral("100001"));
    record->setKey(user.isEmpty() ? std::nullopt : std::optional<QString>(QStringLiteral("test-key")));
    record->setVipUser(user == QLatin1String("vip") ? QStringLiteral("1") : QStringLiteral("0"));
    record->setUserCoin(coins);
    record->setUserViewJumpType(0);
    record->setUserViewJumpIsTopupType(0);
    global->appStatus()->setFromAppStore(fromAppStore);

    VORAComicInfoDTO comic;
    comic.is_vip = isVip;
    VORAChapterInfoDTO chapter;
    chapter.chapterId = QStringLiteral("9001");
    chapter.type = type;
    chapter.buyed = buyed;
    chapter.is_view = isView;
    chapter.price = price;
    chapter.pass_time = fixedNow.addSecs(-secondsSincePass);

    QCOMPARE(VORAReadGate::decide(chapter, comic, fixedNow), outcome);
    QCOMPARE(VORAComicHomePageView::markForChapter(isVip, chapter, fixedNow), mark);

    QList<QVariantMap> alerts;
    QObject listener;
    NotificationCenter::defaultCenter().addObserver(&listener, QString::fromLatin1(VORANotificationNames::uiAlertRequest),
                                                    [&](const Notification &n) { alerts.append(n.userInfo); });
    int signIns = 0;
    int buyType = -1;
    Outcome applied = Outcome::Readable;
    const bool readable = VORAReadGate::apply(chapter, comic, fixedNow, [&]() { ++signIns; }, &listener, &buyType, &applied);
    QCOMPARE(readable, outcome == Outcome::Readable);
    QCOMPARE(applied, outcome);

    // Sent to sign in: the user's jump types are saved first.
    QCOMPARE(signIns, outcome == Outcome::SignIn ? 1 : 0);
    QCOMPARE(record->userViewJumpType(), outcome == Outcome::SignIn ? 1 : 0);
    QCOMPARE(record->userViewJumpIsTopupType(), outcome == Outcome::SignIn ? 2 : 0);

    QCOMPARE(buyType, outcome == Outcome::CoinAlert ? 0 : outcome == Outcome::NotEnoughCoins ? 2 : -1);
    if (message.isEmpty()) {
        QVERIFY2(alerts.isEmpty(), qPrintable(alerts.value(0).value("message").toString()));
        return;
    }
    QCOMPARE(alerts.size(), 1);
    const QVariantMap alert = alerts.first();
    QCOMPARE(alert.value("message").toString(), message);
    QCOMPARE(alert.value("delegate").value<QObject *>(), &listener);
    const QStringList buttons = alert.value("buttons").toStringList();
    switch (outcome) {
    case Outcome::SealAlert:
        QCOMPARE(alert.value("tag").toInt(), VORAChapterPurchase::sealAlertTag);
        QCOMPARE(buttons, (QStringList{"取消", "成为VIP"}));
        break;
    case Outcome::CoinAlert:
        QCOMPARE(alert.value("tag").toInt(), VORAChapterPurchase::coinAlertTag);
        QCOMPARE(buttons.size(), 3); // cancel, this chapter, the whole comic
        break;
    default:
        QCOMPARE(alert.value("tag").toInt(), VORAChapterPurchase::notEnoughCoinsTag);
        QCOMPARE(buttons, (QStringList{"拒绝", "购买"}));
    }
}

QTEST_GUILESS_MAIN(TestReadGate)
#include "tst_readgate.moc"
