// The end of other programs' processes, as a notice.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Platform/Linux/System/GLibMainLoop.h"
#include "Util/Identity.h"

namespace morvel::x11 {

/// Calls `ended` in a turn of the loop once the process has ended, until the token dies. An empty token when the
/// process is gone already or the system cannot tell.
Subscription watchProcess(GLibMainLoop& mainLoop, ProcessID pid, std::function<void()> ended);

/// When the process started, in the kernel's ticks since boot: with the number, it names a process for good. Nothing
/// when there is no such process.
std::optional<uint64_t> processStartTime(ProcessID pid);

/// The name of the process's program, as the kernel keeps it (cut at 15 characters).
std::optional<std::string> processName(ProcessID pid);

}  // namespace morvel::x11
