// Light and dark: the appearance under which colours that follow it are resolved.
#pragma once

#include <functional>
#include <utility>

#include "Platform/Mac/apple/Foundation/NSString.h"

namespace morvel::mac {

extern "C" {
extern const objc::RawObject NSAppearanceNameAqua;
extern const objc::RawObject NSAppearanceNameDarkAqua;
}

class NSAppearance : public NSObject {
public:
    static constexpr const char* kClass = "NSAppearance";
    using NSObject::NSObject;

    static NSAppearance named(const NSString& name) {
        return send<NSAppearance>(ClassOf<NSAppearance>{}, "appearanceNamed:"_sel, name);
    }
    NSString name() const { return send<NSString>(*this, "name"_sel); }
    /// Runs `work` before it returns, with colours resolved under this appearance.
    void performAsCurrentDrawingAppearance(std::function<void()> work) const {
        send(*this, "performAsCurrentDrawingAppearance:"_sel, Block<void()>(std::move(work)));
    }
};

}  // namespace morvel::mac
