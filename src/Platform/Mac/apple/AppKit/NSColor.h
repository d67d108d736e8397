// Colours, by role or by components, fonts, and the size of text.
#pragma once

#include "Platform/Mac/apple/CGGeometry.h"
#include "Platform/Mac/apple/Foundation/NSDictionary.h"

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
    static NSColor secondaryLabel() { return send<NSColor>(ClassOf<NSColor>{}, "secondaryLabelColor"_sel); }
    static NSColor separator() { return send<NSColor>(ClassOf<NSColor>{}, "separatorColor"_sel); }
    static NSColor systemRed() { return send<NSColor>(ClassOf<NSColor>{}, "systemRedColor"_sel); }
    static NSColor white() { return send<NSColor>(ClassOf<NSColor>{}, "whiteColor"_sel); }
    static NSColor controlAccent() { return send<NSColor>(ClassOf<NSColor>{}, "controlAccentColor"_sel); }
    static NSColor windowBackground() { return send<NSColor>(ClassOf<NSColor>{}, "windowBackgroundColor"_sel); }
    static NSColor sRGB(double red, double green, double blue, double alpha) {
        return send<NSColor>(ClassOf<NSColor>{}, "colorWithSRGBRed:green:blue:alpha:"_sel, red, green, blue, alpha);
    }
    /// With this alpha in place of its own.
    NSColor withAlpha(double alpha) const { return send<NSColor>(*this, "colorWithAlphaComponent:"_sel, alpha); }
    /// Resolved under the current drawing appearance; lives as long as this colour.
    CGColorRef cgColor() const { return send<CGColorRef>(*this, "CGColor"_sel); }
};

extern "C" {
extern const double NSFontWeightRegular;
extern const double NSFontWeightSemibold;
extern const objc::RawObject NSFontAttributeName;
extern const objc::RawObject NSSystemColorsDidChangeNotification;
}

class NSFont : public NSObject {
public:
    static constexpr const char* kClass = "NSFont";
    using NSObject::NSObject;

    static NSFont system(double points, double weight) {
        return send<NSFont>(ClassOf<NSFont>{}, "systemFontOfSize:weight:"_sel, points, weight);
    }
};

/// The size of the text drawn on one line in `font`.
inline CGSize sizeOf(const NSString& text, const NSFont& font) {
    const NSDictionary attributes = NSDictionary::from({{NSString(NSFontAttributeName), font}});
    return send<CGSize>(text, "sizeWithAttributes:"_sel, attributes);
}

}  // namespace morvel::mac
