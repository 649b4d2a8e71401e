#include "reader/VORAReadGate.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORAUtility.h"
#include "reader/ReaderLog.h"
#include "reader/VORAReadHomeViewControllerHooks.h"

namespace {
const QString tipTitle = QStringLiteral("提示");

// The seal of a VIP chapter has run out when 86399 - p + n, taken as an
// unsigned 64-bit sum, exceeds 691198: more than 604799 s since pass_time. A
// pass_time more than a day ahead wraps around and counts as run out too; the
// site's own rule is the same, so this stays as it is.
bool sealHasRunOut(const QDateTime &passTime, const QDateTime &now)
{
    const quint64 p = quint64(passTime.isValid() ? passTime.toSecsSinceEpoch() : 0);
    const quint64 n = quint64(now.toSecsSinceEpoch());
    return quint64(86399) - p + n > quint64(691198);
}
} // namespace

VORAReadGate::Outcome VORAReadGate::decide(const VORAChapterInfoDTO &chapter, const VORAComicInfoDTO &comic,
                                           const QDateTime &now)
{
    if (chapter.is_view != 0)
        return Outcome::Readable;
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    const VORAUser *user = global->user();
    const bool fromAppStore = global->appStatus()->fromAppStore() == 1;

    if (comic.is_vip == 1 || comic.is_vip == 2) {
        if (chapter.type != 2)
            return Outcome::Readable;
        if (chapter.buyed == -1)
            return Outcome::SignIn;
        if (chapter.buyed != 0 || chapter.price == 0)
            return Outcome::Readable;
        if (fromAppStore)
            return Outcome::Nothing;
        return user->userCoin() >= chapter.price ? Outcome::CoinAlert : Outcome::NotEnoughCoins;
    }
    if (comic.is_vip == 3) {
        if (sealHasRunOut(chapter.pass_time, now))
            return Outcome::Readable;
        if (!user->isLogin())
            return Outcome::SignIn;
        if (user->vipUser() == QLatin1String("1"))
            return Outcome::Readable;
        if (fromAppStore)
            return Outcome::Nothing;
        return Outcome::SealAlert;
    }
    return Outcome::Readable;
}

bool VORAReadGate::apply(const VORAChapterInfoDTO &chapter, const VORAComicInfoDTO &comic, const QDateTime &now,
                         VORAReadHomeViewControllerHooks *hooks, QObject *alertDelegate, int *buyComicOrBuyVipType)
{
    const Outcome outcome = decide(chapter, comic, now);
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    switch (outcome) {
    case Outcome::Readable:
        return true;
    case Outcome::SignIn: {
        qCInfo(lcReader) << "chapter" << chapter.chapterId << "needs a signed-in user";
        VORAUser *user = global->user();
        user->setUserViewJumpType(1);
        user->setUserViewJumpIsTopupType(2);
        global->saveUser();
        // The partner microblog kit is not part of this build, so there is no
        // microblog sign-in to prefer here.
        if (hooks)
            hooks->createUserView();
        return false;
    }
    case Outcome::Nothing:
        return false;
    case Outcome::SealAlert:
        VORAUtility::requestAlertMessage(
            QStringLiteral("即将阅读的VIP章节暂时被封印啦,7天后解封,成为Quorin会员即刻解封哦~"), tipTitle, 10000,
            QStringLiteral("取消"), QStringLiteral("成为VIP"), alertDelegate);
        return false;
    case Outcome::CoinAlert:
        if (buyComicOrBuyVipType)
            *buyComicOrBuyVipType = 0;
        VORAUtility::requestCoinAlertMessage(QString::asprintf("购买此章节需要%dquorin币", int(chapter.price)),
                                             tipTitle, 10002, alertDelegate);
        return false;
    case Outcome::NotEnoughCoins:
        if (buyComicOrBuyVipType)
            *buyComicOrBuyVipType = 2;
        VORAUtility::requestAlertMessage(
            QString::asprintf("该章节为付费章节哦!请购买后进行阅读!阅读本章节需要%d个quorin币,您当前quorin币余额为%d,余额不足,请充值!",
                              int(chapter.price), int(global->user()->userCoin())),
            tipTitle, 10001, QStringLiteral("拒绝"), QStringLiteral("购买"), alertDelegate);
        return false;
    }
    return false;
}
