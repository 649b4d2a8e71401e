#include "net/NetError.h"

NetError NetError::asiError(int code)
{
    QString description;
    switch (code) {
    case ConnectionFailureErrorType:
        description = QStringLiteral("A connection failure occurred");
        break;
    case RequestTimedOutErrorType:
        description = QStringLiteral("The request timed out");
        break;
    case AuthenticationErrorType:
        description = QStringLiteral("Authentication needed");
        break;
    case RequestCancelledErrorType:
        description = QStringLiteral("The request was cancelled");
        break;
    case InternalErrorWhileBuildingRequestType:
        description = QStringLiteral("Unable to start HTTP connection");
        break;
    default:
        break;
    }
    return NetError{asiDomain, code, description};
}
