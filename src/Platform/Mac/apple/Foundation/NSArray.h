// Arrays of objects.
#pragma once

#include <vector>

#include "Platform/Mac/apple/Object.h"

namespace morvel::mac {

class NSArray : public NSObject {
public:
    static constexpr const char* kClass = "NSArray";
    using NSObject::NSObject;

    template <objc::ObjectWrapper T>
    static NSArray from(const std::vector<T>& elements) {
        std::vector<objc::RawObject> raw;
        for (const T& element : elements) raw.push_back(element.raw());
        return fromRaw(raw.data(), raw.size());
    }
    NSUInteger count() const { return send<NSUInteger>(*this, "count"_sel); }
    Id at(NSUInteger index) const { return send<Id>(*this, "objectAtIndex:"_sel, index); }

    /// The elements that are T's, in order; others are left out.
    template <objc::ObjectWrapper T>
    std::vector<T> elements() const {
        std::vector<T> found;
        const NSUInteger size = count();
        for (NSUInteger i = 0; i < size; ++i) {
            if (T element = objc::as<T>(at(i))) found.push_back(std::move(element));
        }
        return found;
    }

private:
    static NSArray fromRaw(const objc::RawObject* elements, NSUInteger count) {
        return send<NSArray>(ClassOf<NSArray>{}, "arrayWithObjects:count:"_sel, elements, count);
    }
};

}  // namespace morvel::mac
