// Dictionaries keyed by strings.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "Platform/Mac/apple/Foundation/NSArray.h"
#include "Platform/Mac/apple/Foundation/NSString.h"
#include "Platform/Mac/apple/Object.h"

namespace morvel::mac {

class NSDictionary : public NSObject {
public:
    static constexpr const char* kClass = "NSDictionary";
    using NSObject::NSObject;

    static NSDictionary from(const std::vector<std::pair<NSString, Id>>& entries) {
        std::vector<objc::RawObject> keys;
        std::vector<objc::RawObject> values;
        for (const auto& [key, value] : entries) {
            keys.push_back(key.raw());
            values.push_back(value.raw());
        }
        return fromRaw(values.data(), keys.data(), entries.size());
    }
    NSArray allKeys() const { return send<NSArray>(*this, "allKeys"_sel); }
    Id at(const NSString& key) const { return send<Id>(*this, "objectForKey:"_sel, key); }
    /// The value if it is a T; empty when it is absent or of another class.
    template <objc::ObjectWrapper T>
    T at(std::string_view key) const {
        return objc::as<T>(at(NSString::from(key)));
    }

private:
    static NSDictionary fromRaw(const objc::RawObject* values, const objc::RawObject* keys, NSUInteger count) {
        return send<NSDictionary>(ClassOf<NSDictionary>{}, "dictionaryWithObjects:forKeys:count:"_sel, values, keys,
                                  count);
    }
};

}  // namespace morvel::mac
