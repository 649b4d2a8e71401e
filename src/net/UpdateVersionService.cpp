#include "net/UpdateVersionService.h"

#include "core/VORAUtility.h"

QString UpdateVersionService::path() const
{
    return QStringLiteral("ios/pad/version.php");
}

void UpdateVersionService::parseResponseString(const QString &responseString)
{
    data = jsonObjectFromString(responseString);
}
