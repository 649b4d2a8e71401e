#pragma once

class ASIHTTPRequest;

// Receiver of an asynchronous request's outcome. Both calls arrive on the
// thread that started the request (the main thread for the services).
class ASIHTTPRequestDelegate
{
public:
    virtual ~ASIHTTPRequestDelegate() = default;
    virtual void requestFinished(ASIHTTPRequest *request) = 0;
    virtual void requestFailed(ASIHTTPRequest *request) = 0;
};
