// Requests to web servers.
#pragma once

#include "Platform/Mac/apple/Foundation/NSData.h"
#include "Platform/Mac/apple/Foundation/NSError.h"
#include "Platform/Mac/apple/Foundation/NSNotificationCenter.h"
#include "Platform/Mac/apple/Foundation/NSURL.h"

namespace morvel::mac {

inline constexpr NSUInteger NSURLRequestReloadIgnoringLocalCacheData = 1;

class NSURLRequest : public NSObject {
public:
    static constexpr const char* kClass = "NSURLRequest";
    using NSObject::NSObject;

    /// `timeout`: in seconds, of waiting for the next piece.
    static NSURLRequest from(const NSURL& url, NSUInteger cachePolicy, double timeout) {
        return send<NSURLRequest>(ClassOf<NSURLRequest>{}, "requestWithURL:cachePolicy:timeoutInterval:"_sel, url,
                                  cachePolicy, timeout);
    }
    NSURL url() const { return send<NSURL>(*this, "URL"_sel); }
};

class NSURLResponse : public NSObject {
public:
    static constexpr const char* kClass = "NSURLResponse";
    using NSObject::NSObject;
};

class NSHTTPURLResponse : public NSURLResponse {
public:
    static constexpr const char* kClass = "NSHTTPURLResponse";
    using NSURLResponse::NSURLResponse;

    NSInteger statusCode() const { return send<NSInteger>(*this, "statusCode"_sel); }
};

class NSURLSessionTask : public NSObject {
public:
    static constexpr const char* kClass = "NSURLSessionTask";
    using NSObject::NSObject;

    void resume() const { send(*this, "resume"_sel); }
    void cancel() const { send(*this, "cancel"_sel); }
    /// Empty until there is one.
    NSURLResponse response() const { return send<NSURLResponse>(*this, "response"_sel); }
};

class NSURLSessionDataTask : public NSURLSessionTask {
public:
    static constexpr const char* kClass = "NSURLSessionDataTask";
    using NSURLSessionTask::NSURLSessionTask;
};

class NSURLSessionConfiguration : public NSObject {
public:
    static constexpr const char* kClass = "NSURLSessionConfiguration";
    using NSObject::NSObject;

    /// Keeps nothing: neither cache nor cookies.
    static NSURLSessionConfiguration ephemeral() {
        return send<NSURLSessionConfiguration>(ClassOf<NSURLSessionConfiguration>{},
                                               "ephemeralSessionConfiguration"_sel);
    }
    /// In seconds, for the whole of a task.
    void setTimeoutIntervalForResource(double timeout) const {
        send(*this, "setTimeoutIntervalForResource:"_sel, timeout);
    }
};

class NSURLSession : public NSObject {
public:
    static constexpr const char* kClass = "NSURLSession";
    using NSObject::NSObject;

    /// Keeps the delegate until it has been invalidated and its tasks are done.
    static NSURLSession from(const NSURLSessionConfiguration& configuration, const NSObject& delegate,
                             const NSOperationQueue& queue) {
        return send<NSURLSession>(ClassOf<NSURLSession>{}, "sessionWithConfiguration:delegate:delegateQueue:"_sel,
                                  configuration, delegate, queue);
    }
    NSURLSessionDataTask dataTask(const NSURLRequest& request) const {
        return send<NSURLSessionDataTask>(*this, "dataTaskWithRequest:"_sel, request);
    }
    void finishTasksAndInvalidate() const { send(*this, "finishTasksAndInvalidate"_sel); }
};

}  // namespace morvel::mac
