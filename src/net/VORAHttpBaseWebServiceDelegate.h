#pragma once

#include "net/NetError.h"

class VORAHttpBaseWebService;

// Told once per asynchronous run of a service, on the main thread: error is
// null on success (the service's results are then filled), else the engine's
// error. A delegate is a QObject that also implements this interface; the
// service holds it weakly and skips the call when the object is gone or does
// not implement it.
class VORAHttpBaseWebServiceDelegate
{
public:
    virtual ~VORAHttpBaseWebServiceDelegate() = default;
    virtual void requestDidFinishWithService(VORAHttpBaseWebService *service,
                                             const NetError *error) = 0;
};
