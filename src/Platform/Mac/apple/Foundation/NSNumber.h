// Numbers and booleans as objects.
#pragma once

#include "Platform/Mac/apple/Object.h"

namespace morvel::mac {

class NSNumber : public NSObject {
public:
    static constexpr const char* kClass = "NSNumber";
    using NSObject::NSObject;

    static NSNumber from(bool value) { return send<NSNumber>(ClassOf<NSNumber>{}, "numberWithBool:"_sel, value); }
    static NSNumber from(double value) { return send<NSNumber>(ClassOf<NSNumber>{}, "numberWithDouble:"_sel, value); }
    static NSNumber from(NSInteger value) {
        return send<NSNumber>(ClassOf<NSNumber>{}, "numberWithLongLong:"_sel, value);
    }
    bool boolValue() const { return send<bool>(*this, "boolValue"_sel); }
    double doubleValue() const { return send<double>(*this, "doubleValue"_sel); }
    NSInteger integerValue() const { return send<NSInteger>(*this, "longLongValue"_sel); }
};

}  // namespace morvel::mac
