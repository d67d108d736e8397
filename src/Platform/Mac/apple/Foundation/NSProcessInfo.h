// What the process knows of the system that it runs on.
#pragma once

#include "Platform/Mac/apple/Object.h"

namespace morvel::mac {

struct NSOperatingSystemVersion {
    NSInteger majorVersion = 0;
    NSInteger minorVersion = 0;
    NSInteger patchVersion = 0;
};

}  // namespace morvel::mac

namespace morvel::mac::objc {

/// A struct without a name in C.
template <>
struct Encode<NSOperatingSystemVersion> {
    static constexpr FixedString value{"{?=qqq}"};
};

}  // namespace morvel::mac::objc

namespace morvel::mac {

class NSProcessInfo : public NSObject {
public:
    static constexpr const char* kClass = "NSProcessInfo";
    using NSObject::NSObject;

    static NSProcessInfo current() { return send<NSProcessInfo>(ClassOf<NSProcessInfo>{}, "processInfo"_sel); }
    NSOperatingSystemVersion operatingSystemVersion() const {
        return send<NSOperatingSystemVersion>(*this, "operatingSystemVersion"_sel);
    }
};

}  // namespace morvel::mac
