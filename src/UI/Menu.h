// A menu as plain data; a host shows it with what the platform has.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace morvel::ui {

struct MenuItem {
    std::string title;
    std::function<void()> action = {};  ///< none: the item cannot be chosen (unless it has a submenu)
    std::string keyEquivalent = {};     ///< one character, with the platform's command modifier; empty for none
    std::vector<MenuItem> submenu = {};
    bool isSeparator = false;

    static MenuItem separator() { return {.title = {}, .isSeparator = true}; }
};

using Menu = std::vector<MenuItem>;

}  // namespace morvel::ui
