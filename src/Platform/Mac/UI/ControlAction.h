// Functions as the targets of controls.
#pragma once

#include <functional>

#include "Platform/Mac/apple/AppKit/NSFormControls.h"

namespace morvel::mac {

/// From now on the control's action calls `act`. The control keeps what is needed for it.
void setAction(const NSControl& control, std::function<void()> act);

}  // namespace morvel::mac
