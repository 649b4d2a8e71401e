#include "net/VORAVipMemberCoinReqService.h"

#include "core/VORAUtility.h"

QString VORAVipMemberCoinReqService::path() const
{
    return QStringLiteral("harrowpay/vip_member_coin_req.php");
}

int VORAVipMemberCoinReqService::q42HttpMethod() const
{
    return 1;
}

VORAHttpBaseWebService::Parameters VORAVipMemberCoinReqService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("product_id"), productId});
    p.append({QStringLiteral("total_money"), totalMoney});
    p.append({QStringLiteral("product_num"), productNum});
    p.append({QStringLiteral("way"), way});
    return p;
}

void VORAVipMemberCoinReqService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
