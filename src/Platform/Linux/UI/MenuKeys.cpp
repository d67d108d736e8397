#include "Platform/Linux/UI/MenuKeys.h"

namespace morvel::x11 {

std::optional<MenuKey> MenuKeys::meaning(const xcb_key_press_event_t& event) {
    if (!reader_) reader_ = makeKeyReader(connection_);
    switch (reader_ ? reader_->stroke(event).symbol : XKB_KEY_NoSymbol) {
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
