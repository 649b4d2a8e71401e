#include "net/VORAUploadReadLogSerVice.h"

#include "core/VORAUtility.h"

#include <QJsonDocument>

QString VORAUploadReadLogSerVice::path() const
{
    return QStringLiteral("ios/pad/image_log.php");
}

QString VORAUploadReadLogSerVice::readLogText() const
{
    QJsonObject pages;
    for (qsizetype i = 0; i < keyList.size(); ++i)
        pages.insert(i < valueList.size() ? valueList.at(i) : QString(), keyList.at(i));
    QJsonObject root;
    root.insert(QStringLiteral("count"), QString::number(keyList.size()));
    root.insert(QStringLiteral("c") + comicId, pages);
    return QString::fromUtf8(QJsonDocument(root).toJson(QJsonDocument::Compact));
}

VORAHttpBaseWebService::Parameters VORAUploadReadLogSerVice::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("image_ids"), QString::fromLatin1(readLogText().toUtf8().toBase64())});
    return p;
}

void VORAUploadReadLogSerVice::parseResponseString(const QString &responseString)
{
    json = jsonObjectFromString(responseString);
    code = VORAUtility::jsonInteger(json.value_or(QJsonObject()).value(QLatin1String("code")));
}
