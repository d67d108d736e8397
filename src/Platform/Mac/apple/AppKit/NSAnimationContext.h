// Changes that AppKit shows as movements.
#pragma once

#include <functional>

#include "Platform/Mac/apple/Object.h"
#include "Platform/Mac/objc/Block.h"

namespace morvel::mac {

/// Of a group of changes that are made to animators, such as NSWindow's.
class NSAnimationContext : public NSObject {
public:
    static constexpr const char* kClass = "NSAnimationContext";
    using NSObject::NSObject;

    /// Calls `changes` at once; what it does to animators takes the context's duration from then on.
    static void runGroup(std::function<void(NSAnimationContext)> changes) {
        send(ClassOf<NSAnimationContext>{}, "runAnimationGroup:"_sel,
             Block<void(NSAnimationContext)>(std::move(changes)));
    }
    /// In seconds.
    void setDuration(double duration) const { send(*this, "setDuration:"_sel, duration); }
};

}  // namespace morvel::mac
