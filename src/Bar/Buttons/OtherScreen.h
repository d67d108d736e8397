// A display that a window can be moved to, as the menus list it.
#pragma once

#include <string>

#include "Util/Identity.h"

namespace morvel {

struct OtherScreen {
    std::string name;
    DisplayID screenID;
};

}  // namespace morvel
