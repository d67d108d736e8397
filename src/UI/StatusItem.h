// The program's item in the system's menu bar.
#pragma once

#include "UI/Menu.h"

namespace morvel::ui {

/// Destroying it takes the item away.
class StatusItemPeer {
public:
    virtual ~StatusItemPeer() = default;
    virtual void setMenu(Menu menu) = 0;
};

}  // namespace morvel::ui
