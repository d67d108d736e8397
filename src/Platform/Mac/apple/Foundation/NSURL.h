// Locations of files and of the web.
#pragma once

#include <string_view>

#include "Platform/Mac/apple/Foundation/NSString.h"

namespace morvel::mac {

class NSURL : public NSObject {
public:
    static constexpr const char* kClass = "NSURL";
    using NSObject::NSObject;

    static NSURL file(std::string_view path) {
        return send<NSURL>(ClassOf<NSURL>{}, "fileURLWithPath:"_sel, NSString::from(path));
    }
    /// Empty when the text is no URL.
    static NSURL parse(std::string_view text) {
        return send<NSURL>(ClassOf<NSURL>{}, "URLWithString:"_sel, NSString::from(text));
    }
    bool isFileURL() const { return send<bool>(*this, "isFileURL"_sel); }
    /// In lower case. Empty when it has none.
    NSString scheme() const { return send<NSString>(*this, "scheme"_sel); }
    NSString path() const { return send<NSString>(*this, "path"_sel); }
    NSString absoluteString() const { return send<NSString>(*this, "absoluteString"_sel); }
};

}  // namespace morvel::mac
