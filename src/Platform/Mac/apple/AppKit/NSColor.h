// Colours, by role or by components, and fonts.
#pragma once

#include "Platform/Mac/apple/Object.h"

namespace morvel::mac {

struct CGColorTag;
using CGColorRef = CGColorTag*;

}  // namespace morvel::mac

template <>
struct morvel::mac::objc::Encode<morvel::mac::CGColorTag> {
    static constexpr FixedString value{"{CGColor=}"};
};

namespace morvel::mac {

class NSColor : public NSObject {
public:
    static constexpr const char* kClass = "NSColor";
    using NSObject::NSObject;

    static NSColor clear() { return send<NSColor>(ClassOf<NSColor>{}, "clearColor"_sel); }
    static NSColor label() { return send<NSColor>(ClassOf<NSColor>{}, "labelColor"_sel); }
    static NSColor controlAccent() { return send<NSColor>(ClassOf<NSColor>{}, "controlAccentColor"_sel); }
    static NSColor windowBackground() { return send<NSColor>(ClassOf<NSColor>{}, "windowBackgroundColor"_sel); }
    static NSColor sRGB(double red, double green, double blue, double alpha) {
        return send<NSColor>(ClassOf<NSColor>{}, "colorWithSRGBRed:green:blue:alpha:"_sel, red, green, blue, alpha);
    }
    NSColor withAlpha(double alpha) const { return send<NSColor>(*this, "colorWithAlphaComponent:"_sel, alpha); }
    /// Resolved under the current drawing appearance; lives as long as this colour.
    CGColorRef cgColor() const { return send<CGColorRef>(*this, "CGColor"_sel); }
};

class NSFont : public NSObject {
public:
    static constexpr const char* kClass = "NSFont";
    using NSObject::NSObject;

    static NSFont system(double points) { return send<NSFont>(ClassOf<NSFont>{}, "systemFontOfSize:"_sel, points); }
};

}  // namespace morvel::mac
