// What keys mean to a menu.
#pragma once

#include <memory>
#include <optional>

#include "Platform/Linux/Keyboard/KeyReader.h"

namespace morvel::x11 {

enum class MenuKey { Up, Down, First, Last, Open, Back, Choose, Cancel };

/// The keyboard's layout as it is when the first key comes: most menus never see one. Main thread only.
class MenuKeys {
public:
    /// The connection outlives this.
    explicit MenuKeys(XConnection& connection) : connection_(connection) {}

    std::optional<MenuKey> meaning(const xcb_key_press_event_t& event);

private:
    XConnection& connection_;
    std::unique_ptr<KeyReader> reader_;  // once a key has come
};

}  // namespace morvel::x11
