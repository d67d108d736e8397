// Scripts that talk to other applications.
#pragma once

#include "Platform/Mac/apple/Foundation/NSString.h"

namespace morvel::mac {

class NSAppleEventDescriptor : public NSObject {
public:
    static constexpr const char* kClass = "NSAppleEventDescriptor";
    using NSObject::NSObject;

    /// Empty when the value has no form as text.
    NSString stringValue() const { return send<NSString>(*this, "stringValue"_sel); }
};

class NSAppleScript : public NSObject {
public:
    static constexpr const char* kClass = "NSAppleScript";
    using NSObject::NSObject;

    static NSAppleScript from(const NSString& source) { return create<NSAppleScript>("initWithSource:"_sel, source); }
    /// Compiles the script first. Empty when either fails; nobody asks why.
    NSAppleEventDescriptor execute() const {
        return send<NSAppleEventDescriptor>(*this, "executeAndReturnError:"_sel,
                                            static_cast<objc::RawObject*>(nullptr));
    }
};

}  // namespace morvel::mac
