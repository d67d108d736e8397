// Notifications within the process, and NSWorkspace's.
#pragma once

#include <functional>

#include "Platform/Mac/apple/Foundation/NSDictionary.h"
#include "Util/Subscription.h"

namespace morvel::mac {

class NSNotification : public NSObject {
public:
    static constexpr const char* kClass = "NSNotification";
    using NSObject::NSObject;

    NSString name() const { return send<NSString>(*this, "name"_sel); }
    Id object() const { return send<Id>(*this, "object"_sel); }
    NSDictionary userInfo() const { return send<NSDictionary>(*this, "userInfo"_sel); }
};

class NSOperationQueue : public NSObject {
public:
    static constexpr const char* kClass = "NSOperationQueue";
    using NSObject::NSObject;

    static NSOperationQueue mainQueue() { return send<NSOperationQueue>(ClassOf<NSOperationQueue>{}, "mainQueue"_sel); }
};

class NSNotificationCenter : public NSObject {
public:
    static constexpr const char* kClass = "NSNotificationCenter";
    using NSObject::NSObject;

    static NSNotificationCenter defaultCenter() {
        return send<NSNotificationCenter>(ClassOf<NSNotificationCenter>{}, "defaultCenter"_sel);
    }

    /// Calls `notified` on the main thread for each `name` from any object, until the token dies.
    [[nodiscard]] Subscription observe(const NSString& name, std::function<void(NSNotification)> notified) const {
        return observe(name, Id(), std::move(notified));
    }
    /// The same for the notifications of one object, which is not kept; of all where it is empty.
    [[nodiscard]] Subscription observe(const NSString& name, const Id& object,
                                       std::function<void(NSNotification)> notified) const {
        const Id token = send<Id>(*this, "addObserverForName:object:queue:usingBlock:"_sel, name, object,
                                  NSOperationQueue::mainQueue(), Block<void(NSNotification)>(std::move(notified)));
        return Subscription([center = *this, token] { send(center, "removeObserver:"_sel, token); });
    }
};

/// Notifications between processes of one person's session.
class NSDistributedNotificationCenter : public NSNotificationCenter {
public:
    static constexpr const char* kClass = "NSDistributedNotificationCenter";
    using NSNotificationCenter::NSNotificationCenter;

    static NSDistributedNotificationCenter defaultCenter() {
        return send<NSDistributedNotificationCenter>(ClassOf<NSDistributedNotificationCenter>{}, "defaultCenter"_sel);
    }
    void post(const NSString& name) const {
        send(*this, "postNotificationName:object:userInfo:deliverImmediately:"_sel, name, NSString(), NSDictionary(),
             true);
    }
};

extern "C" {
extern const objc::RawObject NSWorkspaceDidLaunchApplicationNotification;
extern const objc::RawObject NSWorkspaceDidTerminateApplicationNotification;
extern const objc::RawObject NSWorkspaceDidActivateApplicationNotification;
extern const objc::RawObject NSWorkspaceActiveSpaceDidChangeNotification;
extern const objc::RawObject NSWorkspaceScreensDidSleepNotification;
extern const objc::RawObject NSWorkspaceScreensDidWakeNotification;
extern const objc::RawObject NSWorkspaceSessionDidBecomeActiveNotification;
extern const objc::RawObject NSWorkspaceSessionDidResignActiveNotification;
extern const objc::RawObject NSWorkspaceApplicationKey;
extern const objc::RawObject NSApplicationDidChangeScreenParametersNotification;
}

}  // namespace morvel::mac
