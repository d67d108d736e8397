#include "Platform/Linux/UI/MenuKeys.h"

#include <xkbcommon/xkbcommon-keysyms.h>

namespace morvel::x11 {

std::optional<MenuKey> MenuKeys::meaning(xcb_keycode_t code) {
    if (!symbols_) symbols_.reset(xcb_key_symbols_alloc(connection_));
    switch (symbols_ ? xcb_key_symbols_get_keysym(symbols_.get(), code, 0) : XCB_NO_SYMBOL) {
        case XKB_KEY_Up:
        case XKB_KEY_KP_Up:
            return MenuKey::Up;
        case XKB_KEY_Down:
        case XKB_KEY_KP_Down:
            return MenuKey::Down;
        case XKB_KEY_Home:
        case XKB_KEY_KP_Home:
            return MenuKey::First;
        case XKB_KEY_End:
        case XKB_KEY_KP_End:
            return MenuKey::Last;
        case XKB_KEY_Right:
        case XKB_KEY_KP_Right:
            return MenuKey::Open;
        case XKB_KEY_Left:
        case XKB_KEY_KP_Left:
            return MenuKey::Back;
        case XKB_KEY_Return:
        case XKB_KEY_KP_Enter:
        case XKB_KEY_space:
            return MenuKey::Choose;
        case XKB_KEY_Escape:
            return MenuKey::Cancel;
        default:
            return std::nullopt;
    }
}

}  // namespace morvel::x11
