// Bundles on disk, and what their information says.
#pragma once

#include "Platform/Mac/apple/Foundation/NSDictionary.h"
#include "Platform/Mac/apple/Foundation/NSURL.h"

namespace morvel::mac {

class NSBundle : public NSObject {
public:
    static constexpr const char* kClass = "NSBundle";
    using NSObject::NSObject;

    /// Empty when there is no folder at the URL.
    static NSBundle from(const NSURL& url) { return create<NSBundle>("initWithURL:"_sel, url); }
    /// The program's own.
    static NSBundle main() { return send<NSBundle>(ClassOf<NSBundle>{}, "mainBundle"_sel); }
    /// Empty when the bundle does not say.
    Id info(const NSString& key) const { return send<Id>(*this, "objectForInfoDictionaryKey:"_sel, key); }
    NSDictionary infoDictionary() const { return send<NSDictionary>(*this, "infoDictionary"_sel); }
};

}  // namespace morvel::mac
