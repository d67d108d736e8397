// What a press of a key types, under the person's keyboard layout and dead keys.
#pragma once

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <string>

namespace morvel::x11 {

struct KeyStroke {
    xkb_keysym_t symbol = XKB_KEY_NoSymbol;
    bool isShift = false, isControl = false, isAlt = false;
    std::string text;  ///< UTF-8; empty for a key that types nothing, or not yet
};

/// The keyboard's layout as it is when made, which asks the server and waits for its answers: a millisecond or two,
/// once for each time that something opens to be typed into. Main thread only.
class KeyInput {
public:
    explicit KeyInput(xcb_connection_t* connection);

    /// Of a press. Where the server cannot tell the layout, nothing is typed.
    KeyStroke stroke(const xcb_key_press_event_t& event);

private:
    struct Free {
        void operator()(xkb_context* p) const { xkb_context_unref(p); }
        void operator()(xkb_state* p) const { xkb_state_unref(p); }
        void operator()(xkb_compose_state* p) const { xkb_compose_state_unref(p); }
    };

    /// The text that the symbol ends or is, where a sequence of dead keys may be under way.
    std::string composed(xkb_keysym_t symbol, xkb_keycode_t code);

    std::unique_ptr<xkb_context, Free> context_;
    std::unique_ptr<xkb_state, Free> state_;
    std::unique_ptr<xkb_compose_state, Free> compose_;  // once the first dead key was pressed
    bool wasComposeAsked_ = false;
};

}  // namespace morvel::x11
