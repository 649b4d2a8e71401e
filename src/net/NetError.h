#pragma once

#include <QString>

// An error as the services pass it on: a domain, a code and a description.
// The engine's failures use the domain "ASIHTTPRequestErrorDomain"; a default
// constructed error is the "new, empty error" that callers report when an
// answer yields nothing usable.
struct NetError
{
    QString domain;
    int code = 0;
    QString localizedDescription;

    bool operator==(const NetError &) const = default;

    static inline const QString asiDomain = QStringLiteral("ASIHTTPRequestErrorDomain");

    enum AsiCode {
        ConnectionFailureErrorType = 1,
        RequestTimedOutErrorType = 2,
        AuthenticationErrorType = 3,
        RequestCancelledErrorType = 4,
        InternalErrorWhileBuildingRequestType = 6,
    };

    // The engine's error for one of the codes above, with its description.
    static NetError asiError(int code);
};
