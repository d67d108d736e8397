// Which process this is and whether another exists, asked the same way on every POSIX system.
#pragma once

#include "Util/Identity.h"

namespace morvel {

/// Sends signal 0. Alive unless the system says that there is no such process: one that may not be signalled exists.
/// Numbers that do not name a single process (0 and below) are not alive.
bool killProbe(ProcessID pid);

ProcessID ownProcess();

}  // namespace morvel
