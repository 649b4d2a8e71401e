#include "net/VORAGetTucaoService.h"

#include "core/VORAUtility.h"

#include <QJsonArray>
#include <QJsonDocument>

QString VORAGetTucaoService::path() const
{
    return QStringLiteral("ios/pad/get_tucao.php");
}

VORAHttpBaseWebService::Parameters VORAGetTucaoService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("image_id"), pageId});
    if (!firstId.isEmpty())
        p.append({QStringLiteral("first_id"), firstId});
    else
        p.append({QStringLiteral("last_id"), lastId});
    p.append({QStringLiteral("page_size"), QString::number(pageSize)});
    p.append({QStringLiteral("type"), isNext ? QStringLiteral("next_page") : QStringLiteral("prev_page")});
    return p;
}

void VORAGetTucaoService::parseResponseString(const QString &responseString)
{
    const QJsonDocument doc = QJsonDocument::fromJson(responseString.toUtf8());
    if (doc.isObject())
        jsonTucao = doc.object();
    else if (doc.isArray())
        jsonTucao = doc.array();
    else
        jsonTucao = QJsonValue(QJsonValue::Undefined);
}

std::optional<QList<VORATucao>> VORAGetTucaoService::tucaoList() const
{
    if (jsonTucao.isUndefined())
        return std::nullopt;
    return VORATucao::listFromJson(jsonTucao);
}
