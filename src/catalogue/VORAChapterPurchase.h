#pragma once

#include "net/NetError.h"
#include "net/VORAChapterInfoDTO.h"

#include <QList>
#include <QString>
#include <QStringList>

class QObject;
class VORABuyChapterService;

// The chapter-purchase pieces that the comic detail page and the reader share:
// the dialogs of the read gate and of the purchases (tags 10000-10005, the only
// place they are defined; answered through the delegate's alertView(tag,
// buttonIndex)), the sums over a chapter list, the reading of a
// VORABuyChapterService answer and the "BuySuccessPost" announcement.
class VORAChapterPurchase
{
public:
    VORAChapterPurchase() = delete;

    static constexpr int sealAlertTag = 10000;
    static constexpr int notEnoughCoinsTag = 10001;
    static constexpr int coinAlertTag = 10002;
    static constexpr int buyComicAlertTag = 10003;
    static constexpr int notEnoughForComicTag = 10004;
    static constexpr int boughtAlertTag = 10005;

    // 10000: the VIP seal, "取消" / "成为VIP".
    static void showSealAlert(QObject *delegate);
    // 10002: the coin dialog for one chapter ("购买此章节" / "购买本书").
    static void showCoinAlert(qint64 price, QObject *delegate);
    // 10001: one chapter, too few coins, "拒绝" / "购买".
    static void showNotEnoughCoinsAlert(qint64 price, qint64 coins, QObject *delegate);
    // The whole comic: 10004 (too few) when coins <= total, else 10003. Equal
    // coins buy one chapter but not the whole comic.
    static void showWholeComicAlert(qint64 total, qint64 coins, QObject *delegate);
    // 10005: "章节购买成功", "暂时等等" / "进去阅读".
    static void showBoughtAlert(QObject *delegate);

    // The price of every chapter not bought (buyed 0).
    static qint64 wholeComicTotal(const QList<VORAChapterInfoDTO> &chapters);
    // The chapters a whole-comic purchase asks for: not bought, paid (type 2).
    static QStringList unboughtPaidChapterIds(const QList<VORAChapterInfoDTO> &chapters);
    // The coins a purchase of these chapters took.
    static qint64 costOf(const QList<VORAChapterInfoDTO> &chapters, const QStringList &chapterIds);

    // Sends a purchase of these chapters of the comic (an earlier one on the
    // service is dropped) with the busy indicator "购买中" over delegate.
    static void sendBuyRequest(VORABuyChapterService *service, const QString &comicId,
                               const QStringList &chapterIds, QObject *delegate);

    enum class Answer { Bought, TransportFailed, NoSuccessCode, Refused };
    // Reads the purchase answer and shows what the user must see: "购买失败"
    // on a transport error, the site's message when it refused ("data" ->
    // "stateCode" not 1). An answer without "code" 1 shows nothing.
    static Answer readBuyAnswer(const VORABuyChapterService &service, const NetError *error);
    // Posts "BuySuccessPost" from sender with "comicId" and "chapters" (the ids bought).
    static void postBuySuccess(QObject *sender, const QString &comicId, const QStringList &chapterIds);
};
