// What keys mean to a menu.
#pragma once

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <memory>
#include <optional>

namespace morvel::x11 {

enum class MenuKey { Up, Down, First, Last, Open, Back, Choose, Cancel };

/// The keyboard's layout as it is when made. Main thread only.
class MenuKeys {
public:
    /// Asks the server but does not wait; the answer is taken when the first key comes.
    explicit MenuKeys(xcb_connection_t* connection) : symbols_(xcb_key_symbols_alloc(connection)) {}

    std::optional<MenuKey> meaning(xcb_keycode_t code) const;

private:
    struct Free {
        void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
    };
    std::unique_ptr<xcb_key_symbols_t, Free> symbols_;
};

}  // namespace morvel::x11
