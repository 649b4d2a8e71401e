#pragma once

#include "net/VORAChapterInfoDTO.h"
#include "net/VORAComicInfoDTO.h"

#include <QDateTime>

#include <functional>

class QObject;

// The read gate for one chapter of one comic: free, bought, paid (coins) or
// VIP-sealed for seven days. The comic detail page asks it on a chapter tap,
// the reading session before a chapter is shown and the reader's chapter panel
// on a row tap; the chapter marks use its seal window.
class VORAReadGate
{
public:
    enum class Outcome {
        Readable,
        SignIn,         // nobody signed in (or "buyed" unknown): go to sign-in
        Nothing,        // the app came from the store: no purchase offered
        SealAlert,      // dialog 10000
        CoinAlert,      // dialog 10002: enough coins for the chapter
        NotEnoughCoins, // dialog 10001
    };

    // A chapter of a VIP-sealed comic is sealed while d = now - passTime, in
    // whole seconds, is -86399 .. 604799 (the first seven days, and up to a day
    // ahead). A chapter further ahead counts as unsealed, as on the site.
    static bool isSealed(const QDateTime &passTime, const QDateTime &now);

    // The pure rule, on the signed-in user and the app status of the global data.
    static Outcome decide(const VORAChapterInfoDTO &chapter, const VORAComicInfoDTO &comic,
                          const QDateTime &now);

    // Decides and carries the outcome out: the sign-in route (the user's jump
    // types saved, then showSignIn()) or the dialog, whose answers go to
    // alertDelegate's alertView(tag, buttonIndex). Returns true when readable.
    // buyComicOrBuyVipType is set to 0 for CoinAlert and 2 for NotEnoughCoins;
    // outcome, when given, receives the decision.
    static bool apply(const VORAChapterInfoDTO &chapter, const VORAComicInfoDTO &comic,
                      const QDateTime &now, const std::function<void()> &showSignIn,
                      QObject *alertDelegate, int *buyComicOrBuyVipType, Outcome *outcome = nullptr);
};
