#pragma once

#include <QString>

// Fixed configuration: identity, base URLs and limits.
//
// The base URLs come from the build (CMake cache variables) and are overridden
// by $QUORIN_API_BASE / $QUORIN_PAY_BASE, read on every call; they always end
// in "/".
class VORASystemConfig
{
public:
    static QString getWebServiceUrlBase();
    static QString getPayWebServiceUrlBase();
    static QString getWebServiceVersion(); // same as buildVersion()
    static int getComicCacheMaxCount();    // 10
    static int getMaxBookshelfCapacity();  // 500
    static QString buildVersion();
    static QString appVersion();

    static QString bundleIdentifier();
    static QString bundleName();
    static QString displayName();

    // Host and port of the API base, for the network-existence test.
    static QString webHostName();
    static quint16 webHostPort();
};
