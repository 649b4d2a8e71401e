#include "catalogue/VORAReadGate.h"

#include "catalogue/CatalogueLog.h"
#include "catalogue/VORAChapterPurchase.h"
#include "core/VORAAppGlobalData.h"

bool VORAReadGate::isSealed(const QDateTime &passTime, const QDateTime &now)
{
    if (!passTime.isValid() || !now.isValid())
        return false;
    const qint64 d = now.toSecsSinceEpoch() - passTime.toSecsSinceEpoch();
    return d >= -86399 && d <= 604799;
}

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
        if (!isSealed(chapter.pass_time, now))
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
                         const std::function<void()> &showSignIn, QObject *alertDelegate, int *buyComicOrBuyVipType,
                         Outcome *decided)
{
    const Outcome outcome = decide(chapter, comic, now);
    if (decided)
        *decided = outcome;
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    switch (outcome) {
    case Outcome::Readable:
        return true;
    case Outcome::SignIn: {
        qCInfo(lcCatalogue) << "chapter" << chapter.chapterId << "needs a signed-in user";
        global->setUserViewJump(1, 2);
        // The partner microblog kit is not part of this build, so there is no
        // microblog sign-in to prefer here.
        if (showSignIn)
            showSignIn();
        return false;
    }
    case Outcome::Nothing:
        return false;
    case Outcome::SealAlert:
        VORAChapterPurchase::showSealAlert(alertDelegate);
        return false;
    case Outcome::CoinAlert:
        if (buyComicOrBuyVipType)
            *buyComicOrBuyVipType = 0;
        VORAChapterPurchase::showCoinAlert(chapter.price, alertDelegate);
        return false;
    case Outcome::NotEnoughCoins:
        if (buyComicOrBuyVipType)
            *buyComicOrBuyVipType = 2;
        VORAChapterPurchase::showNotEnoughCoinsAlert(chapter.price, global->user()->userCoin(), alertDelegate);
        return false;
    }
    return false;
}
