// What a button stands for while something is dragged over it.
#pragma once

#include <string>
#include <variant>

#include "Util/Identity.h"

namespace morvel {

struct WindowTarget {
    WindowID id;
};
struct GroupedTarget {
    std::string bundleID;  ///< the group's key
};
struct WindowlessTarget {
    ProcessID pid;
};

using ButtonKind = std::variant<WindowTarget, GroupedTarget, WindowlessTarget>;

}  // namespace morvel
