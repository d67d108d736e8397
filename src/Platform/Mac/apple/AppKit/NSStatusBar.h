// The system's status bar at the right of the menu bar.
#pragma once

#include "Platform/Mac/apple/Object.h"

namespace morvel::mac {

class NSStatusBar : public NSObject {
public:
    static constexpr const char* kClass = "NSStatusBar";
    using NSObject::NSObject;

    static NSStatusBar system() { return send<NSStatusBar>(ClassOf<NSStatusBar>{}, "systemStatusBar"_sel); }
    double thickness() const { return send<double>(*this, "thickness"_sel); }
};

}  // namespace morvel::mac
