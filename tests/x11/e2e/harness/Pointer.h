// Synthetic input, indistinguishable for programs from a hand on the mouse and the keyboard.
#pragma once

#include <xcb/xcb.h>

#include <string_view>

#include "harness/Desktop.h"

namespace morvel::e2e {

class Pointer {
public:
    explicit Pointer(Desktop& desktop) : desktop_(desktop) {}

    void moveTo(Spot spot) { fake(XCB_MOTION_NOTIFY, 0, spot); }
    void press(int button = kLeft) { fake(XCB_BUTTON_PRESS, static_cast<uint8_t>(button), {}); }
    void release(int button = kLeft) { fake(XCB_BUTTON_RELEASE, static_cast<uint8_t>(button), {}); }
    void click(Spot spot, int button = kLeft) {
        moveTo(spot);
        press(button);
        release(button);
    }
    void rightClick(Spot spot) { click(spot, kRight); }
    /// Presses at `from`, moves in small steps and releases at `to`.
    void drag(Spot from, Spot to);
    /// Presses and releases the key with this symbol (XK_Escape is 0xff1b).
    void key(uint32_t symbol);
    /// The same while the key of another symbol is held.
    void key(uint32_t symbol, uint32_t held);
    /// Types small letters, digits and spaces.
    void type(std::string_view text);

    static constexpr int kLeft = 1;
    static constexpr int kRight = 3;

private:
    uint8_t codeOf(uint32_t symbol);
    void fake(uint8_t type, uint8_t detail, Spot spot);

    Desktop& desktop_;  // outlives us
};

inline constexpr uint32_t kKeyTab = 0xff09;
inline constexpr uint32_t kKeyReturn = 0xff0d;
inline constexpr uint32_t kKeyBackSpace = 0xff08;
inline constexpr uint32_t kKeyHome = 0xff50;
inline constexpr uint32_t kKeyShift = 0xffe1;
inline constexpr uint32_t kKeyControl = 0xffe3;
inline constexpr uint32_t kKeyEscape = 0xff1b;
inline constexpr uint32_t kKeyLeft = 0xff51;
inline constexpr uint32_t kKeyRight = 0xff53;
inline constexpr uint32_t kKeyDown = 0xff54;

}  // namespace morvel::e2e
