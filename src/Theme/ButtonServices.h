// What the buttons of a bar are made with.
#pragma once

#include "Platform/Icons.h"
#include "Theme/IconCache.h"
#include "UI/Toolkit.h"

namespace morvel {

/// All three outlive every button.
struct ButtonServices {
    ui::Toolkit& toolkit;
    Icons& icons;
    IconCache& iconCache;
};

}  // namespace morvel
