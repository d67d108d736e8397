// Strings. Ours are UTF-8; a string of the system's that has no UTF-8 form reads as empty.
#pragma once

#include <string>
#include <string_view>

#include "Platform/Mac/apple/Object.h"

namespace morvel::mac {

class NSString : public NSObject {
public:
    static constexpr const char* kClass = "NSString";
    using NSObject::NSObject;

    static NSString from(std::string_view utf8) {
        constexpr NSUInteger kUTF8 = 4;  // NSUTF8StringEncoding
        return create<NSString>("initWithBytes:length:encoding:"_sel, static_cast<const void*>(utf8.data()),
                                static_cast<NSUInteger>(utf8.size()), kUTF8);
    }
    std::string text() const {
        const char* const utf8 = send<const char*>(*this, "UTF8String"_sel);
        return utf8 ? std::string(utf8) : std::string();
    }
    /// "~" at the beginning is the person's home.
    NSString expandingTilde() const { return send<NSString>(*this, "stringByExpandingTildeInPath"_sel); }
    /// As file lists are sorted for the person: -1, 0 or 1.
    NSInteger localizedStandardCompare(const NSString& other) const {
        return send<NSInteger>(*this, "localizedStandardCompare:"_sel, other);
    }
};

}  // namespace morvel::mac
