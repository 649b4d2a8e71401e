#include "net/VORACheckComicUpdateService.h"

#include "core/VORAUtility.h"

QString VORACheckComicUpdateService::path() const
{
    return QStringLiteral("ios/pad/check_update.php");
}

int VORACheckComicUpdateService::q42HttpMethod() const
{
    return 1;
}

VORAHttpBaseWebService::Parameters VORACheckComicUpdateService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("post_data"), postData()});
    return p;
}

void VORACheckComicUpdateService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}

QString VORACheckComicUpdateService::postData() const
{
    QString text;
    for (qsizetype i = 0; i < comicIdArray.size(); ++i) {
        const QDateTime time = i < updateTimeArray.size() ? updateTimeArray.at(i) : QDateTime();
        const qint64 seconds = time.isValid() ? time.toSecsSinceEpoch() : 0;
        text += comicIdArray.at(i) + QLatin1Char('|') + QString::number(seconds) + QLatin1String("||");
    }
    return text;
}
