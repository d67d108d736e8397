#include "Platform/Linux/UI/MenuKeys.h"

namespace morvel::x11 {

std::optional<MenuKey> MenuKeys::meaning(xcb_keycode_t code) {
    if (!symbols_) symbols_.reset(xcb_key_symbols_alloc(connection_));
    // Key symbols are numbers fixed by the protocol's registry; the keypad's come second.
    switch (symbols_ ? xcb_key_symbols_get_keysym(symbols_.get(), code, 0) : XCB_NO_SYMBOL) {
        case 0xFF52:
        case 0xFF97:
            return MenuKey::Up;
        case 0xFF54:
        case 0xFF99:
            return MenuKey::Down;
        case 0xFF50:
        case 0xFF95:
            return MenuKey::First;
        case 0xFF57:
        case 0xFF9C:
            return MenuKey::Last;
        case 0xFF53:
        case 0xFF98:
            return MenuKey::Open;
        case 0xFF51:
        case 0xFF96:
            return MenuKey::Back;
        case 0xFF0D:
        case 0xFF8D:
        case 0x0020:
            return MenuKey::Choose;
        case 0xFF1B:
            return MenuKey::Cancel;
        default:
            return std::nullopt;
    }
}

}  // namespace morvel::x11
