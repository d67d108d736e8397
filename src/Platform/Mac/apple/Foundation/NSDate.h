// Moments in time.
#pragma once

#include "Platform/Mac/apple/Object.h"

namespace morvel::mac {

class NSDate : public NSObject {
public:
    static constexpr const char* kClass = "NSDate";
    using NSObject::NSObject;

    static NSDate since1970(double seconds) {
        return send<NSDate>(ClassOf<NSDate>{}, "dateWithTimeIntervalSince1970:"_sel, seconds);
    }
    double timeIntervalSince1970() const { return send<double>(*this, "timeIntervalSince1970"_sel); }
};

}  // namespace morvel::mac
