// What stands behind an accessibility element of this host.
#pragma once

#include <xcb/xcb.h>

#include "Platform/Accessibility.h"

namespace morvel::x11 {

/// Names a thing without knowing anything about it. Whether it still exists is asked of the tracked windows.
struct XElement : AXElementImpl {
    enum class Kind { Application, Window, CloseButton, MenuBar, NewWindowItem };

    XElement(Kind k, ProcessID p, xcb_window_t w, uint64_t s) : kind(k), pid(p), window(w), serial(s) {}

    bool equals(const AXElementImpl& other) const override {
        const auto& o = static_cast<const XElement&>(other);
        return kind == o.kind && pid == o.pid && window == o.window && serial == o.serial;
    }
    size_t hash() const override { return std::hash<uint64_t>{}(serial * 8 + static_cast<uint64_t>(kind)) ^ pid.value; }

    const Kind kind;
    const ProcessID pid;
    const xcb_window_t window;  ///< XCB_WINDOW_NONE for applications and their menus
    const uint64_t serial;      ///< the tracked window's, which is never reused; 0 for the same
};

}  // namespace morvel::x11
