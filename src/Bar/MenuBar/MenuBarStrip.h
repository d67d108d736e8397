// The part of a display that the system's menu bar takes, in the coordinates in which other programs tell their menus.
#pragma once

#include "Platform/Screens.h"

namespace morvel {

/// A smaller inset than this at a screen's top is no menu bar.
inline constexpr double kLeastMenuBarHeight = 5;

inline double menuBarInset(const Screen& screen) {
    return screen.frame.maxY() - screen.visibleFrame.maxY();
}

inline bool hasMenuBar(const Screen& screen) {
    return menuBarInset(screen) >= kLeastMenuBarHeight;
}

/// As high as the menu bar, so of no height on a screen without one.
inline Rect<AXSpace> menuBarStrip(const Screen& screen, double firstScreenHeight) {
    Rect<AXSpace> strip = toAX(screen.frame, firstScreenHeight);
    strip.height = menuBarInset(screen);
    return strip;
}

}  // namespace morvel
