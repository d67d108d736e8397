// The application's defaults. Values are property-list objects; what a key holds may be anything.
#pragma once

#include "Platform/Mac/apple/Foundation/NSString.h"

namespace morvel::mac {

class NSUserDefaults : public NSObject {
public:
    static constexpr const char* kClass = "NSUserDefaults";
    using NSObject::NSObject;

    static NSUserDefaults standard() {
        return send<NSUserDefaults>(ClassOf<NSUserDefaults>{}, "standardUserDefaults"_sel);
    }
    Id at(const NSString& key) const { return send<Id>(*this, "objectForKey:"_sel, key); }
    void set(const NSString& key, const Id& value) const { send(*this, "setObject:forKey:"_sel, value, key); }
    void remove(const NSString& key) const { send(*this, "removeObjectForKey:"_sel, key); }
};

}  // namespace morvel::mac
