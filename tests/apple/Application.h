// Scripting what happens between the application's launch and its end.
#pragma once

#include <functional>

namespace morvel::mac::checked {

/// Until the end of the test, -[NSApplication run] tells the delegate of the launch, runs `script`, and returns.
void whileRunning(std::function<void()> script);

}  // namespace morvel::mac::checked
