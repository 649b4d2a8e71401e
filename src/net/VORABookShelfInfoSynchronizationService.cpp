#include "net/VORABookShelfInfoSynchronizationService.h"

#include "core/VORAUtility.h"

QString VORABookShelfInfoSynchronizationService::path() const
{
    return QStringLiteral("ios/pad/fav.php");
}

int VORABookShelfInfoSynchronizationService::q42HttpMethod() const
{
    return 1;
}

VORAHttpBaseWebService::Parameters VORABookShelfInfoSynchronizationService::parameter() const
{
    Parameters p;
    p.append({QStringLiteral("data"), QString::fromLatin1(comicIdsDate.toUtf8().toBase64())});
    return p;
}

void VORABookShelfInfoSynchronizationService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
