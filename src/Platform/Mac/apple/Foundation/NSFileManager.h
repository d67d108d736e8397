// Listing folders.
#pragma once

#include "Platform/Mac/apple/Foundation/NSArray.h"
#include "Platform/Mac/apple/Foundation/NSString.h"

namespace morvel::mac {

class NSFileManager : public NSObject {
public:
    static constexpr const char* kClass = "NSFileManager";
    using NSObject::NSObject;

    static NSFileManager defaultManager() {
        return send<NSFileManager>(ClassOf<NSFileManager>{}, "defaultManager"_sel);
    }
    /// Names; empty when the folder cannot be listed.
    NSArray contentsOfDirectory(const NSString& path) const {
        objc::RawObject* const noError = nullptr;
        return send<NSArray>(*this, "contentsOfDirectoryAtPath:error:"_sel, path, noError);
    }
};

}  // namespace morvel::mac
