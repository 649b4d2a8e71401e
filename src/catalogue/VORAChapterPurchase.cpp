#include "catalogue/VORAChapterPurchase.h"

#include "core/VORANotificationNames.h"
#include "core/VORAUtility.h"
#include "net/VORABuyChapterService.h"
#include "platform/NotificationCenter.h"

#include <QJsonObject>

namespace {
const QString tipTitle = QStringLiteral("提示");
}

void VORAChapterPurchase::showSealAlert(QObject *delegate)
{
    VORAUtility::requestAlertMessage(QStringLiteral("即将阅读的VIP章节暂时被封印啦,7天后解封,成为Quorin会员即刻解封哦~"),
                                     tipTitle, sealAlertTag, QStringLiteral("取消"), QStringLiteral("成为VIP"), delegate);
}

void VORAChapterPurchase::showCoinAlert(qint64 price, QObject *delegate)
{
    VORAUtility::requestCoinAlertMessage(QString::asprintf("购买此章节需要%dquorin币", int(price)), tipTitle, coinAlertTag,
                                         delegate);
}

void VORAChapterPurchase::showNotEnoughCoinsAlert(qint64 price, qint64 coins, QObject *delegate)
{
    VORAUtility::requestAlertMessage(
        QString::asprintf("该章节为付费章节哦!请购买后进行阅读!阅读本章节需要%d个quorin币,您当前quorin币余额为%d,余额不足,请充值!",
                          int(price), int(coins)),
        tipTitle, notEnoughCoinsTag, QStringLiteral("拒绝"), QStringLiteral("购买"), delegate);
}

void VORAChapterPurchase::showWholeComicAlert(qint64 total, qint64 coins, QObject *delegate)
{
    if (coins <= total) {
        VORAUtility::requestAlertMessage(
            QString::asprintf("购买本书需要%d个quorin币,您当前的quorin币为%d,余额不足,请充值!", int(total), int(coins)),
            tipTitle, notEnoughForComicTag, QStringLiteral("取消"), QStringLiteral("购买"), delegate);
    } else {
        VORAUtility::requestAlertMessage(QString::asprintf("购买本书需要%d个quorin币", int(total)), tipTitle,
                                         buyComicAlertTag, QStringLiteral("取消"), QStringLiteral("购买"), delegate);
    }
}

void VORAChapterPurchase::showBoughtAlert(QObject *delegate)
{
    VORAUtility::requestAlertMessage(QStringLiteral("章节购买成功"), tipTitle, boughtAlertTag, QStringLiteral("暂时等等"),
                                     QStringLiteral("进去阅读"), delegate);
}

qint64 VORAChapterPurchase::wholeComicTotal(const QList<VORAChapterInfoDTO> &chapters)
{
    qint64 total = 0;
    for (const VORAChapterInfoDTO &c : chapters) {
        if (c.buyed == 0)
            total += c.price;
    }
    return total;
}

QStringList VORAChapterPurchase::unboughtPaidChapterIds(const QList<VORAChapterInfoDTO> &chapters)
{
    QStringList ids;
    for (const VORAChapterInfoDTO &c : chapters) {
        if (c.buyed == 0 && c.type == 2)
            ids.append(c.chapterId);
    }
    return ids;
}

qint64 VORAChapterPurchase::costOf(const QList<VORAChapterInfoDTO> &chapters, const QStringList &chapterIds)
{
    qint64 cost = 0;
    for (const VORAChapterInfoDTO &c : chapters) {
        if (chapterIds.contains(c.chapterId))
            cost += c.price;
    }
    return cost;
}

VORAChapterPurchase::Answer VORAChapterPurchase::readBuyAnswer(const VORABuyChapterService &service,
                                                               const NetError *error)
{
    if (error) {
        VORAUtility::requestAtlerMessage(QStringLiteral("购买失败"), tipTitle, nullptr);
        return Answer::TransportFailed;
    }
    const QJsonObject answer = service.data.value_or(QJsonObject());
    if (VORAUtility::jsonInteger(answer.value(QStringLiteral("code"))) != 1)
        return Answer::NoSuccessCode;
    const QJsonObject data = VORAUtility::jsonObject(answer.value(QStringLiteral("data")));
    if (VORAUtility::jsonInteger(data.value(QStringLiteral("stateCode"))) != 1) {
        VORAUtility::requestAtlerMessage(VORAUtility::jsonString(data.value(QStringLiteral("message"))), tipTitle,
                                         nullptr);
        return Answer::Refused;
    }
    return Answer::Bought;
}

void VORAChapterPurchase::sendBuyRequest(VORABuyChapterService *service, const QString &comicId,
                                         const QStringList &chapterIds, QObject *delegate)
{
    service->cancelRequest();
    service->comicId = comicId;
    service->chapterArray = chapterIds;
    VORAUtility::showLoadingViewWithParentView(delegate, QStringLiteral("购买中"));
    service->asynchronousRequestWithDelegate(delegate);
}

void VORAChapterPurchase::postBuySuccess(QObject *sender, const QString &comicId, const QStringList &chapterIds)
{
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::buySuccessPost), sender,
                                             {{QStringLiteral("comicId"), comicId}, {QStringLiteral("chapters"), chapterIds}});
}
