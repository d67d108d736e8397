// Other programs as children of this one, and the pipes between them.
#pragma once

#include "Platform/Mac/apple/Foundation/NSArray.h"
#include "Platform/Mac/apple/Foundation/NSError.h"
#include "Platform/Mac/apple/Foundation/NSURL.h"

namespace morvel::mac {

inline constexpr NSInteger NSTaskTerminationReasonExit = 1;

class NSFileHandle : public NSObject {
public:
    static constexpr const char* kClass = "NSFileHandle";
    using NSObject::NSObject;

    /// The handle closes it when it dies.
    int fileDescriptor() const { return send<int>(*this, "fileDescriptor"_sel); }
};

class NSPipe : public NSObject {
public:
    static constexpr const char* kClass = "NSPipe";
    using NSObject::NSObject;

    static NSPipe make() { return send<NSPipe>(ClassOf<NSPipe>{}, "pipe"_sel); }
    NSFileHandle fileHandleForReading() const { return send<NSFileHandle>(*this, "fileHandleForReading"_sel); }
};

class NSTask : public NSObject {
public:
    static constexpr const char* kClass = "NSTask";
    using NSObject::NSObject;

    static NSTask make() { return create<NSTask>(); }
    void setExecutableURL(const NSURL& url) const { send(*this, "setExecutableURL:"_sel, url); }
    void setArguments(const NSArray& arguments) const { send(*this, "setArguments:"_sel, arguments); }
    void setStandardError(const NSPipe& pipe) const { send(*this, "setStandardError:"_sel, pipe); }
    bool launch(ErrorOut& error) const { return send<bool>(*this, "launchAndReturnError:"_sel, error.receive()); }
    bool isRunning() const { return send<bool>(*this, "isRunning"_sel); }
    std::int32_t processIdentifier() const { return send<std::int32_t>(*this, "processIdentifier"_sel); }
    /// Both only once it is not running any more.
    std::int32_t terminationStatus() const { return send<std::int32_t>(*this, "terminationStatus"_sel); }
    NSInteger terminationReason() const { return send<NSInteger>(*this, "terminationReason"_sel); }
};

}  // namespace morvel::mac
