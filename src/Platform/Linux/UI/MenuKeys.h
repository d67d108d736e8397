// What keys mean to a menu.
#pragma once

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <memory>
#include <optional>

namespace morvel::x11 {

enum class MenuKey { Up, Down, First, Last, Open, Back, Choose, Cancel };

/// The keyboard's layout as it is when the first key comes. Main thread only.
class MenuKeys {
public:
    /// The connection outlives this.
    explicit MenuKeys(xcb_connection_t* connection) : connection_(connection) {}

    /// The first one waits for the server to tell the layout. Most menus never see a key, and the library loses the
    /// memory of an answer that nobody takes (seen with xcb-util-keysyms 0.4.0: seven kilobytes for each menu).
    std::optional<MenuKey> meaning(xcb_keycode_t code);

private:
    struct Free {
        void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
    };
    xcb_connection_t* connection_;
    std::unique_ptr<xcb_key_symbols_t, Free> symbols_;  // once a key has come
};

}  // namespace morvel::x11
